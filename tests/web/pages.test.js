// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');

const NAV = path.join(__dirname, '../../nav');
const PAGES = ['index.html', 'eleve.html', 'aide.html', 'res_css/htm/start.html', 'res_css/htm/init_cookie.html'];
// Written by the program, not shipped.
const A_VENIR = [path.join(NAV, 'res_css/js/shortQrCode.js')];

const lire = (page) => fs.readFileSync(path.join(NAV, page), 'utf8');

test('every script, style, picture and link of a page is shipped', () => {
  PAGES.forEach((page) => {
    const cibles = Array.from(lire(page).matchAll(/(?:src|href)="([^"#]+)"/g), (trouve) => trouve[1]);
    assert.ok(cibles.length > 5, page);
    cibles.forEach((cible) => {
      const fichier = path.join(NAV, path.dirname(page), cible);
      assert.ok(A_VENIR.includes(fichier) || fs.existsSync(fichier), page + ' : ' + cible);
    });
  });
});

test('the scripts that the program writes are loaded as Windows-1252', () => {
  PAGES.forEach((page) => {
    Array.from(lire(page).matchAll(/<script[^>]*(?:rwCookies|shortQrCode)\.js"/g)).forEach(([balise]) => {
      assert.match(balise, /charset="windows-1252"/, page);
    });
  });
});

test('no page carries a script or a handler of its own', () => {
  PAGES.forEach((page) => {
    assert.doesNotMatch(lire(page), /<script(?![^>]*\ssrc=)|\son[a-z]+="|\sstyle="|javascript:/, page);
    assert.match(lire(page), /script-src 'self' file:;/, page);
  });
});

test('every element that a script or a label asks for is in its page, once', () => {
  const demandes = { 'index.html': ['pageProf.js'], 'eleve.html': ['pageEleve.js'],
    'res_css/htm/start.html': ['pageEssai.js'], 'res_css/htm/init_cookie.html': ['pageEssai.js'], 'aide.html': [] };
  PAGES.forEach((page) => {
    const html = lire(page);
    const ids = Array.from(html.matchAll(/\sid="([^"]+)"/g), (trouve) => trouve[1]);
    assert.strictEqual(new Set(ids).size, ids.length, page);
    const voulus = Array.from(html.matchAll(/(?:\sfor|aria-describedby|aria-labelledby|href)="#?([^"./]+)"/g))
      .flatMap((trouve) => trouve[1].split(' '));
    demandes[page].forEach((script) => {
      const source = fs.readFileSync(path.join(NAV, 'res_css/js', script), 'utf8');
      const appels = /(?:par|getElementById|mesure|surEnvoi)\('([^']+)'/g;
      voulus.push(...Array.from(source.matchAll(appels), (trouve) => trouve[1]));
    });
    voulus.forEach((id) => assert.ok(ids.includes(id), page + ' : ' + id));
  });
});

// WCAG 2.1: the contrast of two colours written as #rrggbb, from 1 to 21.
function contraste(une, autre) {
  const luminance = (couleur) => [1, 3, 5]
    .map((debut) => parseInt(couleur.slice(debut, debut + 2), 16) / 255)
    .map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4))
    .reduce((somme, part, rang) => somme + part * [0.2126, 0.7152, 0.0722][rang], 0);
  const [sombre, claire] = [luminance(une), luminance(autre)].sort((a, b) => a - b);
  return (claire + 0.05) / (sombre + 0.05);
}

test('texts and marks stand out from what is behind them, in light and in dark', () => {
  const feuille = fs.readFileSync(path.join(NAV, 'res_css/css/tavrollo.css'), 'utf8');
  const palettes = Array.from(feuille.matchAll(/:root \{([^}]*)\}/g), ([, corps]) =>
    Object.fromEntries(Array.from(corps.matchAll(/--([a-z-]+): (#[0-9a-f]{6});/g), ([, nom, couleur]) => [nom, couleur])));
  assert.deepStrictEqual(palettes.map((palette) => Object.keys(palette).length), [16, 16]);
  const fonds = ['fond', 'surface', 'surface-douce'];
  const textes = [['sur-accent', ['accent', 'accent-vif']], ['encre', fonds], ['encre-douce', fonds], ['accent', fonds],
    ['accent-vif', fonds], ['succes', ['surface', 'succes-fond']], ['attente', ['surface', 'attente-fond']],
    ['erreur', ['surface', 'erreur-fond']]];
  const marques = [['trait-champ', ['surface', 'fond']]];
  palettes.forEach((palette, rang) => {
    [[textes, 4.5], [marques, 3]].forEach(([paires, voulu]) => paires.forEach(([dessus, dessous]) => dessous.forEach((fond) => {
      const trouve = contraste(palette[dessus], palette[fond]);
      assert.ok(trouve >= voulu, ['claire', 'sombre'][rang] + ' : ' + dessus + ' sur ' + fond + ' : ' + trouve.toFixed(2));
    })));
  });
  assert.strictEqual(contraste('#000000', '#ffffff'), 21);
  // No rule brings a colour of its own beside the named ones.
  const regles = feuille.replace(/:root \{[^}]*\}/g, '');
  assert.doesNotMatch(regles, /#[0-9a-f]{3,8}\b(?=[^{}]*;)|rgb\(|hsl\(/);
});

test('the help page has each command with an example that the pages would send', () => {
  const valeur = require('../../nav/res_css/js/valeur.js');
  const table = lire('aide.html').match(/aria-label="Tableau des commandes">([\s\S]*?)<\/table>/)[1];
  const exemples = Array.from(table.matchAll(/class="exemple"><code>(.*?)<\/code>/g), (trouve) => trouve[1]);
  const mots = exemples.map((exemple) => {
    const champs = exemple.replace(/_e-o-v_$/, '').split('_|_');
    const compteur = champs.pop();
    assert.deepStrictEqual(valeur.construireCommande(champs[0], champs.slice(1), compteur), { valeur: exemple });
    return champs[0];
  });
  assert.deepStrictEqual(mots, ['notepad', 'shellexe', 'runapp', 'createlink', 'ini', 'lzck']);
});
