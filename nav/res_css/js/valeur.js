// SPDX-License-Identifier: GPL-3.0-or-later
// Builds the values of the command cookie, or says in French why a text cannot become one. Pure:
// no page, no clock, no cookie. Results are { valeur: … } or { erreur: … }, with the number of the
// field at fault as champ where one of them is.
var TavrolloValeur = (function (octets) {
  'use strict';

  var NOM_COOKIE = 'Tavr1CodeToExe';
  var SEPARATEUR = '_|_';
  var MARQUE_FIN = '_e-o-v_';
  // The program reads so many bytes in front of the end marker and no more.
  var OCTETS_MAX = 256;

  // How many fields of its own each command takes, and how many of these must not be empty.
  var COMMANDES = {
    notepad: { champs: 1, remplis: 1 },
    shellexe: { champs: 1, remplis: 1 },
    runapp: { champs: 2, remplis: 1 },
    createlink: { champs: 2, remplis: 2 },
    ini: { champs: 1, remplis: 1 },
    lzck: { champs: 1, remplis: 1 }
  };

  function codeLisible(caractere) {
    var code = caractere.codePointAt(0).toString(16).toUpperCase();
    return 'U+' + ('0000' + code).slice(-Math.max(4, code.length));
  }

  function nomDeControle(caractere) {
    if (caractere === '\t') { return 'une tabulation'; }
    if (caractere === '\n' || caractere === '\r') { return 'un retour à la ligne'; }
    return 'un caractère de contrôle (' + codeLisible(caractere) + ')';
  }

  // Why a field cannot travel in a cookie, or "".
  function erreurDeChamp(champ) {
    if (champ.indexOf(';') >= 0) {
      return 'Le point-virgule « ; » ne peut pas passer par un cookie : retirez-le.';
    }
    var controle = champ.match(/[\u0000-\u001f\u007f-\u009f]/);
    if (controle) {
      return 'Le texte contient ' + nomDeControle(controle[0]) +
        ', qui ne peut pas passer par un cookie : retirez-le.';
    }
    var isole = champ.match(/[\ud800-\udbff](?![\udc00-\udfff])|(?:[^\ud800-\udbff]|^)[\udc00-\udfff]/);
    if (isole) {
      return 'Le texte contient un caractère incomplet, qui ne peut pas passer par un cookie.';
    }
    if (champ.indexOf(SEPARATEUR) >= 0) {
      return 'La suite « _|_ » sépare les champs d’une commande : retirez-la.';
    }
    if (champ.indexOf(MARQUE_FIN) >= 0) {
      return 'La suite « _e-o-v_ » marque la fin d’une commande : retirez-la.';
    }
    return '';
  }

  // A field and the separators around it can make a separator or an end marker together, although
  // none of them holds one: what was joined is split again to see.
  function erreurDAssemblage(champ) {
    var entoure = SEPARATEUR + champ + SEPARATEUR;
    if (entoure.split(SEPARATEUR)[1] !== champ) {
      return 'Un texte se termine par « _| », ce qui se confond avec le séparateur « _|_ » : ' +
        'retirez ces signes.';
    }
    if (entoure.indexOf(MARQUE_FIN) >= 0) {
      return 'Un texte se termine par « _e-o-v », ce qui se confond avec la marque de fin : ' +
        'retirez ces signes.';
    }
    return '';
  }

  function erreurDeLongueur(corps) {
    var longueur = octets.longueurUtf8(corps);
    if (longueur <= OCTETS_MAX) { return ''; }
    var trop = longueur - OCTETS_MAX;
    return 'La commande est trop longue : ' + longueur + ' octets pour ' + OCTETS_MAX +
      ' au plus. Raccourcissez-la de ' + trop + (trop > 1 ? ' octets' : ' octet') +
      ' (une lettre accentuée en compte deux).';
  }

  // Where there is most to shorten.
  function rangDuPlusLong(champs) {
    var longueurs = champs.map(octets.longueurUtf8);
    return longueurs.indexOf(Math.max.apply(null, longueurs));
  }

  // A command with its own fields and, behind them, the counter that makes each value new.
  function construireCommande(mot, champs, compteur) {
    if (!Object.prototype.hasOwnProperty.call(COMMANDES, mot)) {
      return { erreur: 'La commande « ' + mot + ' » n’existe pas.' };
    }
    var forme = COMMANDES[mot];
    if (champs.length !== forme.champs) {
      return { erreur: 'La commande « ' + mot + ' » demande ' + forme.champs +
        (forme.champs > 1 ? ' champs.' : ' champ.') };
    }
    for (var i = 0; i < champs.length; i++) {
      if (i < forme.remplis && champs[i] === '') {
        return { erreur: 'Il manque un texte : rien n’a été envoyé.', champ: i };
      }
      var erreur = erreurDeChamp(champs[i]) || erreurDAssemblage(champs[i]);
      if (erreur) { return { erreur: erreur, champ: i }; }
    }
    var corps = [mot].concat(champs, String(compteur)).join(SEPARATEUR);
    erreur = erreurDeLongueur(corps);
    return erreur ? { erreur: erreur, champ: rangDuPlusLong(champs) } : { valeur: corps + MARQUE_FIN };
  }

  // A value that the program handles without doing anything: it shows that the bridge works.
  function construireSonde(compteur) {
    return { valeur: 'sonde-' + compteur + MARQUE_FIN };
  }

  // What the program answers as its last field once it has handled the value.
  function reponseAttendue(valeur) {
    return valeur.slice(0, -MARQUE_FIN.length).split(SEPARATEUR).pop();
  }

  // The time in milliseconds that stands in a value as its counter, or 0.
  function heureDEnvoi(valeur) {
    var trouve = valeur.match(/(?:_\|_|^sonde-)(\d{1,15})_e-o-v_$/);
    return trouve ? Number(trouve[1]) : 0;
  }

  // What the shortcut table and the key script cannot hold, since the program writes them unquoted.
  function erreurDeGuillemets(texte) {
    if (texte.indexOf('"') >= 0) { return 'Le guillemet droit « " » n’est pas accepté ici.'; }
    if (texte.indexOf('\\') >= 0) { return 'La barre oblique inverse « \\ » n’est pas acceptée ici.'; }
    if (texte.indexOf('\t') >= 0) { return 'La tabulation n’est pas acceptée ici.'; }
    return '';
  }

  function erreurDeNom(nom) {
    if (nom === '') { return 'Donnez un nom au raccourci.'; }
    return erreurDeGuillemets(nom) || erreurDeChamp(nom) || erreurDAssemblage(nom);
  }

  function erreurDeCle(cle) {
    if (cle === '') { return 'Tapez une clé.'; }
    if (cle !== cle.trim()) { return 'La clé ne doit ni commencer ni finir par une espace.'; }
    var etranger = octets.premierHors1252(cle);
    return erreurDeGuillemets(cle) || erreurDeChamp(cle) || (etranger
      ? 'Le caractère « ' + etranger + ' » ne peut pas être enregistré dans la clé.' : '');
  }

  return {
    NOM_COOKIE: NOM_COOKIE,
    OCTETS_MAX: OCTETS_MAX,
    construireCommande: construireCommande,
    construireSonde: construireSonde,
    reponseAttendue: reponseAttendue,
    heureDEnvoi: heureDEnvoi,
    erreurDeGuillemets: erreurDeGuillemets,
    erreurDeNom: erreurDeNom,
    erreurDeCle: erreurDeCle
  };
})(typeof require === 'function' ? require('./octets.js') : TavrolloOctets);
if (typeof module === 'object') { module.exports = TavrolloValeur; }
