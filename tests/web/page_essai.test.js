// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const vue = require('../../nav/res_css/js/vueFile.js');
const { creerMonde } = require('./navigateur.js');

const HTM = path.join(__dirname, '../../nav/res_css/htm');
const PAGES = ['start.html', 'init_cookie.html'];
// The page holds back while a program that just started primes itself.
const ATTENTE = 5000;
const SILENCE = 12000;

function ouvrir(nom, reglages) {
  const monde = creerMonde(reglages);
  return { monde, page: monde.ouvrir('res_css/htm/' + nom) };
}

const etat = (page) => page.par('etatPont').getAttribute('data-etat');

test('seconds have a decimal comma and keep their unit on the line', () => {
  [[0, '0,0\u00a0s'], [49, '0,0\u00a0s'], [750, '0,8\u00a0s'], [1240, '1,2\u00a0s'], [12000, '12,0\u00a0s']]
    .forEach(([ms, texte]) => assert.strictEqual(vue.secondes(ms), texte));
  assert.strictEqual(vue.texteEtat({ etat: 'recue', dureeMs: 1500 }), 'Reçu par Tavrollo en 1,5\u00a0s');
});

test('the page waits before it sends by itself', () => {
  [['start.html', /^Essai envoyé/], ['init_cookie.html', /^Cookie écrit/]].forEach(([nom, envoye]) => {
    const { monde, page } = ouvrir(nom);
    monde.passer(ATTENTE - 100);
    assert.deepStrictEqual(monde.envois, [], nom);
    assert.strictEqual(etat(page), 'attente');
    monde.passer(100);
    assert.match(monde.envois[0].texte, /^sonde-\d+_e-o-v_$/);
    assert.match(page.texte('etatTexte'), envoye);
    assert.strictEqual(page.visible('boutonReessayer'), false);
  });
});

test('the announced sentence tells how long the round trip took', () => {
  [['start.html', 'Le pont fonctionne\u00a0: Tavrollo a répondu en 0,9\u00a0s.'],
    ['init_cookie.html', 'Tavrollo a vu le premier cookie en 0,9\u00a0s\u00a0: tout est prêt.']]
    .forEach(([nom, phrase]) => {
      const { monde, page } = ouvrir(nom);
      monde.passer(ATTENTE + 2000);
      assert.strictEqual(etat(page), 'marche');
      [['etatTexte', phrase], ['mesureDuree', '0,9\u00a0s'], ['mesureIntervalle', '1,0\u00a0s'], ['mesureVersion', '1.0.0'],
        ['mesureHeure', '21/11/2026 11:02:03']]
        .forEach(([id, texte]) => assert.strictEqual(page.par(id).textContent, texte));
      assert.strictEqual(page.visible('mesures'), true);
      assert.strictEqual(page.visible('secours'), false);
    });
});

test('the state is announced politely', () => {
  PAGES.forEach((nom) => {
    const html = fs.readFileSync(path.join(HTM, nom), 'utf8');
    const region = html.match(/<div[^>]*id="etatPont"[^>]*>([\s\S]*?)<\/div>/);
    assert.match(region[0], /role="status" aria-live="polite"/, nom);
    assert.match(region[1], /id="etatTexte"/, nom);
  });
});

test('without an answer the page tells no time, says what to do, and tries again on demand', () => {
  const { monde, page } = ouvrir('start.html', { repond: false });
  monde.passer(ATTENTE + SILENCE);
  assert.strictEqual(etat(page), 'muet');
  assert.strictEqual(page.texte('etatTexte'), 'Pas de réponse de Tavrollo.');
  assert.strictEqual(page.visible('raisonMuette'), false);
  assert.strictEqual(page.visible('mesures'), false);
  assert.strictEqual(page.visible('secours'), true);
  monde.repond = true;
  page.cliquer('boutonReessayer');
  assert.strictEqual(monde.envois.length, 2);
  assert.strictEqual(page.foyer(), 'etatPont');
  monde.passer(2000);
  assert.strictEqual(etat(page), 'marche');
});

test('a browser that keeps no cookie is told as the cause', () => {
  const { monde, page } = ouvrir('init_cookie.html', { cookies: false });
  monde.passer(ATTENTE + 100);
  assert.strictEqual(etat(page), 'muet');
  assert.match(page.texte('raisonMuette'), /^Cause : ce navigateur ne garde pas de cookie/);
  assert.strictEqual(page.visible('raisonMuette'), true);
});
