// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const { creerMonde } = require('./navigateur.js');

const REPONSE = 4000;

// The teacher's page in a tab of its own.
function ouvrir(reglages) {
  const monde = creerMonde(reglages);
  return { monde, page: monde.ouvrir('index.html') };
}

function soumettre(page, saisies, bouton) {
  Object.entries(saisies).forEach(([champ, texte]) => page.taper(champ, texte));
  page.cliquer(bouton);
  page.monde.passer(REPONSE);
}

const deverrouiller = (page, cle) => soumettre(page, { champCle: cle }, 'boutonDeverrouiller');
const lancer = (page, programme, parametres) =>
  soumettre(page, { champProgramme: programme, champParametres: parametres }, 'boutonProgramme');
const raccourcir = (page, adresse, nom) =>
  soumettre(page, { champAdresse: adresse, champNom: nom }, 'boutonRaccourci');

function assertOuverte(page, ouverte) {
  ['outils', 'sectionCle', 'champOuvrir'].forEach((id) => assert.strictEqual(page.visible(id), ouverte, id));
  assert.strictEqual(page.visible('sectionSerrure'), !ouverte);
}

function assertRefus(page, champ, message, texte) {
  assert.deepStrictEqual(page.marques(), [champ]);
  assert.strictEqual(page.foyer(), champ);
  assert.strictEqual(page.genre(message), 'erreur');
  assert.match(page.texte(message), texte);
  const decrit = page.par(champ).getAttribute('aria-describedby').split(' ');
  assert.ok(decrit.includes(message), champ + ' is not described by ' + message);
}

test('a page without a key is open and invites to choose one first', () => {
  const { page } = ouvrir();
  assertOuverte(page, true);
  assert.strictEqual(page.texte('titreCle'), 'Choisissez une clé pour cette page');
  assert.strictEqual(page.texte('boutonChoisirCle'), 'Choisir cette clé');
  assert.strictEqual(page.visible('invitationCle'), true);
  assert.strictEqual(page.par('sectionCle').className, 'carte invitation');
  assert.deepStrictEqual(page.par('zone').children.map((element) => element.id), ['sectionCle', 'outils']);
});

test('a page with a key opens locked', () => {
  const { monde, page } = ouvrir({ cle: 'sésame 7' });
  assertOuverte(page, false);
  monde.passer(20000);
  assertOuverte(page, false);
  assert.deepStrictEqual(monde.commandes(), []);
});

test('a wrong key leaves the page locked, says so and sends nothing', () => {
  const { monde, page } = ouvrir({ cle: 'sésame 7' });
  ['sésame 8', '', 'sésame 7 ', 'SÉSAME 7'].forEach((cle) => {
    deverrouiller(page, cle);
    assertOuverte(page, false);
    assertRefus(page, 'champCle', 'messageCle', /^Ce n’est pas la bonne clé\.$/);
    assert.strictEqual(page.par('champCle').choisi, true);
  });
  assert.deepStrictEqual(monde.commandes(), []);
  assert.strictEqual(page.onglet.session.size, 0);
});

test('the right key unlocks the page and the menus, however its accents are composed', () => {
  ['sésame 7', 'se\u0301same 7'].forEach((cle) => {
    const { monde, page } = ouvrir({ cle: 'sésame 7' });
    deverrouiller(page, 'faux');
    deverrouiller(page, cle);
    assertOuverte(page, true);
    assert.deepStrictEqual(monde.commandes(), [['lzck', 'false']]);
    assert.strictEqual(page.texte('messageMenus'), 'Les menus sont débloqués.');
    assert.strictEqual(page.texte('messageCle'), '');
    assert.strictEqual(page.par('champCle').value, '');
    assert.deepStrictEqual(page.marques(), []);
    assert.strictEqual(page.foyer(), 'titreOutils');
    assert.strictEqual(page.texte('titreCle'), 'Changer la clé de la page');
    assert.strictEqual(page.par('zone').firstElementChild.id, 'outils');
  });
});

