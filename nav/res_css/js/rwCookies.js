var ps="";
// SPDX-License-Identifier: GPL-3.0-or-later
// The line above holds the page key and belongs to the program, which rewrites it. The lines below
// read and write cookies; they are pure ASCII, since the program copies them byte for byte.

// The value of the cookie of that name, or "" where there is none.
function lireCookie(nom) {
  var morceaux = document.cookie.split("; ");
  for (var i = 0; i < morceaux.length; i++) {
    if (morceaux[i].indexOf(nom + "=") === 0) {
      return morceaux[i].substring(nom.length + 1);
    }
  }
  return "";
}

// Writes a cookie that lives for so many seconds. Without a life time Firefox would keep it in
// memory and never write it to its store.
function ecrireCookie(nom, valeur, secondes) {
  document.cookie = nom + "=" + valeur + "; path=/; max-age=" + secondes + "; SameSite=Lax";
}

function effacerCookie(nom) {
  ecrireCookie(nom, "", 0);
}
