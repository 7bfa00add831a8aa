// SPDX-License-Identifier: GPL-3.0-or-later
#include "setup/Sha256.h"

#include <array>
#include <bit>
#include <cstdint>

namespace {

constexpr std::size_t kBlock = 64;
constexpr std::size_t kLength = 8;  // the length that ends the last block, in bytes

using State = std::array<std::uint32_t, 8>;

constexpr State kBegin = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                          0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

// clang-format off
constexpr std::array<std::uint32_t, kBlock> kRounds = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};
// clang-format on

std::uint32_t wordAt(std::string_view block, std::size_t word) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    value = value << 8 | static_cast<unsigned char>(block[4 * word + i]);
  }
  return value;
}

std::array<std::uint32_t, kBlock> schedule(std::string_view block) {
  std::array<std::uint32_t, kBlock> words{};
  for (std::size_t i = 0; i < 16; ++i) words[i] = wordAt(block, i);
  for (std::size_t i = 16; i < kBlock; ++i) {
    const std::uint32_t early = words[i - 15];
    const std::uint32_t late = words[i - 2];
    words[i] = words[i - 16] + words[i - 7] +
               (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) +
               (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
  }
  return words;
}

void take(State& state, std::string_view block) {
  const std::array<std::uint32_t, kBlock> words = schedule(block);
  auto [a, b, c, d, e, f, g, h] = state;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const std::uint32_t chosen = (e & f) ^ (~e & g);
    const std::uint32_t most = (a & b) ^ (a & c) ^ (b & c);
    const std::uint32_t one = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + chosen +
                              kRounds[i] + words[i];
    const std::uint32_t two = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + most;
    h = g;
    g = f;
    f = e;
    e = d + one;
    d = c;
    c = b;
    b = a;
    a = one + two;
  }
  const State mixed = {a, b, c, d, e, f, g, h};
  for (std::size_t i = 0; i < state.size(); ++i) state[i] += mixed[i];
}

// What is left behind the last whole block, with its end mark and the length of everything in bits.
std::string ending(std::string_view bytes) {
  std::string tail(bytes.substr(bytes.size() - bytes.size() % kBlock));
  tail += '\x80';
  while (tail.size() % kBlock != kBlock - kLength) tail += '\0';
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) tail += static_cast<char>(bits >> shift & 0xff);
  return tail;
}

std::string hexadecimal(const State& state) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint32_t word : state) {
    for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[word >> shift & 0xf];
  }
  return text;
}

}  // namespace

std::string sha256(std::string_view bytes) {
  State state = kBegin;
  for (std::size_t at = 0; at + kBlock <= bytes.size(); at += kBlock) {
    take(state, bytes.substr(at, kBlock));
  }
  const std::string tail = ending(bytes);
  for (std::size_t at = 0; at < tail.size(); at += kBlock) {
    take(state, std::string_view(tail).substr(at, kBlock));
  }
  return hexadecimal(state);
}