test('an unlocked tab stays so when it is reloaded, until it is locked or the key is another', () => {
  const { monde, page } = ouvrir({ cle: 'sésame 7' });
  deverrouiller(page, 'sésame 7');
  assertOuverte(monde.ouvrir('index.html', page.onglet), true);
  assertOuverte(monde.ouvrir('index.html'), false);
  monde.ecrireCle('autre');
  assertOuverte(monde.ouvrir('index.html', page.onglet), false);
  monde.ecrireCle('sésame 7');
  const rechargee = monde.ouvrir('index.html', page.onglet);
  rechargee.cliquer('boutonVerrouiller');
  assertOuverte(monde.ouvrir('index.html', page.onglet), false);
});

test('without a storage the page can be unlocked, and is locked again when it is reloaded', () => {
  const monde = creerMonde({ cle: 'sésame 7' });
  const onglet = { session: null, local: null };
  const page = monde.ouvrir('index.html', onglet);
  deverrouiller(page, 'sésame 7');
  assertOuverte(page, true);
  assertOuverte(monde.ouvrir('index.html', onglet), false);
  page.cliquer('boutonVerrouiller');
  assertOuverte(page, false);
});

test('locking locks the menus and a page with a key', () => {
  const { monde, page } = ouvrir({ cle: 'sésame 7' });
  deverrouiller(page, 'sésame 7');
  page.cliquer('boutonVerrouiller');
  assertOuverte(page, false);
  assert.strictEqual(page.foyer(), 'champCle');
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['lzck', 'false'], ['lzck', 'true']]);
  assert.strictEqual(page.texte('messageCle'), 'Les menus sont verrouillés.');
});

test('locking leaves a page without a key open', () => {
  const { monde, page } = ouvrir();
  page.cliquer('boutonVerrouiller');
  monde.passer(REPONSE);
  assertOuverte(page, true);
  assert.deepStrictEqual(monde.commandes(), [['lzck', 'true']]);
  assert.strictEqual(page.texte('messageMenus'), 'Les menus sont verrouillés.');
  assert.strictEqual(page.genre('messageMenus'), 'succes');
});

test('the menus alone are unlocked by their button', () => {
  const { monde, page } = ouvrir();
  page.cliquer('boutonDebloquer');
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['lzck', 'false']]);
  assert.strictEqual(page.texte('messageMenus'), 'Les menus sont débloqués.');
});

test('a chosen key is told once it is in the script, and unlocks this tab', () => {
  const { monde, page } = ouvrir();
  soumettre(page, { champNouvelleCle: 'sésame 7' }, 'boutonChoisirCle');
  assert.deepStrictEqual(monde.commandes(), [['ini', 'sésame 7']]);
  assert.strictEqual(page.texte('messageNouvelleCle'), 'La clé est enregistrée et les menus sont débloqués.');
  assert.strictEqual(page.par('champNouvelleCle').value, '');
  assertOuverte(page, true);
  assertOuverte(monde.ouvrir('index.html', page.onglet), true);
  assertOuverte(monde.ouvrir('index.html'), false);
});

test('a key that could not be written is told', () => {
  const { page } = ouvrir({ cle: '' });
  page.monde.clePerdue = true;
  soumettre(page, { champNouvelleCle: 'sésame 7' }, 'boutonChoisirCle');
  assert.match(page.texte('messageNouvelleCle'), /n’a pas pu être enregistrée dans rwCookies\.js/);
  assert.strictEqual(page.genre('messageNouvelleCle'), 'erreur');
  assert.strictEqual(page.onglet.session.size, 0);
});

test('a key that the script could not hold is refused', () => {
  const { monde, page } = ouvrir();
  [['', /^Tapez une clé/], ['a"b', /guillemet/], ['a_|', /séparateur/]].forEach(([cle, raison]) => {
    soumettre(page, { champNouvelleCle: cle }, 'boutonChoisirCle');
    assertRefus(page, 'champNouvelleCle', 'messageNouvelleCle', raison);
  });
  assert.deepStrictEqual(monde.commandes(), []);
});

