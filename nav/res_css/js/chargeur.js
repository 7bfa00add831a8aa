// SPDX-License-Identifier: GPL-3.0-or-later
// Loads the scripts that the program writes while a page is open. A script element is the only way
// to read a file from a page of the disk.
var TavrolloChargeur = (function () {
  'use strict';

  var PATIENCE_MS = 2000;
  var dossier = new URL('.', document.currentScript.src).href;

  // Runs a script of this folder anew; suite(true) once it ran, suite(false) when it is missing.
  function recharger(nom, suite) {
    var script = document.createElement('script');
    var fini = false;
    function terminer(reussi) {
      if (fini) { return; }
      fini = true;
      script.remove();
      suite(reussi);
    }
    script.charset = 'windows-1252';
    script.onload = function () { terminer(true); };
    script.onerror = function () { terminer(false); };
    script.src = dossier + nom + '?t=' + Date.now();
    document.head.appendChild(script);
    setTimeout(function () { terminer(false); }, PATIENCE_MS);
  }

  // The program's last answer, or null as long as there is none.
  function lireEtat(suite) {
    window.tavrolloEtat = undefined;
    recharger('etat.js', function () {
      var etat = window.tavrolloEtat;
      suite(etat && typeof etat === 'object' ? etat : null);
    });
  }

  // The shortcut table of this page, or null where shortQrCode.js is missing.
  function tableDesRaccourcis() {
    var complete = typeof window.tabObj === 'object' && window.tabObj !== null &&
      typeof window.ShortQrCode === 'function' && typeof window.NameQrCode === 'function';
    return complete ? window : null;
  }

  return { recharger: recharger, lireEtat: lireEtat, tableDesRaccourcis: tableDesRaccourcis };
})();
