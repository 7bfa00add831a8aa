// SPDX-License-Identifier: GPL-3.0-or-later
// A stand-in for Firefox with pages of nav/ open, and for the program behind it, on a clock that the
// test moves. The pages' own scripts run in it. It knows of a document what these pages ask for, and
// throws where they ask for more.
'use strict';
const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');
const octets = require('../../nav/res_css/js/octets.js');

const NAV = path.join(__dirname, '../../nav');
const RACINE = 'file:///Tavrollo/nav/';
const SANS_CONTENU = ['meta', 'link', 'input', 'img', 'br', 'hr'];
const DEPART = 1732184523000;
// From the cookie to the program's answer.
const TRAJET_MS = 800;

const scripts = new Map();

// A script of nav/res_css/js, compiled once for all pages of a test file.
function compile(nom) {
  if (!scripts.has(nom)) {
    const source = fs.readFileSync(path.join(NAV, 'res_css/js', nom), 'utf8');
    scripts.set(nom, new vm.Script(source, { filename: nom }));
  }
  return scripts.get(nom);
}

// A text as UTF-8 that a page reads as Windows-1252: so the program writes short names.
const utf8Lu1252 = (texte) => octets.depuis1252(Buffer.from(texte, 'utf8'));

class Texte {
  constructor(texte) { this.textContent = texte; }
}

class Element {
  constructor(document, nom) {
    Object.assign(this, { document, nom, attributs: {}, noeuds: [], parent: null, ecoutes: {}, value: '',
      checked: false, choisi: false });
    this.classList = {
      toggle: (classe, mise) => {
        const reste = this.className.split(' ').filter((autre) => autre && autre !== classe);
        this.className = (mise ? [...reste, classe] : reste).join(' ');
      }
    };
  }

  setAttribute(attribut, valeur) { this.attributs[attribut] = String(valeur); }
  getAttribute(attribut) { return attribut in this.attributs ? this.attributs[attribut] : null; }
  removeAttribute(attribut) { delete this.attributs[attribut]; }
  get id() { return this.attributs.id || ''; }
  get className() { return this.attributs.class || ''; }
  set className(classes) { this.attributs.class = classes; }
  get hidden() { return 'hidden' in this.attributs; }
  set hidden(cache) { if (cache) { this.attributs.hidden = ''; } else { delete this.attributs.hidden; } }

  get dataset() {
    const nomme = (attribut) => attribut.slice(5).replace(/-([a-z])/g, (_, lettre) => lettre.toUpperCase());
    return Object.fromEntries(Object.keys(this.attributs).filter((attribut) => attribut.startsWith('data-'))
      .map((attribut) => [nomme(attribut), this.attributs[attribut]]));
  }

  get textContent() { return this.noeuds.map((noeud) => noeud.textContent).join(''); }
  set textContent(texte) {
    this.replaceChildren();
    if (texte !== '') { this.noeuds = [new Texte(String(texte))]; }
  }

  get children() { return this.noeuds.filter((noeud) => noeud instanceof Element); }
  get firstElementChild() { return this.children[0] || null; }
  get lignee() { return [this, ...(this.parent ? this.parent.lignee : [])]; }
  // All elements below this one, in the page's order.
  descendance(trouves = []) {
    this.noeuds.forEach((noeud) => {
      if (!(noeud instanceof Element)) { return; }
      trouves.push(noeud);
      noeud.descendance(trouves);
    });
    return trouves;
  }
  get visible() {
    return this.lignee.every((element) => !element.hidden) && this.lignee.includes(this.document.racine);
  }

  get labels() {
    return this.document.racine.descendance()
      .filter((element) => element.nom === 'label' && element.getAttribute('for') === this.id);
  }

  remove() {
    if (!this.parent) { return; }
    this.parent.noeuds = this.parent.noeuds.filter((noeud) => noeud !== this);
    this.parent = null;
  }

