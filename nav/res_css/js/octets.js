// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes and characters: the Windows-1252 code page, in which the program writes the scripts that
// the pages load, and UTF-8, which cookies carry. Pure.
var TavrolloOctets = (function () {
  'use strict';

  // The characters of bytes 80 to 9F; the five bytes without one stand for themselves.
  var HAUT_1252 = [
    0x20ac, 0x81, 0x201a, 0x192, 0x201e, 0x2026, 0x2020, 0x2021,
    0x2c6, 0x2030, 0x160, 0x2039, 0x152, 0x8d, 0x17d, 0x8f,
    0x90, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
    0x2dc, 0x2122, 0x161, 0x203a, 0x153, 0x9d, 0x17e, 0x178
  ];

  // The byte of a UTF-16 unit in Windows-1252, or -1 where the code page lacks it.
  function octetDe(unite) {
    if (unite < 0x80 || (unite >= 0xa0 && unite <= 0xff)) { return unite; }
    var place = HAUT_1252.indexOf(unite);
    return place < 0 ? -1 : 0x80 + place;
  }

  // The bytes that a text read as Windows-1252 was made of, or null where it cannot have been.
  function versOctets(texte) {
    var octets = new Uint8Array(texte.length);
    for (var i = 0; i < texte.length; i++) {
      var octet = octetDe(texte.charCodeAt(i));
      if (octet < 0) { return null; }
      octets[i] = octet;
    }
    return octets;
  }

  function depuis1252(octets) {
    var texte = '';
    for (var i = 0; i < octets.length; i++) {
      var octet = octets[i];
      texte += String.fromCharCode(octet >= 0x80 && octet < 0xa0 ? HAUT_1252[octet - 0x80] : octet);
    }
    return texte;
  }

  // Invalid sequences become U+FFFD.
  function depuisUtf8(octets) {
    return new TextDecoder('utf-8', { ignoreBOM: true }).decode(octets);
  }

  // The text of bytes that are valid UTF-8, else null.
  function depuisUtf8Strict(octets) {
    try {
      return new TextDecoder('utf-8', { fatal: true, ignoreBOM: true }).decode(octets);
    } catch (erreur) {
      return null;
    }
  }

  // The length of a text in bytes, as a cookie carries it.
  function longueurUtf8(texte) {
    return new TextEncoder().encode(texte).length;
  }

  // The first character that Windows-1252 lacks, or "" where it holds them all.
  function premierHors1252(texte) {
    var caracteres = Array.from(texte);
    for (var i = 0; i < caracteres.length; i++) {
      if (caracteres[i].length > 1 || octetDe(caracteres[i].charCodeAt(0)) < 0) {
        return caracteres[i];
      }
    }
    return '';
  }

  return {
    versOctets: versOctets,
    depuis1252: depuis1252,
    depuisUtf8: depuisUtf8,
    depuisUtf8Strict: depuisUtf8Strict,
    longueurUtf8: longueurUtf8,
    premierHors1252: premierHors1252
  };
})();
if (typeof module === 'object') { module.exports = TavrolloOctets; }
