// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StateScript.h"

#include "platform/Files.h"
#include "text/Paths.h"

namespace {

// A JavaScript string literal (ECMA-262, section 12.9.4) that holds ASCII alone, and no "<" that
// could end a script element.
std::string literal(TextView text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char16_t unit : text) {
    const bool plain = unit >= 0x20 && unit < 0x7F && unit != u'"' && unit != u'\\' && unit != u'<';
    if (plain) {
      quoted += static_cast<char>(unit);
      continue;
    }
    quoted += "\\u";
    for (const int shift : {12, 8, 4, 0}) quoted += kHex[(unit >> shift) & 0xFu];
  }
  return quoted + '"';
}

}  // namespace

std::string stateScript(const BridgeState& state) {
  return "var tavrolloEtat={\"compteur\":" + std::to_string(state.counter) +
         ",\"dernier\":" + literal(state.lastField) +
         ",\"intervalle\":" + std::to_string(state.interval) +
         ",\"version\":" + literal(state.version) + ",\"heure\":" + literal(state.time) + "};\r\n";
}

Failure writeStateScript(const Text& webApplicationRoot, const BridgeState& state) {
  return replaceFile(nativePath(webApplicationRoot + u"res_css\\js\\etat.js"), stateScript(state));
}
