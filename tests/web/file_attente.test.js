// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fileAttente = require('../../nav/res_css/js/fileAttente.js');
const valeur = require('../../nav/res_css/js/valeur.js');

const DEPART = 1732184523000;

// A page, a cookie and a program on a clock that the test moves.
function monde(reglages) {
  const m = {
    heure: DEPART, cookie: '', envois: [], dernierEnvoi: 0, taches: [], etat: null, entrees: [],
    repond: true, refus: '', intervalle: 1000, ...reglages
  };
  const env = {
    maintenant: () => m.heure,
    plusTard: (action, ms) => { const tache = { action, quand: m.heure + ms }; m.taches.push(tache); return tache; },
    annuler: (tache) => { m.taches = m.taches.filter((autre) => autre !== tache); },
    ecrire: (texte) => {
      if (m.refus) { return m.refus; }
      m.cookie = texte;
      m.envois.push({ texte, quand: m.heure - DEPART });
      return '';
    },
    lire: () => m.cookie,
    lireEtat: (suite) => suite(m.etat),
    dernierEnvoi: () => m.dernierEnvoi,
    noterEnvoi: (ms) => { m.dernierEnvoi = ms; },
    change: (entrees) => { m.entrees = entrees; }
  };
  m.file = fileAttente.creer(env);
  m.passer = (ms) => {
    const fin = m.heure + ms;
    while (m.heure < fin) {
      m.heure += 50;
      const envoi = m.envois[m.envois.length - 1];
      if (m.repond && envoi && m.heure - DEPART - envoi.quand >= 1200) {
        m.etat = { dernier: valeur.reponseAttendue(envoi.texte), intervalle: m.intervalle };
      }
      m.taches.filter((tache) => tache.quand <= m.heure).forEach((tache) => {
        if (!m.taches.includes(tache)) { return; }
        env.annuler(tache);
        tache.action();
      });
    }
  };
  m.ouvrir = (chemin, reste) =>
    m.file.ajouter({ mot: 'shellexe', champs: [chemin], titre: chemin, ...reste });
  m.etats = () => m.entrees.map((entree) => entree.etat);
  return m;
}

test('a command is sent at once and received with the time its round trip took', () => {
  const m = monde();
  const { entree } = m.ouvrir('/a');
  assert.deepStrictEqual(m.etats(), ['envoyee']);
  assert.strictEqual(m.cookie, 'shellexe_|_/a_|_' + DEPART + '_e-o-v_');
  m.passer(3000);
  assert.deepStrictEqual(m.etats(), ['recue']);
  assert.ok(entree.dureeMs >= 1200 && entree.dureeMs <= 1600, String(entree.dureeMs));
});

test('one command is on its way at a time, and two sends keep their distance', () => {
  const m = monde();
  m.ouvrir('/a');
  m.ouvrir('/b');
  assert.deepStrictEqual(m.etats(), ['envoyee', 'attente']);
  m.passer(6000);
  assert.deepStrictEqual(m.etats(), ['recue', 'recue']);
  assert.ok(m.envois[1].quand - m.envois[0].quand >= 1600);
});

test('the distance follows the poll interval of the program', () => {
  const m = monde({ intervalle: 3000 });
  m.ouvrir('/a');
  m.passer(2000);
  m.ouvrir('/b');
  m.passer(10000);
  assert.ok(m.envois[1].quand >= 3600, String(m.envois[1].quand));
});

test('a send of another page is kept away from as well', () => {
  const m = monde({ dernierEnvoi: DEPART - 400 });
  m.ouvrir('/a');
  assert.deepStrictEqual(m.etats(), ['attente']);
  m.passer(2000);
  assert.ok(m.envois[0].quand >= 1200 && m.envois[0].quand <= 1300, String(m.envois[0].quand));
});

test('a last send that lies in the future does not hold the queue', () => {
  const m = monde({ dernierEnvoi: DEPART + 3600000 });
  m.ouvrir('/a');
  assert.deepStrictEqual(m.etats(), ['envoyee']);
});

test('without an answer a command falls silent after three intervals and six seconds', () => {
  const m = monde({ repond: false });
  m.ouvrir('/a');
  m.passer(8900);
  assert.deepStrictEqual(m.etats(), ['envoyee']);
  m.passer(700);
  assert.deepStrictEqual(m.etats(), ['muette']);
});

