// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');

const SCRIPT = fs.readFileSync(path.join(__dirname, '../../nav/res_css/js/rwCookies.js'), 'latin1');

// A document whose cookie jar works as a browser's.
function pageAvec(script) {
  const bocal = new Map();
  const ecrits = [];
  const document = {
    get cookie() { return Array.from(bocal, ([nom, texte]) => nom + '=' + texte).join('; '); },
    set cookie(texte) {
      ecrits.push(texte);
      const [paire, ...attributs] = texte.split('; ');
      const egal = paire.indexOf('=');
      bocal.set(paire.slice(0, egal), paire.slice(egal + 1));
      if (attributs.includes('max-age=0')) { bocal.delete(paire.slice(0, egal)); }
    }
  };
  const contexte = vm.createContext({ document });
  vm.runInContext(script, contexte);
  return { contexte, ecrits };
}

test('the first line is the empty key, the file pure ASCII with CR LF', () => {
  assert.ok(SCRIPT.startsWith('var ps="";\r\n'));
  assert.ok(SCRIPT.endsWith('}\r\n'));
  assert.ok(!/[^\x00-\x7f]/.test(SCRIPT));
  assert.strictEqual(SCRIPT.split('\n').length, SCRIPT.split('\r\n').length);
});

test('a cookie gets a path, a life time and a same-site rule', () => {
  const page = pageAvec(SCRIPT);
  page.contexte.ecrireCookie('Tavr1CodeToExe', 'a=b_e-o-v_', 60);
  assert.deepStrictEqual(page.ecrits, ['Tavr1CodeToExe=a=b_e-o-v_; path=/; max-age=60; SameSite=Lax']);
});

test('a cookie is read back by its whole name and removed again', () => {
  const { contexte } = pageAvec(SCRIPT);
  contexte.ecrireCookie('XTavr', 'faux', 60);
  contexte.ecrireCookie('Tavr', 'a=b "c" \\', 60);
  assert.strictEqual(contexte.lireCookie('Tavr'), 'a=b "c" \\');
  assert.strictEqual(contexte.lireCookie('Tav'), '');
  contexte.effacerCookie('Tavr');
  assert.strictEqual(contexte.lireCookie('Tavr'), '');
});

test('the script runs again once the program has written a key', () => {
  const { contexte } = pageAvec(SCRIPT);
  vm.runInContext(SCRIPT.replace('ps=""', 'ps="cl\u00e9"'), contexte);
  assert.strictEqual(contexte.ps, 'clé');
});
