// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');
const raccourcis = require('../../nav/res_css/js/raccourcis.js');
const octets = require('../../nav/res_css/js/octets.js');

const RACINE = path.join(__dirname, '..', '..');
const lu1252 = (...lus) => octets.depuis1252(lus);
const utf8Lu1252 = (texte) => octets.depuis1252(Buffer.from(texte, 'utf8'));

// A table as a page sees it: the script's bytes read as Windows-1252.
function tableDe(lus) {
  const contexte = vm.createContext({});
  vm.runInContext(octets.depuis1252(lus), contexte);
  return contexte;
}

const exemple = () => tableDe(fs.readFileSync(path.join(RACINE, 'shortQrCode_exemple.js')));

test('short names are UTF-8 read as Windows-1252', () => {
  ['Été', 'Wikipédia, l’encyclopédie', 'Ísafjörður Ï Ð Ý Á', 'λ 😀', 'ASCII', 'œ €'].forEach((nom) => {
    assert.strictEqual(raccourcis.decoderNom(utf8Lu1252(nom)), nom);
  });
});

test('a short name that is not UTF-8 shows the replacement character', () => {
  assert.strictEqual(raccourcis.decoderNom('caf' + lu1252(0xe9)), 'caf\ufffd');
});

test('addresses are Windows-1252 unless their bytes are UTF-8', () => {
  assert.strictEqual(raccourcis.decoderAdresse('/sch' + lu1252(0xe9) + 'ma'), '/schéma');
  assert.strictEqual(raccourcis.decoderAdresse(utf8Lu1252('/schéma')), '/schéma');
  assert.strictEqual(raccourcis.decoderAdresse(utf8Lu1252('/λ')), '/λ');
  assert.strictEqual(raccourcis.decoderAdresse('/ascii'), '/ascii');
  assert.strictEqual(raccourcis.decoderAdresse('/déjà λ'), '/déjà λ');
});

test('the example table follows the layout of the program', () => {
  const texte = fs.readFileSync(path.join(RACINE, 'shortQrCode_exemple.js'), 'latin1');
  const lignes = texte.split('\r\n');
  const nombre = lignes.length - 11;
  assert.ok(!/[^\r]\n/.test(texte));
  assert.strictEqual(lignes[0], 'var FreeId=' + (nombre + 1));
  assert.strictEqual(lignes[1], 'var tabObj = new Object();');
  assert.ok(nombre >= 4);
  lignes.slice(2, 2 + nombre).forEach((ligne, rang) => {
    assert.strictEqual(ligne.substr(8, 9), ('000000000' + (rang + 1)).slice(-9));
    assert.match(ligne, /^tabObj\["\d{9}"\]="[^"\\\t]+_\|_[^"\\\t]+";$/);
    assert.strictEqual(ligne.split('_|_').length, 2);
  });
  assert.deepStrictEqual(lignes.slice(2 + nombre), [
    'function ShortQrCode(myKey){', 'var t = tabObj[myKey].split("_|_");', 'return t[1];', '}',
    'function NameQrCode(myKey){', 'var t = tabObj[myKey].split("_|_");', 'return t[0];', '}', ''
  ]);
});

