// SPDX-License-Identifier: GPL-3.0-or-later
// The queue of commands: sends one, waits for its round trip, keeps the distance to the next. The
// clock, the timers, the cookie and the program's answer are handed in.
var TavrolloFileAttente = (function (valeur) {
  'use strict';

  // Firefox writes half a second after a cookie was set: of two values within that time only the
  // last reaches the disk.
  var ECART_MS = 600;
  var PERDU_MS = 500;
  var RELEVE_MS = 300;
  var MARGE_MS = 6000;
  var INTERVALLE_MS = 1000;
  var RECUES_GARDEES = 4;

  // env: maintenant() in ms; plusTard(action, ms) and annuler(reference); ecrire(valeur), "" or why
  // not; lire(), the value that stands in the cookie; lireEtat(suite), which gives the program's
  // answer or null; dernierEnvoi() and noterEnvoi(ms), shared by all pages; change(entrees).
  function creer(env) {
    var entrees = [];
    var prochainId = 1;
    var dernierCompteur = 0;
    var intervalle = INTERVALLE_MS;
    var minuterie = null;

    function premiere(etat) {
      return entrees.find(function (entree) { return entree.etat === etat; });
    }

    function programmer(action, ms) {
      env.annuler(minuterie);
      minuterie = env.plusTard(action, ms);
    }

    function construire(demande, compteur) {
      return demande.sonde ? valeur.construireSonde(compteur)
        : valeur.construireCommande(demande.mot, demande.champs, compteur);
    }

    function annoncer(entree) {
      env.change(entrees.slice(), entree);
      if (entree && entree.demande.surChange) { entree.demande.surChange(entree); }
    }

    function passer(entree, etat) {
      entree.etat = etat;
      annoncer(entree);
    }

    // Drops the oldest answered entries, so that the list stays short.
    function elaguer() {
      var recues = entrees.filter(function (entree) { return entree.etat === 'recue'; });
      var trop = recues.slice(0, Math.max(0, recues.length - RECUES_GARDEES));
      entrees = entrees.filter(function (entree) { return trop.indexOf(entree) < 0; });
    }

    // A time of sending that lies ahead comes from a clock that was set back: it counts for nothing.
    function attenteRestante(entree) {
      var maintenant = env.maintenant();
      var dernier = env.dernierEnvoi();
      var libre = dernier > maintenant + 1000 ? 0 : dernier + intervalle + ECART_MS;
      return Math.max(entree.auPlusTot, libre) - maintenant;
    }

    function envoyer(entree) {
      var compteur = Math.max(env.maintenant(), dernierCompteur + 1);
      var construite = construire(entree.demande, compteur);
      dernierCompteur = compteur;
      entree.raison = construite.erreur || env.ecrire(construite.valeur);
      if (entree.raison) {
        passer(entree, 'muette');
        avancer();
        return;
      }
      env.noterEnvoi(compteur);
      entree.valeur = construite.valeur;
      entree.attendu = valeur.reponseAttendue(construite.valeur);
      entree.envoyeeA = env.maintenant();
      passer(entree, 'envoyee');
      programmer(relever, RELEVE_MS);
    }

    // True when another page wrote its own value before the browser could write ours to the disk.
    function ecrasee(entree) {
      var presente = env.lire();
      var heure = presente === entree.valeur ? 0 : valeur.heureDEnvoi(presente);
      return heure > 0 && heure - valeur.heureDEnvoi(entree.valeur) < PERDU_MS;
    }

    function prendreEnCompte(etat) {
      if (!etat) { return; }
      if (Number(etat.intervalle) > 0) { intervalle = Number(etat.intervalle); }
      entrees.forEach(function (entree) {
        var ouverte = entree.etat === 'envoyee' || entree.etat === 'muette';
        if (ouverte && entree.attendu && entree.attendu === String(etat.dernier)) {
          entree.dureeMs = env.maintenant() - entree.envoyeeA;
          entree.reponse = etat;
          passer(entree, 'recue');
        }
      });
      elaguer();
    }

    function relever() {
      env.lireEtat(function (etat) {
        prendreEnCompte(etat);
        var entree = premiere('envoyee');
        if (!entree) {
          annoncer(null);
          avancer();
        } else if (ecrasee(entree)) {
          passer(entree, 'attente');
          avancer();
        } else if (env.maintenant() - entree.envoyeeA > intervalle * 3 + MARGE_MS) {
          passer(entree, 'muette');
          avancer();
        } else {
          programmer(relever, RELEVE_MS);
        }
      });
    }

    function avancer() {
      if (premiere('envoyee')) { return; }
      var suivante = premiere('attente');
      if (!suivante) { return; }
      var reste = attenteRestante(suivante);
      if (reste > 0) {
        programmer(avancer, Math.min(reste, 1000));
      } else {
        envoyer(suivante);
      }
    }

    // demande: { titre, detail, mot, champs } or { titre, sonde: true }; delaiMs holds the first
    // sending back; surChange(entree) hears of every change. Gives { entree }, or { erreur, champ } as
    // TavrolloValeur does.
    function ajouter(demande) {
      var essai = construire(demande, Math.max(env.maintenant(), dernierCompteur + 1));
      if (essai.erreur) { return essai; }
      var entree = {
        id: prochainId++,
        demande: demande,
        etat: 'attente',
        auPlusTot: env.maintenant() + (demande.delaiMs || 0),
        raison: ''
      };
      entrees.push(entree);
      annoncer(entree);
      avancer();
      return { entree: entree };
    }

    function retirer(id) {
      entrees = entrees.filter(function (entree) { return entree.id !== id; });
    }

    function trouver(id) {
      return entrees.find(function (entree) { return entree.id === id; });
    }

    // Sends an unanswered command again, behind those that wait.
    function reessayer(id) {
      var entree = trouver(id);
      if (!entree || entree.etat !== 'muette') { return; }
      retirer(id);
      entrees.push(entree);
      entree.auPlusTot = 0;
      entree.raison = '';
      passer(entree, 'attente');
      avancer();
    }

    // Drops an entry; one that is on its way cannot be called back.
    function oublier(id) {
      var entree = trouver(id);
      if (!entree || entree.etat === 'envoyee') { return; }
      retirer(id);
      passer(entree, 'oubliee');
      avancer();
    }

    return {
      ajouter: ajouter,
      reessayer: reessayer,
      oublier: oublier,
      prendreEnCompte: prendreEnCompte
    };
  }

  return { creer: creer };
})(typeof require === 'function' ? require('./valeur.js') : TavrolloValeur);
if (typeof module === 'object') { module.exports = TavrolloFileAttente; }