test('a silent command lets the next one go', () => {
  const m = monde({ repond: false });
  m.ouvrir('/a');
  m.ouvrir('/b');
  m.passer(10000);
  assert.deepStrictEqual(m.etats(), ['muette', 'envoyee']);
});

test('trying again sends a new counter', () => {
  const m = monde({ repond: false });
  const { entree } = m.ouvrir('/a');
  m.passer(10000);
  m.repond = true;
  m.file.reessayer(entree.id);
  m.passer(3000);
  assert.deepStrictEqual(m.etats(), ['recue']);
  assert.strictEqual(m.envois.length, 2);
  assert.notStrictEqual(m.envois[0].texte, m.envois[1].texte);
});

test('a late answer is still taken', () => {
  const m = monde({ repond: false });
  m.ouvrir('/a');
  m.passer(10000);
  m.file.prendreEnCompte({ dernier: String(DEPART), intervalle: 1000 });
  assert.strictEqual(m.file.ajouter({ titre: 'x', sonde: true }).erreur, undefined);
  assert.strictEqual(m.entrees[0].etat, 'recue');
});

test('an answer to something else is not ours', () => {
  const m = monde({ repond: false, etat: { dernier: 'sonde-' + DEPART, intervalle: 1000 } });
  m.ouvrir('/a');
  m.passer(3000);
  assert.deepStrictEqual(m.etats(), ['envoyee']);
});

test('forgetting drops a waiting or a silent command, not one on its way', () => {
  const m = monde({ repond: false });
  const premiere = m.ouvrir('/a').entree;
  const seconde = m.ouvrir('/b').entree;
  m.file.oublier(premiere.id);
  m.file.oublier(seconde.id);
  assert.deepStrictEqual(m.etats(), ['envoyee']);
  m.passer(10000);
  m.file.oublier(premiere.id);
  m.passer(5000);
  assert.deepStrictEqual(m.etats(), []);
  assert.strictEqual(m.envois.length, 1);
});

test('a value that another page overwrote at once is sent again', () => {
  const m = monde();
  m.ouvrir('/a');
  const autre = valeur.construireSonde(DEPART + 100).valeur;
  m.passer(100);
  m.cookie = autre;
  m.dernierEnvoi = DEPART + 100;
  m.envois[0].texte = autre;
  m.passer(8000);
  assert.deepStrictEqual(m.etats(), ['recue']);
  assert.strictEqual(m.envois.length, 2);
  assert.ok(m.envois[1].quand >= 1700, String(m.envois[1].quand));
});

test('a value that was overwritten later may have been run and is not sent again', () => {
  const m = monde({ repond: false });
  m.ouvrir('/a');
  m.passer(700);
  m.cookie = valeur.construireSonde(DEPART + 700).valeur;
  m.passer(12000);
  assert.deepStrictEqual(m.etats(), ['muette']);
  assert.strictEqual(m.envois.length, 1);
});

test('a page that sends by itself holds back', () => {
  const m = monde();
  m.file.ajouter({ sonde: true, titre: 'essai', delaiMs: 5000 });
  m.passer(4900);
  assert.deepStrictEqual(m.envois, []);
  m.passer(200);
  assert.match(m.envois[0].texte, /^sonde-\d+_e-o-v_$/);
  m.passer(3000);
  assert.deepStrictEqual(m.etats(), ['recue']);
});

test('a browser that keeps no cookie is told at once', () => {
  const m = monde({ refus: 'pas de cookie' });
  const { entree } = m.ouvrir('/a');
  assert.strictEqual(entree.etat, 'muette');
  assert.strictEqual(entree.raison, 'pas de cookie');
});

test('a value that a cookie cannot carry never enters the queue', () => {
  const m = monde();
  assert.match(m.ouvrir('a;b').erreur, /point-virgule/);
  assert.deepStrictEqual(m.entrees, []);
  assert.deepStrictEqual(m.envois, []);
});

test('only the last answered commands stay in the list', () => {
  const m = monde();
  for (let i = 0; i < 7; i++) { m.ouvrir('/' + i); }
  m.passer(30000);
  assert.strictEqual(m.envois.length, 7);
  assert.deepStrictEqual(m.entrees.map((entree) => entree.demande.titre), ['/3', '/4', '/5', '/6']);
});

test('the asker hears of every change', () => {
  const m = monde();
  const vus = [];
  m.ouvrir('/a', { surChange: (entree) => vus.push(entree.etat) });
  m.passer(3000);
  assert.deepStrictEqual(vus, ['attente', 'envoyee', 'recue']);
});