  insertBefore(element, suivant) {
    element.remove();
    const rang = suivant ? this.noeuds.indexOf(suivant) : this.noeuds.length;
    if (rang < 0) { throw new Error('not a child of <' + this.nom + '>'); }
    this.noeuds.splice(rang, 0, element);
    element.parent = this;
    return element;
  }

  appendChild(element) { return this.insertBefore(element, null); }

  replaceChildren(...elements) {
    this.children.forEach((enfant) => enfant.remove());
    this.noeuds = [];
    elements.forEach((element) => this.appendChild(element));
  }

  repond(selecteur) {
    const parts = selecteur.match(/^([a-z]*)(?:\.([\w-]+))?(?:\[([\w-]+)(?:="([^"]*)")?\])?(:checked)?$/);
    if (!parts) { throw new Error('selector: ' + selecteur); }
    const [, nom, classe, attribut, valeur, choisi] = parts;
    return (!nom || this.nom === nom) && (!classe || this.className.split(' ').includes(classe)) &&
      (!attribut || attribut in this.attributs) && (valeur === undefined || this.attributs[attribut] === valeur) &&
      (!choisi || this.checked);
  }

  querySelectorAll(selecteur) { return this.descendance().filter((element) => element.repond(selecteur)); }
  querySelector(selecteur) { return this.querySelectorAll(selecteur)[0] || null; }

  addEventListener(nom, action) { (this.ecoutes[nom] = this.ecoutes[nom] || []).push(action); }
  annoncer(nom) {
    let empeche = false;
    (this.ecoutes[nom] || []).forEach((action) => action({ preventDefault: () => { empeche = true; } }));
    return empeche;
  }

  // As in a browser, what is hidden cannot have the focus.
  focus() { if (this.visible) { this.document.activeElement = this; } }
  select() { this.choisi = true; }

  reset() {
    this.querySelectorAll('input').forEach((champ) => {
      champ.value = champ.getAttribute('type') === 'radio' ? champ.getAttribute('value') : '';
      champ.checked = 'checked' in champ.attributs;
    });
  }
}

function decoder(texte) {
  return texte.replace(/&(lt|gt|amp|quot|nbsp);/g,
    (_, nom) => ({ lt: '<', gt: '>', amp: '&', quot: '"', nbsp: '\u00a0' })[nom]);
}

// The elements of a page that is written as ours are: every element is closed, every value quoted.
function analyser(html, document) {
  let ici = new Element(document, '#document');
  document.racine = ici;
  Array.from(html.matchAll(/<!--[\s\S]*?-->|<!DOCTYPE[^>]*>|<(\/?)([a-z0-9]+)((?:\s+[\w-]+(?:="[^"]*")?)*)\s*>|([^<]+)/g))
    .forEach(([, fin, nom, attributs, texte]) => {
      if (texte) { ici.noeuds.push(new Texte(decoder(texte))); }
      if (!nom) { return; }
      if (fin) {
        if (ici.nom !== nom) { throw new Error('</' + nom + '> closes <' + ici.nom + '>'); }
        ici = ici.parent;
        return;
      }
      const element = ici.appendChild(new Element(document, nom));
      Array.from(attributs.matchAll(/([\w-]+)(?:="([^"]*)")?/g))
        .forEach(([, attribut, valeur]) => element.setAttribute(attribut, decoder(valeur || '')));
      element.checked = 'checked' in element.attributs;
      element.value = element.getAttribute('value') || '';
      if (!SANS_CONTENU.includes(nom)) { ici = element; }
    });
  if (ici !== document.racine) { throw new Error('<' + ici.nom + '> stays open'); }
}

// One storage, or one that refuses as Firefox does when it is switched off.
function stockage(contenu) {
  const ouvrir = () => { if (!contenu) { throw new Error('SecurityError'); } return contenu; };
  return {
    getItem: (cle) => (ouvrir().has(cle) ? ouvrir().get(cle) : null),
    setItem: (cle, valeur) => { ouvrir().set(cle, String(valeur)); },
    removeItem: (cle) => { ouvrir().delete(cle); }
  };
}

// A page in a tab: what its user sees and does. onglet: { session, local }, Maps, or null where the
// storage is switched off; a tab that is given again is a reloaded page.
class Page {
  constructor(monde, nom, onglet) {
    Object.assign(this, { monde, onglet, ouvertes: [], ecoutes: {} });
    this.document = {
      activeElement: null,
      currentScript: null,
      createElement: (element) => new Element(this.document, element),
      getElementById: (id) => this.document.racine.descendance().find((element) => element.id === id) || null,
      querySelector: (selecteur) => this.document.racine.querySelector(selecteur)
    };
    Object.defineProperty(this.document, 'cookie', {
      get: () => monde.lireCookies(), set: (texte) => monde.ecrireCookie(texte)
    });
    analyser(fs.readFileSync(path.join(NAV, nom), 'utf8'), this.document);
    this.document.head = { appendChild: (script) => this.charger(script) };
    this.contexte = vm.createContext({
      document: this.document, URL, TextEncoder, TextDecoder,
      Date: { now: () => monde.heure },
      setTimeout: (action, ms) => monde.plusTard(action, ms),
      clearTimeout: (tache) => monde.annuler(tache),
      localStorage: stockage(onglet.local),
      sessionStorage: stockage(onglet.session),
      addEventListener: (evenement, action) => { this.ecoutes[evenement] = action; },
      open: (url, cible, traits) => { this.ouvertes.push({ url, cible, traits }); }
    });
    this.contexte.window = this.contexte;
    this.document.racine.querySelectorAll('script').forEach((script) => {
      const adresse = new URL(script.getAttribute('src'), RACINE + nom).href;
      this.document.currentScript = { src: adresse };
      this.executer(path.basename(adresse));
    });
    this.document.currentScript = null;
    monde.passer(10);
  }

  // False when there is no such script.
  executer(nom) {
    const ecrit = this.monde.ecrits[nom];
    if (ecrit === null) { return false; }
    if (ecrit === undefined) { compile(nom).runInContext(this.contexte); }
    else { vm.runInContext(ecrit, this.contexte); }
    return true;
  }

  charger(script) {
    this.monde.plusTard(() => {
      if (this.executer(script.src.replace(/^.*\/|\?.*$/g, ''))) { script.onload(); } else { script.onerror(); }
    }, 1);
  }

  par(id) {
    const element = this.document.getElementById(id);
    if (!element) { throw new Error('no element ' + id); }
    return element;
  }

  texte(id) { return this.par(id).textContent.replace(/\u00a0/g, ' '); }
  visible(id) { return this.par(id).visible; }
  foyer() { return this.document.activeElement ? this.document.activeElement.id : ''; }
  genre(id) { return this.par(id).getAttribute('data-genre'); }
  marques() { return this.document.racine.querySelectorAll('[aria-invalid]').map((champ) => champ.id); }

  // Types into a field: an id, or an element.
  taper(id, texte) {
    const champ = this.par(id);
    if (!champ.visible) { throw new Error(id + ' is not to be seen'); }
    champ.value = texte;
    champ.annoncer('input');
  }

  // Clicks a button: an id, or an element. One of a form submits it.
  cliquer(bouton) {
    const element = typeof bouton === 'string' ? this.par(bouton) : bouton;
    if (!element.visible) { throw new Error(element.textContent + ' is not to be seen'); }
    element.focus();
    element.annoncer('click');
    const formulaire = element.lignee.find((autre) => autre.nom === 'form');
    if (formulaire && element.getAttribute('type') === 'submit' && !formulaire.annoncer('submit')) {
      throw new Error('the form left its page');
    }
  }

  boutons(id) { return this.par(id).querySelectorAll('button'); }
  revenir() { this.ecoutes.focus(); this.monde.passer(10); }
}

// What the pages share: the clock, the cookies, the program and the scripts that it writes.
class Monde {
  constructor(reglages) {
    Object.assign(this, {
      heure: DEPART, taches: [], bocal: new Map(), envois: [], repond: true, cookies: true, cle: '',
      tableProtegee: false, raccourcis: [], ecrits: {}, ...reglages
    });
    this.ecrits['etat.js'] = null;
    this.ecrireCle(this.cle);
    this.ecrireTable();
  }

  plusTard(action, ms) {
    const tache = { action, quand: this.heure + Math.max(ms, 1) };
    this.taches.push(tache);
    return tache;
  }

  annuler(tache) { this.taches = this.taches.filter((autre) => autre !== tache); }

  passer(ms) {
    const fin = this.heure + ms;
    for (;;) {
      const due = this.taches.filter((tache) => tache.quand <= fin).sort((a, b) => a.quand - b.quand)[0];
      if (!due) { break; }
      this.annuler(due);
      this.heure = due.quand;
      due.action();
    }
    this.heure = fin;
  }

  ouvrir(nom, onglet) { return new Page(this, nom, onglet || { session: new Map(), local: new Map() }); }

  lireCookies() {
    return Array.from(this.bocal).filter(([, cookie]) => cookie.fin > this.heure)
      .map(([nom, cookie]) => nom + '=' + cookie.valeur).join('; ');
  }

  ecrireCookie(texte) {
    const [, nom, valeur, duree] = texte.match(/^([^=]+)=([^;]*)(?:;.*max-age=(\d+))?/);
    if (!this.cookies) { return; }
    this.bocal.set(nom, { valeur, fin: duree ? this.heure + Number(duree) * 1000 : Infinity });
    if (nom !== 'Tavr1CodeToExe') { return; }
    this.envois.push({ texte: valeur, champs: valeur.replace(/_e-o-v_$/, '').split('_|_'), quand: this.heure });
    this.plusTard(() => this.traiter(valeur), TRAJET_MS);
  }

  // The commands that were sent, without their counters.
  commandes() { return this.envois.map((envoi) => envoi.champs.slice(0, -1)); }

  // The program looks at the store: an overwritten value is gone.
  traiter(valeur) {
    const cookie = this.bocal.get('Tavr1CodeToExe');
    if (!this.repond || cookie.valeur !== valeur || cookie.fin <= this.heure) { return; }
    const champs = valeur.replace(/_e-o-v_$/, '').split('_|_');
    if (champs[0] === 'ini') { this.ecrireCle(champs[1]); }
    if (champs[0] === 'createlink') {
      this.raccourcis.push([champs[2], champs[1].slice(3)]);
      this.ecrireTable();
    }
    this.ecrits['etat.js'] = 'var tavrolloEtat={"compteur":1,"dernier":"' + champs.pop() +
      '","intervalle":1000,"version":"1.0.0","heure":"21/11/2026 11:02:03"};';
  }

  // The program replaces the first line and keeps the others.
  ecrireCle(cle) {
    if (this.clePerdue) { return; }
    const script = fs.readFileSync(path.join(NAV, 'res_css/js/rwCookies.js'), 'latin1');
    this.ecrits['rwCookies.js'] = script.replace(/^var ps=".*";/, 'var ps="' + cle + '";');
  }

  // raccourcis: [name, address], whose keys are their ranks.
  ecrireTable() {
    if (this.tableProtegee) { return; }
    this.ecrits['shortQrCode.js'] = 'var tabObj = new Object();\r\n' + this.raccourcis.map(([nom, adresse], rang) =>
      'tabObj["' + String(rang + 1).padStart(9, '0') + '"]="' + utf8Lu1252(nom) + '_|_' + adresse + '";\r\n').join('') +
      'function ShortQrCode(myKey){\r\nvar t = tabObj[myKey].split("_|_");\r\nreturn t[1];\r\n}\r\n' +
      'function NameQrCode(myKey){\r\nvar t = tabObj[myKey].split("_|_");\r\nreturn t[0];\r\n}\r\n';
  }
}

module.exports = { creerMonde: (reglages) => new Monde(reglages) };
