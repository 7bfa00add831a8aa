// SPDX-License-Identifier: GPL-3.0-or-later
// The pages' way to the program: one queue per page that writes the command cookie.
var Tavrollo = (function (valeur, raccourcis, chargeur, vue) {
  'use strict';

  var MEMOIRE = 'tavrollo.dernierEnvoi';
  var DUREE_COOKIE_S = 30 * 24 * 3600;
  // The program primes itself for three seconds after its start; what stands in the store then is
  // not run. A page that sends by itself waits until that is over.
  var ATTENTE_AUTOMATIQUE_MS = 5000;
  var PAS_DE_COOKIE = 'ce navigateur ne garde pas de cookie pour cette page. Ouvrez-la dans ' +
    'Firefox, hors navigation privée.';

  var SANS_SCRIPT = 'le fichier rwCookies.js manque à côté des scripts de cette page.';

  var vueFile = null;

  // Storage may be switched off: the page then knows of its own sendings and of the cookie alone.
  function lireMemoire() {
    try { return Number(localStorage.getItem(MEMOIRE)) || 0; } catch (erreur) { return 0; }
  }

  function noterEnvoi(ms) {
    try { localStorage.setItem(MEMOIRE, String(ms)); } catch (erreur) { return; }
  }

  // The program rewrites the script that reads cookies: it may be missing after a failure.
  function cookieActuel() {
    return typeof window.lireCookie === 'function' ? lireCookie(valeur.NOM_COOKIE) : '';
  }

  // Firefox keeps a storage per file, so that another page's last sending shows in the cookie only.
  function dernierEnvoi() {
    return Math.max(lireMemoire(), valeur.heureDEnvoi(cookieActuel()));
  }

  function ecrire(texte) {
    if (typeof window.ecrireCookie !== 'function') { return SANS_SCRIPT; }
    ecrireCookie(valeur.NOM_COOKIE, texte, DUREE_COOKIE_S);
    return cookieActuel() === texte ? '' : PAS_DE_COOKIE;
  }

  var file = TavrolloFileAttente.creer({
    maintenant: Date.now,
    plusTard: function (action, ms) { return setTimeout(action, ms); },
    annuler: function (reference) { clearTimeout(reference); },
    ecrire: ecrire,
    lire: cookieActuel,
    lireEtat: chargeur.lireEtat,
    dernierEnvoi: dernierEnvoi,
    noterEnvoi: noterEnvoi,
    change: function (entrees, entree) {
      if (!vueFile) { return; }
      vueFile.montrer(entrees);
      if (entree && entree.etat === 'recue') { montrerEtat(entree.reponse); }
    }
  });

  // Shows a message beside a form; genre: "erreur", "succes" or "info".
  function dire(cible, texte, genre) {
    cible.textContent = texte;
    cible.setAttribute('data-genre', genre);
  }

  function messageDe(entree) {
    if (entree.etat === 'recue' && entree.demande.bilan) { return entree.demande.bilan; }
    return vue.texteEtat(entree).replace(/([^.…])$/, '$1.');
  }

  // Queues a command and lets the message element follow it; demande.bilan is what it says in the
  // end instead of the time taken. Gives what the queue gave: { entree } or { erreur, champ }.
  function commander(demande, message, suite) {
    demande.surChange = function (entree) {
      var genres = { recue: 'succes', muette: 'erreur' };
      dire(message, messageDe(entree), genres[entree.etat] || 'info');
      if (suite && entree.etat === 'recue') { suite(entree); }
    };
    var ajoutee = file.ajouter(demande);
    if (ajoutee.erreur) { dire(message, ajoutee.erreur, 'erreur'); }
    return ajoutee;
  }

  // Opens a shortcut: a page in the browser, everything else through the program.
  function ouvrirRaccourci(entree, message) {
    var cible = raccourcis.resoudre(entree.adresse);
    if (cible.erreur) { return dire(message, cible.erreur, 'erreur'); }
    if (cible.genre === 'web') {
      window.open(cible.url, '_blank', 'noopener,noreferrer');
      return dire(message, '« ' + entree.nom + ' » s’ouvre dans le navigateur.', 'succes');
    }
    commander({
      mot: 'shellexe', champs: [cible.chemin], titre: 'Ouvrir « ' + entree.nom + ' »',
      detail: raccourcis.cheminLisible(cible.chemin)
    }, message);
  }

  function montrerEtat(etat) {
    document.getElementById('fileEtat').textContent = etat
      ? 'Dernière réponse de Tavrollo ' + etat.version + ' : ' + etat.heure + '.'
      : 'Tavrollo n’a encore jamais répondu sur cet ordinateur.';
  }

  function preparer() {
    var liste = document.getElementById('fileAttente');
    if (!liste) { return; }
    vueFile = vue.creer(liste, document.getElementById('fileVide'), function () { return file; });
    chargeur.lireEtat(function (etat) {
      file.prendreEnCompte(etat);
      montrerEtat(etat);
    });
  }

  preparer();

  return {
    ATTENTE_AUTOMATIQUE_MS: ATTENTE_AUTOMATIQUE_MS,
    file: file,
    dire: dire,
    commander: commander,
    ouvrirRaccourci: ouvrirRaccourci
  };
})(TavrolloValeur, TavrolloRaccourcis, TavrolloChargeur, TavrolloVueFile);
