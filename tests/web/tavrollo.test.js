// SPDX-License-Identifier: GPL-3.0-or-later
// What all pages have in common: the cookie, the distance between two pages, the list of commands.
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const { creerMonde } = require('./navigateur.js');

const JOUR_MS = 24 * 3600 * 1000;
const REPONSE = 4000;
// An unanswered command falls silent after three intervals and six seconds.
const SILENCE = 12000;
// Two sendings are so far apart at least.
const ECART = 1600;

function ouvrirDocument(page, chemin) {
  page.taper('champOuvrir', chemin);
  page.cliquer('boutonOuvrir');
}

const commandes = (page) => page.par('fileAttente').children;
const etats = (page) => commandes(page).map((ligne) => ligne.getAttribute('data-etat'));
const bouton = (ligne, nom) => ligne.querySelectorAll('button').find((candidat) => candidat.textContent === nom);
const proposes = (ligne) =>
  ligne.querySelectorAll('button').filter((candidat) => candidat.visible).map((candidat) => candidat.textContent);

test('two pages keep their distance, though each has a storage of its own', () => {
  const monde = creerMonde();
  const [une, autre] = [monde.ouvrir('index.html'), monde.ouvrir('index.html')];
  ouvrirDocument(une, '/a');
  monde.passer(100);
  ouvrirDocument(autre, '/b');
  assert.deepStrictEqual(etats(autre), ['attente']);
  monde.passer(2 * REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '/a'], ['shellexe', '/b']]);
  assert.ok(monde.envois[1].quand - monde.envois[0].quand >= ECART);
  assert.deepStrictEqual([etats(une), etats(autre)], [['recue'], ['recue']]);
});

test('a page keeps its distance from its own last sending when the cookie is gone', () => {
  const monde = creerMonde();
  const page = monde.ouvrir('index.html');
  ouvrirDocument(page, '/a');
  monde.passer(1000);
  monde.bocal.clear();
  ouvrirDocument(monde.ouvrir('index.html', page.onglet), '/b');
  monde.passer(REPONSE);
  assert.ok(monde.envois[1].quand - monde.envois[0].quand >= ECART);
});

test('without a storage the cookie alone tells the last sending', () => {
  const monde = creerMonde();
  const page = monde.ouvrir('index.html', { session: null, local: null });
  ouvrirDocument(page, '/a');
  ouvrirDocument(page, '/b');
  monde.passer(2 * REPONSE);
  assert.ok(monde.envois[1].quand - monde.envois[0].quand >= ECART);
  assert.deepStrictEqual(etats(page), ['recue', 'recue']);
});

test('a command stays in the browser for weeks, for a program that is not there yet', () => {
  const monde = creerMonde({ repond: false });
  ouvrirDocument(monde.ouvrir('index.html'), '/a');
  monde.passer(29 * JOUR_MS);
  assert.match(monde.lireCookies(), /^Tavr1CodeToExe=shellexe_\|_\/a_\|_\d+_e-o-v_$/);
  monde.passer(2 * JOUR_MS);
  assert.strictEqual(monde.lireCookies(), '');
});

test('a browser that keeps no cookie is told, in the message and in the list', () => {
  const monde = creerMonde({ cookies: false });
  const page = monde.ouvrir('index.html');
  ouvrirDocument(page, '/a');
  assert.match(page.texte('messageOuvrir'), /^Sans réponse : ce navigateur ne garde pas de cookie/);
  assert.strictEqual(page.genre('messageOuvrir'), 'erreur');
  assert.deepStrictEqual(etats(page), ['muette']);
});

test('a missing cookie script is told', () => {
  const monde = creerMonde();
  monde.ecrits['rwCookies.js'] = null;
  const page = monde.ouvrir('index.html');
  ouvrirDocument(page, '/a');
  assert.match(page.texte('messageOuvrir'), /rwCookies\.js manque/);
});

test('a waiting command can be forgotten, an answered one neither forgotten nor tried again', () => {
  const monde = creerMonde();
  const page = monde.ouvrir('index.html');
  ouvrirDocument(page, '/a');
  ouvrirDocument(page, '/b');
  // The newest comes first.
  assert.deepStrictEqual(etats(page), ['attente', 'envoyee']);
  const [seconde, premiere] = commandes(page);
  assert.deepStrictEqual(proposes(seconde), ['Oublier']);
  assert.deepStrictEqual(proposes(premiere), []);
  page.cliquer(bouton(seconde, 'Oublier'));
  assert.strictEqual(page.foyer(), 'fileAttente');
  assert.strictEqual(page.texte('messageOuvrir'), 'Oublié : rien de plus ne sera envoyé.');
  monde.passer(2 * REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '/a']]);
  assert.deepStrictEqual(etats(page), ['recue']);
  assert.deepStrictEqual(proposes(commandes(page)[0]), []);
});

test('a command without an answer is sent again by one button and forgotten by the other', () => {
  const monde = creerMonde({ repond: false });
  const page = monde.ouvrir('index.html');
  ouvrirDocument(page, '/a');
  monde.passer(SILENCE);
  assert.deepStrictEqual(proposes(commandes(page)[0]), ['Réessayer', 'Oublier']);
  assert.strictEqual(page.texte('messageOuvrir'), 'Sans réponse de Tavrollo.');
  page.cliquer(bouton(commandes(page)[0], 'Réessayer'));
  assert.strictEqual(page.foyer(), 'fileAttente');
  monde.passer(SILENCE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '/a'], ['shellexe', '/a']]);
  page.cliquer(bouton(commandes(page)[0], 'Oublier'));
  monde.passer(SILENCE);
  assert.strictEqual(monde.envois.length, 2);
  assert.deepStrictEqual(etats(page), []);
  assert.strictEqual(page.visible('fileVide'), true);
});

test('the buttons of the list say what they are about', () => {
  const monde = creerMonde();
  const page = monde.ouvrir('index.html');
  assert.strictEqual(page.visible('fileVide'), true);
  ouvrirDocument(page, '/a');
  assert.strictEqual(page.visible('fileVide'), false);
  assert.deepStrictEqual(commandes(page)[0].querySelectorAll('button').map((candidat) => candidat.getAttribute('aria-label')),
    ['Réessayer : Ouvrir un document', 'Oublier : Ouvrir un document']);
});

test('the last answer of the program is shown, when the page opens and with each command', () => {
  const monde = creerMonde();
  const page = monde.ouvrir('index.html');
  assert.strictEqual(page.texte('fileEtat'), 'Tavrollo n’a encore jamais répondu sur cet ordinateur.');
  ouvrirDocument(page, '/a');
  monde.passer(REPONSE);
  const reponse = 'Dernière réponse de Tavrollo 1.0.0 : 21/11/2026 11:02:03.';
  assert.strictEqual(page.texte('fileEtat'), reponse);
  assert.strictEqual(monde.ouvrir('eleve.html').texte('fileEtat'), reponse);
});
