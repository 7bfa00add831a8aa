// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');

const NAV = path.join(__dirname, '../../nav');
const PAGES = ['index.html', 'eleve.html', 'aide.html', 'res_css/htm/start.html', 'res_css/htm/init_cookie.html'];
// Written by the program, not shipped.
const A_VENIR = [path.join(NAV, 'res_css/js/shortQrCode.js')];

const lire = (page) => fs.readFileSync(path.join(NAV, page), 'utf8');

test('every script, style, picture and link of a page is shipped', () => {
  PAGES.forEach((page) => {
    const cibles = Array.from(lire(page).matchAll(/(?:src|href)="([^"#]+)"/g), (trouve) => trouve[1]);
    assert.ok(cibles.length > 5, page);
    cibles.forEach((cible) => {
      const fichier = path.join(NAV, path.dirname(page), cible);
      assert.ok(A_VENIR.includes(fichier) || fs.existsSync(fichier), page + ' : ' + cible);
    });
  });
});

test('the scripts that the program writes are loaded as Windows-1252', () => {
  PAGES.forEach((page) => {
    Array.from(lire(page).matchAll(/<script[^>]*(?:rwCookies|shortQrCode)\.js"/g)).forEach(([balise]) => {
      assert.match(balise, /charset="windows-1252"/, page);
    });
  });
});

test('no page carries a script or a handler of its own', () => {
  PAGES.forEach((page) => {
    assert.doesNotMatch(lire(page), /<script(?![^>]*\ssrc=)|\son[a-z]+="|\sstyle="|javascript:/, page);
    assert.match(lire(page), /script-src 'self' file:;/, page);
  });
});

test('every element that a script or a label asks for is in its page, once', () => {
  const demandes = { 'index.html': ['pageProf.js'], 'eleve.html': ['pageEleve.js'],
    'res_css/htm/start.html': ['pageEssai.js'], 'res_css/htm/init_cookie.html': ['pageEssai.js'], 'aide.html': [] };
  PAGES.forEach((page) => {
    const html = lire(page);
    const ids = Array.from(html.matchAll(/\sid="([^"]+)"/g), (trouve) => trouve[1]);
    assert.strictEqual(new Set(ids).size, ids.length, page);
    const voulus = Array.from(html.matchAll(/(?:\sfor|aria-describedby|aria-labelledby|href)="#?([^"./]+)"/g))
      .flatMap((trouve) => trouve[1].split(' '));
    demandes[page].forEach((script) => {
      const source = fs.readFileSync(path.join(NAV, 'res_css/js', script), 'utf8');
      const appels = /(?:par|getElementById|mesure|surEnvoi)\('([^']+)'/g;
      voulus.push(...Array.from(source.matchAll(appels), (trouve) => trouve[1]));
    });
    voulus.forEach((id) => assert.ok(ids.includes(id), page + ' : ' + id));
  });
});
