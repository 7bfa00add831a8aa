// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const { creerMonde } = require('./navigateur.js');

const REPONSE = 4000;
const RACCOURCIS = [['Plan d’été', 'loc../../user_datas/plan.pdf'], ['Wikipédia', 'webhttps://fr.wikipedia.org/'],
  ['Dessin', 'loc/home/eleve/dessin;1.svg'], ['Vide', 'loc'], ['Piège', 'webjavascript:alert(1)']];
const OUVERTE = { url: 'https://fr.wikipedia.org/', cible: '_blank', traits: 'noopener,noreferrer' };

// The pupil's page.
function ouvrir(reglages) {
  const monde = creerMonde({ raccourcis: RACCOURCIS.slice(), ...reglages });
  return { monde, page: monde.ouvrir('eleve.html') };
}

const noms = (page) => page.par('listeRaccourcis').querySelectorAll('.raccourci-nom').map((nom) => nom.textContent);
const bouton = (page, nom) =>
  page.boutons('listeRaccourcis').find((candidat) => candidat.querySelector('.raccourci-nom').textContent === nom);

function scanner(page, cle) {
  page.taper('champCode', cle);
  page.cliquer('boutonCode');
}

test('the list shows each shortcut with its kind and its key', () => {
  const { page } = ouvrir({ raccourcis: RACCOURCIS.slice(0, 2) });
  assert.deepStrictEqual(page.boutons('listeRaccourcis').map((candidat) => candidat.textContent),
    ['Plan d’étéDocument · 000000001', 'WikipédiaPage web · 000000002']);
  assert.strictEqual(page.texte('remarqueListe'), '');
});

test('a button of the list has its document opened by the program', () => {
  const { monde, page } = ouvrir();
  page.cliquer(bouton(page, 'Plan d’été'));
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '../../user_datas/plan.pdf']]);
  assert.match(page.texte('messageListe'), /^Reçu par Tavrollo en \d,\d s\.$/);
  assert.strictEqual(page.texte('messageCode'), '');
  assert.match(page.texte('fileAttente'), /^Ouvrir « Plan d’été »user_datas\/plan\.pdf/);
});

test('a shortcut to a page opens in the browser, by its button and by its key', () => {
  const { monde, page } = ouvrir();
  page.cliquer(bouton(page, 'Wikipédia'));
  assert.strictEqual(page.texte('messageListe'), '« Wikipédia » s’ouvre dans le navigateur.');
  scanner(page, '000000002');
  assert.strictEqual(page.texte('messageCode'), '« Wikipédia » s’ouvre dans le navigateur.');
  assert.deepStrictEqual(page.ouvertes, [OUVERTE, OUVERTE]);
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), []);
});

test('a shortcut that cannot be opened says why and opens nothing', () => {
  const { monde, page } = ouvrir();
  [['Dessin', /point-virgule/], ['Vide', /ne contient pas d’adresse/], ['Piège', /n’est pas acceptée/]]
    .forEach(([nom, raison]) => {
      page.cliquer(bouton(page, nom));
      assert.match(page.texte('messageListe'), raison);
      assert.strictEqual(page.genre('messageListe'), 'erreur');
    });
  scanner(page, '000000003');
  assert.match(page.texte('messageCode'), /point-virgule/);
  monde.passer(REPONSE);
  assert.deepStrictEqual(page.ouvertes, []);
  assert.deepStrictEqual(monde.commandes(), []);
});

test('a scanned key opens its shortcut and leaves the field ready for the next', () => {
  const { monde, page } = ouvrir();
  scanner(page, '000000001');
  assert.strictEqual(page.par('champCode').value, '');
  assert.strictEqual(page.foyer(), 'champCode');
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '../../user_datas/plan.pdf']]);
  assert.match(page.texte('messageCode'), /^Reçu par Tavrollo/);
});

test('a key that opens nothing is told and stays, chosen, in the field', () => {
  const { monde, page } = ouvrir();
  [['000000009', /^Aucun raccourci ne porte la clé 000000009\.$/], ['12', /exactement 9 chiffres/], ['', /scannez/]]
    .forEach(([cle, raison]) => {
      scanner(page, cle);
      assert.match(page.texte('messageCode'), raison);
      assert.strictEqual(page.genre('messageCode'), 'erreur');
      assert.deepStrictEqual(page.marques(), ['champCode']);
      assert.strictEqual(page.par('champCode').value, cle);
      assert.strictEqual(page.par('champCode').choisi, true);
      assert.strictEqual(page.foyer(), 'champCode');
    });
  scanner(page, '000000001');
  assert.deepStrictEqual(page.marques(), []);
  monde.passer(REPONSE);
  assert.strictEqual(monde.envois.length, 1);
});

test('what is typed into the search leaves the shortcuts that match', () => {
  const { page } = ouvrir();
  page.taper('champFiltre', 'ete');
  assert.deepStrictEqual(noms(page), ['Plan d’été']);
  page.taper('champFiltre', ' zèbre ');
  assert.deepStrictEqual(noms(page), []);
  assert.strictEqual(page.texte('remarqueListe'), 'Aucun raccourci ne correspond à « zèbre ».');
  page.taper('champFiltre', '');
  assert.deepStrictEqual(noms(page), RACCOURCIS.map(([nom]) => nom));
  assert.strictEqual(page.texte('remarqueListe'), '');
});

test('a page that is come back to shows the table of today, and keeps its buttons otherwise', () => {
  const { monde, page } = ouvrir();
  const premier = page.boutons('listeRaccourcis')[0];
  page.revenir();
  assert.strictEqual(page.boutons('listeRaccourcis')[0], premier);
  monde.raccourcis.push(['Nouveau', 'loc/n.txt']);
  monde.ecrireTable();
  page.revenir();
  assert.strictEqual(noms(page).pop(), 'Nouveau');
});

test('without shortcuts the page says why', () => {
  const { monde, page } = ouvrir({ raccourcis: [] });
  assert.strictEqual(page.texte('remarqueListe'), 'Aucun raccourci pour l’instant.');
  monde.ecrits['shortQrCode.js'] = null;
  const sansTable = monde.ouvrir('eleve.html');
  assert.match(sansTable.texte('remarqueListe'), /introuvable.*Demandez à votre professeur/);
  scanner(sansTable, '000000001');
  assert.match(sansTable.texte('messageCode'), /introuvable sur cet ordinateur/);
});
