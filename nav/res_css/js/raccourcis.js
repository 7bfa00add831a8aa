// SPDX-License-Identifier: GPL-3.0-or-later
// The shortcut table seen from the pages: looking a key up, decoding names and addresses, and
// telling how an address is opened or stored. Pure: the table is handed in.
var TavrolloRaccourcis = (function (octets, valeur) {
  'use strict';

  var DONNEES = '../../user_datas/';
  // The program cuts three characters off the front of a new shortcut's address.
  var DEVANT_ADRESSE = 'lnk';
  // What a scanner set to an American keyboard types for 0 to 9 on a French one.
  var CHIFFRES_AZERTY = 'à&é"\'(-è_ç';

  // Short names are UTF-8 bytes in a script that the page reads as Windows-1252.
  function decoderNom(brut) {
    var lus = octets.versOctets(brut);
    return lus === null ? brut : octets.depuisUtf8(lus);
  }

  // Addresses are Windows-1252, unless their bytes are valid UTF-8 beyond ASCII.
  function decoderAdresse(brut) {
    var lus = octets.versOctets(brut);
    var decode = lus === null ? null : octets.depuisUtf8Strict(lus);
    return decode === null ? brut : decode;
  }

  // table: { tabObj, ShortQrCode, NameQrCode } as shortQrCode.js defines them, or null.
  function possede(table, cle) {
    return Object.prototype.hasOwnProperty.call(table.tabObj, cle) &&
      typeof table.tabObj[cle] === 'string' && table.tabObj[cle].indexOf('_|_') >= 0;
  }

  function entree(table, cle) {
    return {
      cle: cle,
      nom: decoderNom(table.NameQrCode(cle)),
      adresse: decoderAdresse(table.ShortQrCode(cle))
    };
  }

  // All shortcuts, by key.
  function entrees(table) {
    return Object.keys(table.tabObj).sort()
      .filter(function (cle) { return possede(table, cle); })
      .map(function (cle) { return entree(table, cle); });
  }

  function chiffresDe(saisie) {
    if (/[0-9]/.test(saisie)) { return saisie; }
    return Array.from(saisie).map(function (caractere) {
      var chiffre = CHIFFRES_AZERTY.indexOf(caractere);
      return chiffre < 0 ? caractere : String(chiffre);
    }).join('');
  }

  // A typed or scanned key: { cle } or { erreur }.
  function lireCle(saisie) {
    var cle = chiffresDe(saisie.trim());
    if (cle === '') { return { erreur: 'Tapez ou scannez une clé de 9 chiffres.' }; }
    if (!/^[0-9]+$/.test(cle)) {
      return { erreur: 'Une clé ne contient que des chiffres : « ' + saisie.trim() + ' » n’en est pas une.' };
    }
    if (cle.length !== 9) {
      return { erreur: 'Une clé a exactement 9 chiffres ; celle-ci en a ' + cle.length + '.' };
    }
    return { cle: cle };
  }

  // The shortcut of a typed or scanned key: { entree } or { erreur }; never an exception.
  function chercher(table, saisie) {
    var lue = lireCle(saisie);
    if (lue.erreur) { return lue; }
    if (!table) { return { erreur: 'La liste des raccourcis est introuvable sur cet ordinateur.' }; }
    if (!possede(table, lue.cle)) {
      return { erreur: 'Aucun raccourci ne porte la clé ' + lue.cle + '.' };
    }
    return { entree: entree(table, lue.cle) };
  }

  function decoderPourcents(texte) {
    if (texte.indexOf('%') < 0) { return texte; }
    var source = new TextEncoder().encode(texte);
    var sortie = [];
    for (var i = 0; i < source.length; i++) {
      var paire = String.fromCharCode(source[i + 1] || 0, source[i + 2] || 0);
      if (source[i] === 0x25 && /^[0-9a-f]{2}$/i.test(paire)) {
        sortie.push(parseInt(paire, 16));
        i += 2;
      } else {
        sortie.push(source[i]);
      }
    }
    var lus = Uint8Array.from(sortie);
    var decode = octets.depuisUtf8Strict(lus);
    return decode === null ? octets.depuis1252(lus) : decode;
  }

  // The path of a file URL: C:/x, /home/x or //server/share/x.
  function cheminLocal(url) {
    var reste = url.replace(/^file:/i, '').replace(/[?#].*$/, '');
    var hote = reste.match(/^\/\/([^/]*)(.*)$/);
    var chemin = reste;
    if (hote) {
      var ordinateur = hote[1] === '' || hote[1].toLowerCase() === 'localhost';
      chemin = ordinateur ? hote[2] : '//' + hote[1] + hote[2];
    }
    return decoderPourcents(chemin.replace(/^\/([A-Za-z])[:|]/, '$1:'));
  }

  // A path as somebody types or pastes it: within quotation marks, as an URL, or below user_datas.
  function cheminSaisi(texte) {
    var chemin = texte.trim().replace(/^"(.*)"$/, '$1').trim();
    if (/^file:/i.test(chemin)) { return cheminLocal(chemin); }
    return /^user_datas[\\/]/.test(chemin) ? '../../' + chemin.replace(/\\/g, '/') : chemin;
  }

  // A page that the browser may open: { url } or { erreur }.
  function adresseDePage(texte) {
    if (/^https?:\/\/[^/]/i.test(texte)) { return { url: texte }; }
    if (/^\.\.?\//.test(texte)) { return { url: texte }; }
    if (/^[a-z][a-z0-9+.-]*:(?![0-9])/i.test(texte)) {
      return { erreur: 'Cette adresse de page n’est pas acceptée : elle doit commencer par « https:// » ou « http:// ».' };
    }
    return /^[^\s/:]+(:[0-9]+)?(\/.*)?$/.test(texte) ? { url: 'https://' + texte }
      : { erreur: 'L’adresse de page « ' + texte + ' » n’est pas valable.' };
  }

  // How a stored address is opened: { genre: "pont", chemin }, { genre: "web", url } or { erreur }.
  function resoudre(adresse) {
    var genre = adresse.slice(0, 3);
    var reste = genre === 'loc' || genre === 'web' ? adresse.slice(3) : adresse;
    if (reste.trim() === '') { return { erreur: 'Ce raccourci ne contient pas d’adresse.' }; }
    if (genre === 'web') {
      var page = adresseDePage(reste);
      return page.erreur ? page : { genre: 'web', url: page.url };
    }
    return { genre: 'pont', chemin: genre === 'loc' && /^file:/i.test(reste) ? cheminLocal(reste) : reste };
  }

  // A path as people read it, without the way up that only the program needs.
  function cheminLisible(chemin) {
    return chemin.indexOf(DONNEES) === 0 ? chemin.slice(6) : chemin;
  }

  // "loc", "web", or "" where the text does not tell.
  function devinerGenre(texte) {
    if (/^(https?:\/\/|www\.)/i.test(texte)) { return 'web'; }
    if (/^(file:|[A-Za-z]:[\\/]|[\\/]|\.\.\/|user_datas[\\/])/i.test(texte)) { return 'loc'; }
    return /^[a-z0-9-]+(\.[a-z0-9-]+)+\//i.test(texte) ? 'web' : '';
  }

  // In a script a backslash would swallow the next letter; Windows takes slashes as well.
  function sansBarreInverse(chemin) {
    return chemin.charAt(0) === '/' ? chemin : chemin.replace(/\\/g, '/');
  }

  // The address of a new shortcut as the command carries it: { adresse } or { erreur }.
  // choix: "loc", "web" or "auto".
  function adresseACreer(texte, choix) {
    var saisie = texte.trim().replace(/^"(.*)"$/, '$1').trim();
    if (saisie === '') { return { erreur: 'Indiquez l’adresse ou le chemin du raccourci.' }; }
    var deja = saisie.match(/^(loc|web)(?=file:|https?:|[A-Za-z]:[\\/]|\/|\.\.\/)/);
    if (deja) { saisie = saisie.slice(3); }
    var genre = choix !== 'auto' ? choix : (deja ? deja[1] : devinerGenre(saisie));
    if (genre === '') {
      return { erreur: 'Est-ce un document ou une page web ? Choisissez le genre sous l’adresse.' };
    }
    if (genre === 'web') {
      var page = adresseDePage(saisie);
      if (page.erreur) { return page; }
    } else {
      saisie = sansBarreInverse(cheminSaisi(saisie));
    }
    var erreur = valeur.erreurDeGuillemets(saisie);
    return erreur ? { erreur: erreur } : { adresse: DEVANT_ADRESSE + genre + saisie };
  }

  // Lower case without accents, for a filter.
  function simplifier(texte) {
    return texte.normalize('NFD').replace(/[\u0300-\u036f]/g, '').toLowerCase();
  }

  function filtrer(liste, texte) {
    var mots = simplifier(texte).split(/\s+/);
    return liste.filter(function (element) {
      var nom = simplifier(element.nom) + ' ' + element.cle;
      return mots.every(function (mot) { return nom.indexOf(mot) >= 0; });
    });
  }

  return {
    DONNEES: DONNEES,
    decoderNom: decoderNom,
    decoderAdresse: decoderAdresse,
    entrees: entrees,
    lireCle: lireCle,
    chercher: chercher,
    cheminLocal: cheminLocal,
    cheminSaisi: cheminSaisi,
    cheminLisible: cheminLisible,
    resoudre: resoudre,
    adresseACreer: adresseACreer,
    filtrer: filtrer
  };
})(typeof require === 'function' ? require('./octets.js') : TavrolloOctets,
  typeof require === 'function' ? require('./valeur.js') : TavrolloValeur);
if (typeof module === 'object') { module.exports = TavrolloRaccourcis; }
