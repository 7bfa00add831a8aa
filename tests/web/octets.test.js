// SPDX-License-Identifier: GPL-3.0-or-later
'use strict';
const test = require('node:test');
const assert = require('node:assert');
const octets = require('../../nav/res_css/js/octets.js');

const TOUS = Uint8Array.from({ length: 256 }, (_, i) => i);

test('every byte survives the round trip through Windows-1252', () => {
  assert.deepStrictEqual(octets.versOctets(octets.depuis1252(TOUS)), TOUS);
});

test('the upper bytes are the characters of the code page', () => {
  assert.strictEqual(octets.depuis1252([0x80, 0x85, 0x8c, 0x92, 0x9c, 0x9f, 0xa0, 0xe9, 0xff]), '€…Œ’œŸ\u00a0éÿ');
});

test('bytes without a character stand for the code point of their number', () => {
  assert.strictEqual(octets.depuis1252([0x81, 0x8d, 0x8f, 0x90, 0x9d]), '\u0081\u008d\u008f\u0090\u009d');
});

test('a text that the code page lacks has no bytes', () => {
  assert.strictEqual(octets.versOctets('λ'), null);
  assert.strictEqual(octets.versOctets('\u0080'), null);
});

test('UTF-8 lengths count bytes, not characters', () => {
  [['', 0], ['a', 1], ['é', 2], ['€', 3], ['😀', 4], ['été', 5]].forEach(([texte, longueur]) => {
    assert.strictEqual(octets.longueurUtf8(texte), longueur, texte);
  });
});

test('invalid UTF-8 becomes U+FFFD, or null when asked strictly', () => {
  assert.strictEqual(octets.depuisUtf8(Uint8Array.of(0x61, 0xe9, 0x62)), 'a\ufffdb');
  assert.strictEqual(octets.depuisUtf8Strict(Uint8Array.of(0x61, 0xe9, 0x62)), null);
  assert.strictEqual(octets.depuisUtf8Strict(Uint8Array.of(0xc3, 0xa9)), 'é');
});

test('the first character outside Windows-1252 is named', () => {
  assert.strictEqual(octets.premierHors1252('été €œŸ'), '');
  assert.strictEqual(octets.premierHors1252('aλb'), 'λ');
  assert.strictEqual(octets.premierHors1252('a😀'), '😀');
});