test('a document and a text are opened by their commands, an empty path is refused', () => {
  [['champOuvrir', 'messageOuvrir', 'boutonOuvrir', 'shellexe', /document/],
    ['champTexte', 'messageTexte', 'boutonTexte', 'notepad', /fichier/]]
    .forEach(([champ, message, bouton, mot, vide]) => {
      const { monde, page } = ouvrir();
      soumettre(page, { [champ]: ' ' }, bouton);
      assertRefus(page, champ, message, vide);
      soumettre(page, { [champ]: '/a;b' }, bouton);
      assertRefus(page, champ, message, /retirez-le\.$/);
      soumettre(page, { [champ]: 'user_datas/été.txt' }, bouton);
      assert.deepStrictEqual(monde.commandes(), [[mot, '../../user_datas/été.txt']]);
      assert.match(page.texte(message), /^Reçu par Tavrollo en \d,\d s\.$/);
      assert.strictEqual(page.genre(message), 'succes');
      assert.deepStrictEqual(page.marques(), []);
    });
});

test('of a program and its parameters the one at fault is marked and named', () => {
  const long = 'x'.repeat(200);
  [['/usr/bin/gimp', 'a;b', 'champParametres', /retirez-le\. Voyez le champ « Paramètres »\.$/],
    ['/usr/bin/gimp', 'a\tb', 'champParametres', /tabulation.*« Paramètres »/],
    ['/usr/bin/gimp', 'a_|', 'champParametres', /séparateur.*« Paramètres »/],
    ['/usr/bin/gimp', 'a_e-o-v', 'champParametres', /marque de fin.*« Paramètres »/],
    ['/usr/bin/a;b', '', 'champProgramme', /retirez-le\. Voyez le champ « Programme »\.$/],
    ['/usr/bin/a;b', 'a;b', 'champProgramme', /« Programme »/],
    ['/usr/bin/a_|', 'b', 'champProgramme', /séparateur.*« Programme »/],
    ['/usr/bin/gimp', long + long, 'champParametres', /trop longue.*« Paramètres »/],
    ['/' + long, long, 'champProgramme', /trop longue.*« Programme »/],
    ['/' + 'é'.repeat(100), 'x'.repeat(150), 'champProgramme', /trop longue.*« Programme »/],
    ['', 'a', 'champProgramme', /^Indiquez le programme à lancer\.$/]]
    .forEach(([programme, parametres, champ, raison]) => {
      const { monde, page } = ouvrir();
      lancer(page, programme, parametres);
      assertRefus(page, champ, 'messageProgramme', raison);
      assert.deepStrictEqual(monde.commandes(), []);
      lancer(page, '/usr/bin/gimp', ' --new "a b" ');
      assert.deepStrictEqual(page.marques(), []);
      assert.deepStrictEqual(monde.commandes(), [['runapp', '/usr/bin/gimp', '--new "a b"']]);
    });
});

test('of a shortcut the field at fault is marked', () => {
  [['', 'A', 'champAdresse', /^Indiquez l’adresse/],
    ['quelque chose', 'A', 'champAdresse', /Choisissez le genre/],
    ['/a;b', 'A', 'champAdresse', /« Adresse ou chemin »/],
    ['/' + 'a'.repeat(250), 'A', 'champAdresse', /trop longue.*« Adresse ou chemin »/],
    ['/a', 'A'.repeat(250), 'champNom', /trop longue.*« Nom court »/],
    ['/a', ' ', 'champNom', /^Donnez un nom/],
    ['/a', 'a"b', 'champNom', /guillemet/]]
    .forEach(([adresse, nom, champ, raison]) => {
      const { monde, page } = ouvrir();
      raccourcir(page, adresse, nom);
      assertRefus(page, champ, 'messageRaccourci', raison);
      assert.deepStrictEqual(monde.commandes(), []);
    });
});

test('a created shortcut is told with its key and is in the list', () => {
  const { monde, page } = ouvrir();
  raccourcir(page, 'user_datas/plan.pdf', 'Été');
  assert.deepStrictEqual(monde.commandes(), [['createlink', 'lnkloc../../user_datas/plan.pdf', 'Été']]);
  assert.strictEqual(page.texte('messageRaccourci'), 'Raccourci créé, avec la clé 000000001.');
  assert.strictEqual(page.genre('messageRaccourci'), 'succes');
  assert.strictEqual(page.texte('corpsRaccourcis'), 'Été000000001user_datas/plan.pdfOuvrir');
  assert.strictEqual(page.par('champNom').value, '');
});

