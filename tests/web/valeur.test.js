// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const valeur = require('../../nav/res_css/js/valeur.js');

const COMPTEUR = 1732184523001;
const bati = (mot, champs) => valeur.construireCommande(mot, champs, COMPTEUR);

test('each command is its fields, the counter and the end marker', () => {
  [
    ['notepad', ['/home/a b.txt'], 'notepad_|_/home/a b.txt_|_1732184523001_e-o-v_'],
    ['shellexe', ['../../user_datas/é.pdf'], 'shellexe_|_../../user_datas/é.pdf_|_1732184523001_e-o-v_'],
    ['runapp', ['/usr/bin/gimp', '--new-instance'], 'runapp_|_/usr/bin/gimp_|_--new-instance_|_1732184523001_e-o-v_'],
    ['runapp', ['/usr/bin/gimp', ''], 'runapp_|_/usr/bin/gimp_|__|_1732184523001_e-o-v_'],
    ['createlink', ['lnkwebhttps://a.fr/', 'Été'], 'createlink_|_lnkwebhttps://a.fr/_|_Été_|_1732184523001_e-o-v_'],
    ['ini', ['clé'], 'ini_|_clé_|_1732184523001_e-o-v_'],
    ['lzck', ['false'], 'lzck_|_false_|_1732184523001_e-o-v_']
  ].forEach(([mot, champs, attendu]) => {
    assert.deepStrictEqual(bati(mot, champs), { valeur: attendu });
  });
});

test('a probe has no separator, so that it does nothing', () => {
  const sonde = valeur.construireSonde(COMPTEUR).valeur;
  assert.strictEqual(sonde, 'sonde-1732184523001_e-o-v_');
  assert.ok(!sonde.includes('_|_'));
});

test('what a cookie cannot carry is refused with the reason', () => {
  [
    ['a;b', /point-virgule/],
    ['a\tb', /tabulation/],
    ['a\nb', /retour à la ligne/],
    ['a\rb', /retour à la ligne/],
    ['a\u0000b', /U\+0000/],
    ['a\u007fb', /U\+007F/],
    ['a\u0085b', /U\+0085/],
    ['a\ud800b', /incomplet/],
    ['\udc00b', /incomplet/],
    ['a_|_b', /«\s_\|_\s»/],
    ['a_e-o-v_b', /«\s_e-o-v_\s»/]
  ].forEach(([champ, raison]) => {
    assert.match(bati('notepad', [champ]).erreur || '', raison, JSON.stringify(champ));
    assert.match(bati('runapp', ['/bin/x', champ]).erreur || '', raison, JSON.stringify(champ));
  });
});

test('what only looks dangerous passes', () => {
  ['user_datas/_x_', 'a|b', 'a_|b', '|_a', 'a,b "c" =d', '50 %', '😀', "l'été", '_e-o-v'.slice(0, 5)].forEach((champ) => {
    assert.strictEqual(bati('notepad', [champ]).erreur, undefined, champ);
  });
});

test('ends that would melt with the separator or the end marker are refused', () => {
  assert.match(bati('notepad', ['a_|']).erreur, /séparateur/);
  assert.match(bati('notepad', ['a_e-o-v']).erreur, /marque de fin/);
  assert.match(bati('runapp', ['a_|', '']).erreur, /séparateur/);
  assert.match(bati('runapp', ['a', 'b_|']).erreur, /séparateur/);
  // The separator in front has the first character of an end marker.
  assert.match(bati('notepad', ['e-o-v']).erreur, /marque de fin/);
});

test('the longest accepted value is 256 bytes before the end marker', () => {
  const reste = 256 - 'notepad_|__|_1732184523001'.length;
  assert.strictEqual(bati('notepad', ['a'.repeat(reste)]).valeur.length, 256 + 7);
  assert.match(bati('notepad', ['a'.repeat(reste + 1)]).erreur, /257 octets pour 256.*de 1 octet /);
  assert.strictEqual(bati('notepad', ['é'.repeat(reste / 2)]).erreur, undefined);
  assert.match(bati('notepad', ['é'.repeat(reste / 2 + 1)]).erreur, /258 octets.*de 2 octets/);
});

test('empty and missing fields are refused', () => {
  assert.match(bati('notepad', ['']).erreur, /manque/);
  assert.match(bati('createlink', ['lnkweba', '']).erreur, /manque/);
  assert.match(bati('runapp', ['/bin/x']).erreur, /2 champs/);
  assert.match(bati('lzck', []).erreur, /1 champ\./);
  assert.match(bati('toString', ['x']).erreur, /n’existe pas/);
});

test('a refusal tells which field is at fault, of one that is too long the longest', () => {
  const long = 'x'.repeat(200);
  [[['a;b', 'c'], 0], [['a', 'b;c'], 1], [['a', 'b_|'], 1], [['a_e-o-v', 'b'], 0], [['a', 'e-o-v'], 1], [['', 'b'], 0],
    [['a', long + long], 1], [[long, 'é'.repeat(101)], 1], [[long, 'é'.repeat(99)], 0]]
    .forEach(([champs, rang]) => assert.strictEqual(bati('runapp', champs).champ, rang, JSON.stringify(champs)));
  assert.strictEqual('champ' in bati('runapp', ['a', 'b']), false);
});

test('the answer to wait for is the last field, or a probe as a whole', () => {
  assert.strictEqual(valeur.reponseAttendue(bati('runapp', ['/bin/x', '']).valeur), '1732184523001');
  assert.strictEqual(valeur.reponseAttendue(valeur.construireSonde(7).valeur), 'sonde-7');
});

test('the time of sending is read back from a value', () => {
  assert.strictEqual(valeur.heureDEnvoi(bati('runapp', ['/bin/x', '']).valeur), COMPTEUR);
  assert.strictEqual(valeur.heureDEnvoi(valeur.construireSonde(COMPTEUR).valeur), COMPTEUR);
  ['', 'notepad_|_a_e-o-v_', 'runapp_|_x_|_12', 'x-12_e-o-v_'].forEach((texte) => {
    assert.strictEqual(valeur.heureDEnvoi(texte), 0, texte);
  });
});

test('names that the table could not hold are refused', () => {
  ['', 'a"b', 'a\\b', 'a\tb', 'a_|_b', 'a;b', 'a_|', 'a_e-o-v', 'e-o-v', 'a\nb'].forEach((nom) => {
    assert.notStrictEqual(valeur.erreurDeNom(nom), '', JSON.stringify(nom));
  });
  ['Été', 'λ 😀', "L'eau", 'a_|b', 'a|'].forEach((nom) => {
    assert.strictEqual(valeur.erreurDeNom(nom), '', nom);
  });
});

test('keys that the key script could not hold are refused', () => {
  ['', ' a', 'a ', 'a"b', 'a\\b', 'a\tb', 'a_|_b', 'a;b', 'clλ', 'a_e-o-v_b'].forEach((cle) => {
    assert.notStrictEqual(valeur.erreurDeCle(cle), '', JSON.stringify(cle));
  });
  ['clé', 'a b', "l'€", '1234'].forEach((cle) => {
    assert.strictEqual(valeur.erreurDeCle(cle), '', cle);
  });
});
