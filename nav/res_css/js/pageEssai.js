// SPDX-License-Identifier: GPL-3.0-or-later
// The pages that try the bridge by themselves (start.html, init_cookie.html). Their texts stand in
// the page, as data-texte-… of the state's element.
(function (vue) {
  'use strict';

  var etat = document.getElementById('etatPont');
  var texte = document.getElementById('etatTexte');
  var mesures = document.getElementById('mesures');
  var secours = document.getElementById('secours');
  var bouton = document.getElementById('boutonReessayer');
  var raison = document.getElementById('raisonMuette');

  function montrer(nom, phrase) {
    etat.setAttribute('data-etat', nom);
    texte.textContent = phrase;
    mesures.hidden = nom !== 'marche';
    secours.hidden = nom !== 'muet';
    bouton.hidden = nom === 'attente';
  }

  function mesure(nom, valeur) {
    document.getElementById(nom).textContent = valeur;
  }

  // The state is what a screen reader announces: the time taken is to be heard, too.
  function reussir(entree) {
    var duree = vue.secondes(entree.dureeMs);
    mesure('mesureDuree', duree);
    mesure('mesureVersion', entree.reponse.version);
    mesure('mesureIntervalle', vue.secondes(Number(entree.reponse.intervalle)));
    mesure('mesureHeure', entree.reponse.heure);
    montrer('marche', etat.dataset.texteMarche.replace('{duree}', duree));
  }

  function suivre(entree) {
    if (entree.etat === 'recue') {
      reussir(entree);
    } else if (entree.etat === 'muette') {
      raison.textContent = entree.raison ? 'Cause : ' + entree.raison : '';
      raison.hidden = !entree.raison;
      montrer('muet', etat.dataset.texteMuet);
    } else {
      montrer('attente', entree.etat === 'envoyee' ? etat.dataset.texteEnvoye : etat.dataset.texteAttente);
    }
  }

  function essayer(delaiMs) {
    Tavrollo.file.ajouter({ sonde: true, titre: 'Essai du pont', delaiMs: delaiMs, surChange: suivre });
  }

  bouton.addEventListener('click', function () {
    essayer(0);
    etat.focus();
  });
  essayer(Tavrollo.ATTENTE_AUTOMATIQUE_MS);
})(TavrolloVueFile);
