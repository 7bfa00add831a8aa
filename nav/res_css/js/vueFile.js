// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the queue: one line per command, with its state, and buttons where there is a choice.
var TavrolloVueFile = (function () {
  'use strict';

  // Decimal comma, and no line break in front of the unit.
  function secondes(ms) {
    return (ms / 1000).toLocaleString('fr-FR', { minimumFractionDigits: 1, maximumFractionDigits: 1 }) + '\u00a0s';
  }

  // The state of an entry in words.
  function texteEtat(entree) {
    switch (entree.etat) {
      case 'attente': return 'En attente';
      case 'envoyee': return 'En route vers Tavrollo…';
      case 'recue': return 'Reçu par Tavrollo en ' + secondes(entree.dureeMs);
      case 'oubliee': return 'Oublié : rien de plus ne sera envoyé.';
      default: return 'Sans réponse' + (entree.raison ? ' : ' + entree.raison : ' de Tavrollo');
    }
  }

  function element(nom, classe, texte) {
    var cree = document.createElement(nom);
    if (classe) { cree.className = classe; }
    if (texte) { cree.textContent = texte; }
    return cree;
  }

  function bouton(texte, titre, action) {
    var cree = element('button', 'discret', texte);
    cree.type = 'button';
    cree.setAttribute('aria-label', texte + ' : ' + titre);
    cree.addEventListener('click', action);
    return cree;
  }

  // liste: the ol element; vide: shown while the list is empty; file(): the queue.
  function creer(liste, vide, file) {
    var lignes = {};

    function nouvelleLigne(entree) {
      var ligne = element('li', 'commande');
      ligne.appendChild(element('p', 'commande-titre', entree.demande.titre));
      if (entree.demande.detail) {
        ligne.appendChild(element('p', 'commande-detail', entree.demande.detail));
      }
      ligne.appendChild(element('p', 'commande-etat'));
      var boutons = element('p', 'commande-boutons');
      boutons.appendChild(bouton('Réessayer', entree.demande.titre, function () {
        file().reessayer(entree.id);
        liste.focus();
      }));
      boutons.appendChild(bouton('Oublier', entree.demande.titre, function () {
        file().oublier(entree.id);
        liste.focus();
      }));
      ligne.appendChild(boutons);
      return ligne;
    }

    function ajuster(ligne, entree) {
      var boutons = ligne.querySelectorAll('button');
      ligne.setAttribute('data-etat', entree.etat);
      ligne.querySelector('.commande-etat').textContent = texteEtat(entree);
      boutons[0].hidden = entree.etat !== 'muette';
      boutons[1].hidden = entree.etat !== 'muette' && entree.etat !== 'attente';
    }

    // The newest entry comes first.
    function montrer(suite) {
      var vues = {};
      var entrees = suite.slice().reverse();
      entrees.forEach(function (entree) {
        var ligne = lignes[entree.id] || nouvelleLigne(entree);
        vues[entree.id] = ligne;
        ajuster(ligne, entree);
      });
      Object.keys(lignes).forEach(function (id) {
        if (!vues[id]) { lignes[id].remove(); }
      });
      entrees.forEach(function (entree, rang) {
        if (liste.children[rang] !== vues[entree.id]) {
          liste.insertBefore(vues[entree.id], liste.children[rang] || null);
        }
      });
      lignes = vues;
      vide.hidden = entrees.length > 0;
    }

    montrer([]);
    return { montrer: montrer };
  }

  return { creer: creer, texteEtat: texteEtat, secondes: secondes, element: element };
})();
if (typeof module === 'object') { module.exports = TavrolloVueFile; }
