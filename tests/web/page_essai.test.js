// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');
const vue = require('../../nav/res_css/js/vueFile.js');

const NAV = path.join(__dirname, '../../nav/res_css');
const SCRIPT = fs.readFileSync(path.join(NAV, 'js/pageEssai.js'), 'utf8');
const REPONSE = { version: '1.0.0', intervalle: 600, heure: '21/11/2026 20:06:00' };

// A page as its script sees it: elements by their ids, with the texts that stand in the file.
function ouvrir(nom) {
  const html = fs.readFileSync(path.join(NAV, 'htm', nom), 'utf8');
  const elements = {};
  Array.from(html.matchAll(/<[^>]*\sid="([^"]+)"[^>]*>/g)).forEach(([balise, id]) => {
    const element = { textContent: '', hidden: / hidden/.test(balise), attributs: {}, dataset: {}, foyers: 0 };
    Array.from(balise.matchAll(/data-texte-([a-z]+)="([^"]+)"/g)).forEach(([, mot, texte]) => {
      element.dataset['texte' + mot[0].toUpperCase() + mot.slice(1)] = texte;
    });
    element.setAttribute = (attribut, valeur) => { element.attributs[attribut] = valeur; };
    element.addEventListener = (_, action) => { element.clic = action; };
    element.focus = () => { element.foyers += 1; };
    elements[id] = element;
  });
  const demandes = [];
  vm.runInNewContext(SCRIPT, {
    document: { getElementById: (id) => elements[id] },
    TavrolloVueFile: vue,
    Tavrollo: { ATTENTE_AUTOMATIQUE_MS: 5000, file: { ajouter: (demande) => demandes.push(demande) } }
  });
  return { elements, demandes, texte: () => elements.etatTexte.textContent };
}

test('seconds have a decimal comma and keep their unit on the line', () => {
  [[0, '0,0\u00a0s'], [49, '0,0\u00a0s'], [750, '0,8\u00a0s'], [1240, '1,2\u00a0s'], [12000, '12,0\u00a0s']]
    .forEach(([ms, texte]) => assert.strictEqual(vue.secondes(ms), texte));
  assert.strictEqual(vue.texteEtat({ etat: 'recue', dureeMs: 1500 }), 'Reçu par Tavrollo en 1,5\u00a0s');
});

test('the announced sentence tells how long the round trip took', () => {
  [['start.html', 'Le pont fonctionne\u00a0: Tavrollo a répondu en 0,8\u00a0s.'],
    ['init_cookie.html', 'Tavrollo a vu le premier cookie en 0,8\u00a0s\u00a0: tout est prêt.']]
    .forEach(([nom, phrase]) => {
      const page = ouvrir(nom);
      assert.strictEqual(page.demandes[0].delaiMs, 5000, nom);
      page.demandes[0].surChange({ etat: 'recue', dureeMs: 812, reponse: REPONSE });
      assert.strictEqual(page.texte(), phrase);
      assert.strictEqual(page.elements.etatPont.attributs['data-etat'], 'marche');
      assert.strictEqual(page.elements.mesureDuree.textContent, '0,8\u00a0s');
      assert.strictEqual(page.elements.mesureIntervalle.textContent, '0,6\u00a0s');
      assert.strictEqual(page.elements.mesureVersion.textContent, '1.0.0');
      assert.strictEqual(page.elements.mesures.hidden, false);
      assert.strictEqual(page.elements.secours.hidden, true);
    });
});

test('the state is announced politely', () => {
  ['start.html', 'init_cookie.html'].forEach((nom) => {
    const html = fs.readFileSync(path.join(NAV, 'htm', nom), 'utf8');
    const region = html.match(/<div[^>]*id="etatPont"[^>]*>([\s\S]*?)<\/div>/);
    assert.match(region[0], /role="status" aria-live="polite"/, nom);
    assert.match(region[1], /id="etatTexte"/, nom);
  });
});

test('without an answer the page tells no time, says what to do, and tries again on demand', () => {
  const page = ouvrir('start.html');
  page.demandes[0].surChange({ etat: 'envoyee' });
  assert.match(page.texte(), /^Essai envoyé/);
  page.demandes[0].surChange({ etat: 'muette', raison: 'pas de cookie' });
  assert.strictEqual(page.texte(), 'Pas de réponse de Tavrollo.');
  assert.strictEqual(page.elements.raisonMuette.textContent, 'Cause\u00a0: pas de cookie');
  assert.strictEqual(page.elements.mesures.hidden, true);
  assert.strictEqual(page.elements.secours.hidden, false);
  page.elements.boutonReessayer.clic();
  assert.strictEqual(page.demandes[1].delaiMs, 0);
  assert.strictEqual(page.elements.etatPont.foyers, 1);
});