test('the kind that is chosen goes before the one that is guessed', () => {
  const { monde, page } = ouvrir();
  page.document.querySelector('input[name="genreAdresse"]:checked').checked = false;
  page.document.querySelector('input[value="web"]').checked = true;
  raccourcir(page, 'example.org', 'Site');
  assert.deepStrictEqual(monde.commandes(), [['createlink', 'lnkwebexample.org', 'Site']]);
  // And is guessed again for the next one.
  assert.strictEqual(page.document.querySelector('input[name="genreAdresse"]:checked').value, 'auto');
});

test('a shortcut that is not in the table is told as missing, also beside one of its name', () => {
  [[], [['Plan', 'loc/ancien.pdf']]].forEach((raccourcis) => {
    const { monde, page } = ouvrir({ raccourcis });
    monde.tableProtegee = true;
    raccourcir(page, '/nouveau.pdf', 'Plan');
    assert.match(page.texte('messageRaccourci'), /le nouveau raccourci n’est pas dans la liste/);
    assert.strictEqual(page.genre('messageRaccourci'), 'erreur');
    assert.strictEqual(page.par('champNom').value, 'Plan');
  });
});

test('a shortcut that came from elsewhere in the meantime is not taken for the one that failed', () => {
  const { monde, page } = ouvrir();
  monde.raccourcis.push(['Autre', 'loc/autre.pdf']);
  monde.ecrireTable();
  monde.tableProtegee = true;
  raccourcir(page, '/nouveau.pdf', 'Plan');
  assert.strictEqual(page.genre('messageRaccourci'), 'erreur');
  assert.match(page.texte('corpsRaccourcis'), /^Autre/);
});

test('a shortcut that has the name of an older one is told with its own key', () => {
  const { monde, page } = ouvrir({ raccourcis: [['Plan', 'loc/ancien.pdf'], ['Autre', 'loc/b']] });
  raccourcir(page, '/nouveau.pdf', 'Plan');
  assert.strictEqual(page.texte('messageRaccourci'), 'Raccourci créé, avec la clé 000000003.');
  // And the next one of that name, which fails.
  monde.tableProtegee = true;
  raccourcir(page, '/encore.pdf', 'Plan');
  assert.strictEqual(page.genre('messageRaccourci'), 'erreur');
});

test('of two shortcuts of one name in a row the second that fails is told as missing', () => {
  const { monde, page } = ouvrir();
  page.taper('champAdresse', '/a');
  page.taper('champNom', 'Plan');
  page.cliquer('boutonRaccourci');
  page.cliquer('boutonRaccourci');
  monde.passer(1200);
  assert.strictEqual(page.texte('messageRaccourci'), 'Raccourci créé, avec la clé 000000001.');
  monde.tableProtegee = true;
  monde.passer(REPONSE);
  assert.strictEqual(monde.envois.length, 2);
  assert.strictEqual(page.genre('messageRaccourci'), 'erreur');
});

test('the list opens each shortcut by its button', () => {
  const { monde, page } = ouvrir({ raccourcis: [['Plan', 'loc../../user_datas/plan.pdf'], ['Site', 'webexample.org']] });
  const boutons = page.boutons('corpsRaccourcis');
  assert.deepStrictEqual(boutons.map((bouton) => bouton.getAttribute('aria-label').replace('\u00a0', ' ')),
    ['Ouvrir : Plan', 'Ouvrir : Site']);
  page.cliquer(boutons[0]);
  monde.passer(REPONSE);
  assert.deepStrictEqual(monde.commandes(), [['shellexe', '../../user_datas/plan.pdf']]);
  assert.match(page.texte('messageListe'), /^Reçu par Tavrollo/);
  page.cliquer(boutons[1]);
  monde.passer(REPONSE);
  assert.deepStrictEqual(page.ouvertes, [{ url: 'https://example.org', cible: '_blank', traits: 'noopener,noreferrer' }]);
  assert.strictEqual(page.texte('messageListe'), '« Site » s’ouvre dans le navigateur.');
  assert.strictEqual(monde.envois.length, 1);
});

test('without shortcuts the page says why', () => {
  const { monde, page } = ouvrir();
  assert.match(page.texte('sansRaccourci'), /^Aucun raccourci pour l’instant/);
  assert.strictEqual(page.visible('tableRaccourcis'), false);
  monde.ecrits['shortQrCode.js'] = null;
  assert.match(monde.ouvrir('index.html').texte('sansRaccourci'), /introuvable/);
});
