// SPDX-License-Identifier: GPL-3.0-or-later
// The pupil's page: a scanned or typed key, and the shortcuts by name.
(function (raccourcis, chargeur, vue) {
  'use strict';

  var champ = document.getElementById('champCode');
  var message = document.getElementById('messageCode');
  var filtre = document.getElementById('champFiltre');
  var liste = document.getElementById('listeRaccourcis');
  var remarque = document.getElementById('remarqueListe');
  var messageListe = document.getElementById('messageListe');
  var toutes = [];

  function ouvrirCode(evenement) {
    evenement.preventDefault();
    champ.removeAttribute('aria-invalid');
    var trouve = raccourcis.chercher(chargeur.tableDesRaccourcis(), champ.value);
    if (trouve.erreur) {
      champ.setAttribute('aria-invalid', 'true');
      Tavrollo.dire(message, trouve.erreur, 'erreur');
      champ.select();
    } else {
      Tavrollo.ouvrirRaccourci(trouve.entree, message);
      champ.value = '';
    }
    // The next scan types into whatever has the focus.
    champ.focus();
  }

  function boutonDe(entree) {
    var cible = raccourcis.resoudre(entree.adresse);
    var ligne = document.createElement('li');
    var bouton = vue.element('button', 'raccourci');
    bouton.type = 'button';
    bouton.appendChild(vue.element('span', 'raccourci-nom', entree.nom));
    bouton.appendChild(vue.element('span', 'raccourci-genre',
      (cible.genre === 'web' ? 'Page web' : 'Document') + ' · ' + entree.cle));
    bouton.addEventListener('click', function () { Tavrollo.ouvrirRaccourci(entree, messageListe); });
    ligne.appendChild(bouton);
    return ligne;
  }

  function remarquePour(table, montrees) {
    if (!table) {
      return 'La liste des raccourcis (shortQrCode.js) est introuvable : Tavrollo la crée à son ' +
        'premier démarrage. Demandez à votre professeur.';
    }
    if (toutes.length === 0) { return 'Aucun raccourci pour l’instant.'; }
    return montrees.length === 0 ? 'Aucun raccourci ne correspond à « ' + filtre.value.trim() + ' ».' : '';
  }

  function montrer() {
    var montrees = raccourcis.filtrer(toutes, filtre.value.trim());
    liste.replaceChildren.apply(liste, montrees.map(boutonDe));
    remarque.textContent = remarquePour(chargeur.tableDesRaccourcis(), montrees);
  }

  // Buttons are made anew only when the table changed, so that the focus stays where it is.
  function relire() {
    var table = chargeur.tableDesRaccourcis();
    var lues = table ? raccourcis.entrees(table) : [];
    if (JSON.stringify(lues) !== JSON.stringify(toutes)) {
      toutes = lues;
      montrer();
    }
  }

  document.getElementById('formCode').addEventListener('submit', ouvrirCode);
  filtre.addEventListener('input', montrer);
  window.addEventListener('focus', function () { chargeur.recharger('shortQrCode.js', relire); });
  relire();
  montrer();
})(TavrolloRaccourcis, TavrolloChargeur, TavrolloVueFile);
