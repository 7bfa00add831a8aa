// SPDX-License-Identifier: GPL-3.0-or-later
// The teacher's page: the page key, the commands, the shortcuts.
(function (valeur, raccourcis, chargeur, vue) {
  'use strict';

  var SESSION = 'tavrollo.cle';
  var RW_COOKIES = 'rwCookies.js';
  var RACCOURCIS = 'shortQrCode.js';

  function par(id) { return document.getElementById(id); }

  function cleActuelle() { return typeof window.ps === 'string' ? window.ps : ''; }

  // The key that was typed in this tab, so that a reloaded page stays unlocked.
  function cleDeSession() {
    try { return sessionStorage.getItem(SESSION); } catch (erreur) { return null; }
  }

  function retenirCle(cle) {
    try {
      if (cle === null) { sessionStorage.removeItem(SESSION); } else { sessionStorage.setItem(SESSION, cle); }
    } catch (erreur) { return; }
  }

  function montrerPage(ouverte) {
    var sansCle = cleActuelle() === '';
    par('sectionSerrure').hidden = ouverte;
    par('outils').hidden = !ouverte;
    par('sectionCle').hidden = !ouverte;
    par('sectionCle').classList.toggle('invitation', sansCle);
    par('titreCle').textContent = sansCle ? 'Choisissez une clé pour cette page' : 'Changer la clé de la page';
    par('invitationCle').hidden = !sansCle;
    par('boutonChoisirCle').textContent = sansCle ? 'Choisir cette clé' : 'Changer la clé';
    var premier = sansCle ? par('sectionCle') : par('outils');
    if (par('zone').firstElementChild !== premier) { par('zone').insertBefore(premier, par('zone').firstElementChild); }
  }

  // Refused texts are shown where they were typed.
  function refuser(champ, message, texte) {
    champ.setAttribute('aria-invalid', 'true');
    Tavrollo.dire(message, texte, 'erreur');
    champ.focus();
  }

  function surEnvoi(formulaire, action) {
    par(formulaire).addEventListener('submit', function (evenement) {
      evenement.preventDefault();
      par(formulaire).querySelectorAll('[aria-invalid]').forEach(function (champ) {
        champ.removeAttribute('aria-invalid');
      });
      action();
    });
  }

  // A field's label, without what stands behind it in parentheses.
  function nomDuChamp(champ) { return champ.labels[0].textContent.replace(/\s\(.*\)$/, ''); }

  // champs: where the command's fields were typed, in their order.
  function envoyer(demande, champs, message, suite) {
    var ajoutee = Tavrollo.commander(demande, message, suite);
    if (!ajoutee.erreur) { return; }
    var champ = champs[ajoutee.champ];
    var lequel = champs.length > 1 ? ' Voyez le champ « ' + nomDuChamp(champ) + ' ».' : '';
    refuser(champ, message, ajoutee.erreur + lequel);
  }

  // A form with one path: opens it by the command.
  function lierChemin(formulaire, idChamp, idMessage, mot, titre, vide) {
    surEnvoi(formulaire, function () {
      var chemin = raccourcis.cheminSaisi(par(idChamp).value);
      if (chemin === '') { return refuser(par(idChamp), par(idMessage), vide); }
      envoyer({ mot: mot, champs: [chemin], titre: titre,
        detail: raccourcis.cheminLisible(chemin) }, [par(idChamp)], par(idMessage));
    });
  }

  function lancerProgramme() {
    var chemin = raccourcis.cheminSaisi(par('champProgramme').value);
    var parametres = par('champParametres').value.trim();
    var message = par('messageProgramme');
    if (chemin === '') { return refuser(par('champProgramme'), message, 'Indiquez le programme à lancer.'); }
    envoyer({
      mot: 'runapp', champs: [chemin, parametres], titre: 'Lancer un programme',
      detail: (raccourcis.cheminLisible(chemin) + ' ' + parametres).trim()
    }, [par('champProgramme'), par('champParametres')], message);
  }

  function creerRaccourci() {
    var choix = document.querySelector('input[name="genreAdresse"]:checked').value;
    var nom = par('champNom').value.trim().normalize('NFC');
    var message = par('messageRaccourci');
    var lue = raccourcis.adresseACreer(par('champAdresse').value, choix);
    if (lue.erreur) { return refuser(par('champAdresse'), message, lue.erreur); }
    var erreur = valeur.erreurDeNom(nom);
    if (erreur) { return refuser(par('champNom'), message, erreur); }
    envoyer({
      mot: 'createlink', champs: [lue.adresse, nom], titre: 'Créer le raccourci « ' + nom + ' »',
      detail: adresseLisible(lue.adresse.slice(3))
    }, [par('champAdresse'), par('champNom')], message, function () { confirmerRaccourci(nom); });
  }

  function lireRaccourcis() {
    var table = chargeur.tableDesRaccourcis();
    return table ? raccourcis.entrees(table) : [];
  }

  // The program answered; the table it wrote tells whether the shortcut is really there. Another one
  // may have had that name before.
  function confirmerRaccourci(nom) {
    var connues = lireRaccourcis().map(function (entree) { return entree.cle; });
    chargeur.recharger(RACCOURCIS, function () {
      montrerRaccourcis();
      var cree = lireRaccourcis().filter(function (entree) {
        return entree.nom === nom && connues.indexOf(entree.cle) < 0;
      }).pop();
      if (cree) {
        Tavrollo.dire(par('messageRaccourci'), 'Raccourci créé, avec la clé ' + cree.cle + '.', 'succes');
        par('formRaccourci').reset();
      } else {
        Tavrollo.dire(par('messageRaccourci'), 'Tavrollo a reçu la commande, mais le nouveau ' +
          'raccourci n’est pas dans la liste que cette page connaît.', 'erreur');
      }
    });
  }

  // The address without what only the pages need.
  function adresseLisible(adresse) {
    var cible = raccourcis.resoudre(adresse);
    return raccourcis.cheminLisible(cible.url || cible.chemin || adresse);
  }

  function ligneDe(entree) {
    var ligne = document.createElement('tr');
    var nom = document.createElement('th');
    nom.scope = 'row';
    nom.textContent = entree.nom;
    ligne.appendChild(nom);
    ligne.appendChild(vue.element('td', 'cle', entree.cle));
    ligne.appendChild(vue.element('td', 'adresse', adresseLisible(entree.adresse)));
    var bouton = vue.element('button', 'secondaire', 'Ouvrir');
    bouton.type = 'button';
    bouton.setAttribute('aria-label', 'Ouvrir : ' + entree.nom);
    bouton.addEventListener('click', function () {
      Tavrollo.ouvrirRaccourci(entree, par('messageListe'));
    });
    ligne.appendChild(document.createElement('td')).appendChild(bouton);
    return ligne;
  }

  function montrerRaccourcis() {
    var liste = lireRaccourcis();
    par('corpsRaccourcis').replaceChildren.apply(par('corpsRaccourcis'), liste.map(ligneDe));
    par('tableRaccourcis').hidden = liste.length === 0;
    par('sansRaccourci').hidden = liste.length > 0;
    par('sansRaccourci').textContent = chargeur.tableDesRaccourcis()
      ? 'Aucun raccourci pour l’instant : créez le premier ci-dessus.'
      : 'Le fichier des raccourcis (shortQrCode.js) est introuvable. Tavrollo le crée à son premier ' +
        'démarrage ; le reste de la page fonctionne.';
  }

  function deverrouiller() {
    if (par('champCle').value.normalize('NFC') !== cleActuelle()) {
      par('champCle').select();
      return refuser(par('champCle'), par('messageCle'), 'Ce n’est pas la bonne clé.');
    }
    par('champCle').value = '';
    Tavrollo.dire(par('messageCle'), '', 'info');
    retenirCle(cleActuelle());
    montrerPage(true);
    par('titreOutils').focus();
    debloquerMenus();
  }

  function debloquerMenus() {
    Tavrollo.commander({
      mot: 'lzck', champs: ['false'], titre: 'Débloquer les menus', bilan: 'Les menus sont débloqués.'
    }, par('messageMenus'));
  }

  function verrouiller() {
    var message = cleActuelle() === '' ? par('messageMenus') : par('messageCle');
    Tavrollo.commander({
      mot: 'lzck', champs: ['true'], titre: 'Verrouiller les menus', bilan: 'Les menus sont verrouillés.'
    }, message);
    retenirCle(null);
    if (cleActuelle() !== '') {
      montrerPage(false);
      par('champCle').focus();
    }
  }

  function choisirCle() {
    var cle = par('champNouvelleCle').value.normalize('NFC');
    var erreur = valeur.erreurDeCle(cle);
    if (erreur) { return refuser(par('champNouvelleCle'), par('messageNouvelleCle'), erreur); }
    envoyer({ mot: 'ini', champs: [cle], titre: 'Enregistrer la clé de la page' },
      [par('champNouvelleCle')], par('messageNouvelleCle'), function () { confirmerCle(cle); });
  }

  // The program answered; the script it wrote tells whether the key is really there.
  function confirmerCle(cle) {
    chargeur.recharger(RW_COOKIES, function () {
      if (cleActuelle() !== cle) {
        Tavrollo.dire(par('messageNouvelleCle'), 'Tavrollo a reçu la commande, mais la clé n’a pas pu ' +
          'être enregistrée dans rwCookies.js.', 'erreur');
        return;
      }
      par('champNouvelleCle').value = '';
      retenirCle(cle);
      montrerPage(true);
      Tavrollo.dire(par('messageNouvelleCle'), 'La clé est enregistrée et les menus sont débloqués.', 'succes');
    });
  }

  surEnvoi('formSerrure', deverrouiller);
  surEnvoi('formCle', choisirCle);
  lierChemin('formOuvrir', 'champOuvrir', 'messageOuvrir', 'shellexe', 'Ouvrir un document', 'Indiquez le document à ouvrir.');
  lierChemin('formTexte', 'champTexte', 'messageTexte', 'notepad', 'Ouvrir dans l’éditeur de texte', 'Indiquez le fichier à ouvrir.');
  surEnvoi('formProgramme', lancerProgramme);
  surEnvoi('formRaccourci', creerRaccourci);
  par('boutonVerrouiller').addEventListener('click', verrouiller);
  par('boutonDebloquer').addEventListener('click', debloquerMenus);
  montrerPage(cleActuelle() === '' || cleDeSession() === cleActuelle());
  montrerRaccourcis();
})(TavrolloValeur, TavrolloRaccourcis, TavrolloChargeur, TavrolloVueFile);