test('the example table leads to files that are shipped', () => {
  const liste = raccourcis.entrees(exemple());
  assert.ok(liste.some((entree) => /[^\x00-\x7f]/.test(entree.adresse)));
  liste.forEach((entree) => {
    const cible = raccourcis.resoudre(entree.adresse);
    if (cible.genre === 'pont') {
      assert.ok(cible.chemin.startsWith(raccourcis.DONNEES), entree.adresse);
      assert.ok(fs.existsSync(path.join(RACINE, 'nav', cible.chemin.slice(6))), entree.adresse);
    } else {
      assert.match(cible.url, /^https:\/\//);
    }
  });
});

test('a key of the table gives its name and address', () => {
  assert.deepStrictEqual(raccourcis.chercher(exemple(), ' 000000003 ').entree,
    { cle: '000000003', nom: 'Schéma du pont', adresse: 'loc../../user_datas/schéma.svg' });
});

test('a key that is not in the table gives a message, never an exception', () => {
  [
    ['000000999', /Aucun raccourci.*000000999/],
    ['', /Tapez ou scannez/],
    ['12345678', /exactement 9 chiffres.*8/],
    ['1234567890', /exactement 9 chiffres.*10/],
    ['00000000a', /que des chiffres/],
    ['000-000-001', /que des chiffres/],
    ['__proto__', /que des chiffres/],
    ['constructor', /que des chiffres/]
  ].forEach(([saisie, raison]) => {
    assert.match(raccourcis.chercher(exemple(), saisie).erreur || '', raison, saisie);
  });
  assert.match(raccourcis.chercher(null, '000000001').erreur, /introuvable/);
});

test('an entry without a separator is passed over', () => {
  const table = tableDe(Buffer.from('var tabObj = new Object();\ntabObj["000000001"]="abc";\n' +
    'function ShortQrCode(k){return tabObj[k].split("_|_")[1];}\nfunction NameQrCode(k){return tabObj[k];}'));
  assert.deepStrictEqual(raccourcis.entrees(table), []);
  assert.match(raccourcis.chercher(table, '000000001').erreur, /Aucun raccourci/);
});

test('a scanner set to another keyboard is understood', () => {
  assert.deepStrictEqual(raccourcis.lireCle('ààààààààà'), { cle: '000000000' });
  assert.deepStrictEqual(raccourcis.lireCle('&é"\'(-è_ç'), { cle: '123456789' });
});

test('file URLs become paths', () => {
  [
    ['file:///C:/docs/plan.pdf', 'C:/docs/plan.pdf'],
    ['file:///C|/docs/plan.pdf', 'C:/docs/plan.pdf'],
    ['file:///home/x/plan.pdf', '/home/x/plan.pdf'],
    ['FILE:///home/x', '/home/x'],
    ['file://localhost/home/x', '/home/x'],
    ['file:/home/x', '/home/x'],
    ['file://serveur/partage/x', '//serveur/partage/x'],
    ['file:///home/a%20b/%C3%A9t%C3%A9.txt', '/home/a b/été.txt'],
    ['file:///home/%E9t%E9.txt', '/home/été.txt'],
    ['file:///home/50%/x', '/home/50%/x'],
    ['file:///home/été%20x', '/home/été x'],
    ['file:///home/a%23b.pdf#page=2', '/home/a#b.pdf'],
    ['file:///home/c/x', '/home/c/x']
  ].forEach(([url, chemin]) => {
    assert.strictEqual(raccourcis.cheminLocal(url), chemin);
  });
});

test('typed paths are tidied', () => {
  [
    ['  /home/x ', '/home/x'],
    ['"C:\\Mes documents\\a.txt"', 'C:\\Mes documents\\a.txt'],
    ['file:///home/a%20b', '/home/a b'],
    ['user_datas/exemple.txt', '../../user_datas/exemple.txt'],
    ['user_datas\\a\\b.txt', '../../user_datas/a/b.txt'],
    ['../../user_datas/x', '../../user_datas/x'],
    ['/home/50%20', '/home/50%20'],
    ['   ', '']
  ].forEach(([texte, chemin]) => {
    assert.strictEqual(raccourcis.cheminSaisi(texte), chemin);
  });
});

test('a path below user_datas is shown without the way up', () => {
  assert.strictEqual(raccourcis.cheminLisible('../../user_datas/a/b.txt'), 'user_datas/a/b.txt');
  assert.strictEqual(raccourcis.cheminLisible('../../autre/b.txt'), '../../autre/b.txt');
  assert.strictEqual(raccourcis.cheminLisible('/home/x'), '/home/x');
});

test('stored addresses tell how they are opened', () => {
  [
    ['locfile:///C:/essai.txt', { genre: 'pont', chemin: 'C:/essai.txt' }],
    ['locfile:///home/a%20b', { genre: 'pont', chemin: '/home/a b' }],
    ['loc/home/50%20', { genre: 'pont', chemin: '/home/50%20' }],
    ['loc../../user_datas/x', { genre: 'pont', chemin: '../../user_datas/x' }],
    ['webhttps://a.fr/', { genre: 'web', url: 'https://a.fr/' }],
    ['webwww.a.fr/x', { genre: 'web', url: 'https://www.a.fr/x' }],
    ['weblocalhost:8080/x', { genre: 'web', url: 'https://localhost:8080/x' }],
    ['web./aide.html', { genre: 'web', url: './aide.html' }],
    ['C:/docs/plan.pdf', { genre: 'pont', chemin: 'C:/docs/plan.pdf' }],
    ['https://a.fr/', { genre: 'pont', chemin: 'https://a.fr/' }],
    ['file:///home/x', { genre: 'pont', chemin: 'file:///home/x' }]
  ].forEach(([adresse, cible]) => {
    assert.deepStrictEqual(raccourcis.resoudre(adresse), cible);
  });
});

test('addresses that must not be opened give a message', () => {
  ['webjavascript:alert(1)', 'webJaVaScRiPt:x', 'webdata:text/html,x', 'webfile:///etc/x', 'web java script',
    'webhttp://', 'web', 'loc', 'loc  ', ''].forEach((adresse) => {
    assert.ok(raccourcis.resoudre(adresse).erreur, adresse);
  });
});

test('a new shortcut carries three characters, its kind and its address', () => {
  [
    ['https://a.fr/x?y=1', 'auto', 'lnkwebhttps://a.fr/x?y=1'],
    ['www.a.fr', 'auto', 'lnkwebwww.a.fr'],
    ['fr.wikipedia.org/wiki', 'auto', 'lnkwebfr.wikipedia.org/wiki'],
    ['C:\\docs\\plan.pdf', 'auto', 'lnklocC:/docs/plan.pdf'],
    ['\\\\serveur\\partage', 'auto', 'lnkloc//serveur/partage'],
    ['"/home/a b.pdf"', 'auto', 'lnkloc/home/a b.pdf'],
    ['file:///home/a%20b', 'auto', 'lnkloc/home/a b'],
    ['user_datas/exemple.txt', 'auto', 'lnkloc../../user_datas/exemple.txt'],
    ['locfile:///C:/x', 'auto', 'lnklocC:/x'],
    ['webhttps://a.fr', 'auto', 'lnkwebhttps://a.fr'],
    ['exemple.fr', 'web', 'lnkwebexemple.fr'],
    ['exemple.txt', 'loc', 'lnklocexemple.txt']
  ].forEach(([texte, choix, adresse]) => {
    assert.deepStrictEqual(raccourcis.adresseACreer(texte, choix), { adresse }, texte);
  });
});

test('a new shortcut that the table could not hold is refused', () => {
  [
    ['', 'auto', /Indiquez/],
    ['exemple.fr', 'auto', /Choisissez le genre/],
    ['/home/a"b', 'auto', /guillemet/],
    ['/home/a\\b', 'auto', /barre oblique inverse/],
    ['https://a.fr/\\x', 'auto', /barre oblique inverse/],
    ['javascript:alert(1)', 'web', /https/],
    ['/home/x', 'web', /n’est pas valable/]
  ].forEach(([texte, choix, raison]) => {
    assert.match(raccourcis.adresseACreer(texte, choix).erreur || '', raison, texte);
  });
});

test('the filter ignores case and accents and takes several words', () => {
  const liste = [{ nom: 'Été à la mer', cle: '000000001' }, { nom: 'Schéma', cle: '000000012' }];
  const noms = (texte) => raccourcis.filtrer(liste, texte).map((entree) => entree.nom);
  assert.deepStrictEqual(noms(''), ['Été à la mer', 'Schéma']);
  assert.deepStrictEqual(noms('ETE mer'), ['Été à la mer']);
  assert.deepStrictEqual(noms('schema'), ['Schéma']);
  assert.deepStrictEqual(noms('012'), ['Schéma']);
  assert.deepStrictEqual(noms('zzz'), []);
});
