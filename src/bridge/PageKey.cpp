// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/PageKey.h"

#include "platform/Files.h"
#include "text/AnsiCodePage.h"
#include "text/Paths.h"
#include "text/Split.h"

namespace {

Box pageKeyBox(const Text& description) {
  return {.title = u"Tavrollo : pw",
          .text = description + u"\r\nImpossible d'ouvrir le fichier rwCookies.js",
          .icon = BoxIcon::Exclamation};
}

}  // namespace

std::optional<Box> writePageKey(const Text& webApplicationRoot, const Text& value) {
  const Text path = nativePath(webApplicationRoot + u"res_css\\js\\rwCookies.js");
  if (!FileExists(path)) return pageKeyBox({});

  std::string script;
  if (Failure failure = readFile(path, script)) return pageKeyBox(failure.description);
  const std::vector<std::string_view> lines = splitLines(script);
  if (lines.empty()) return pageKeyBox(failures::pastEndOfFile().description);

  std::string written = "var ps=\"" + toAnsi(value) + "\";\r\n";
  for (std::size_t i = 1; i < lines.size(); ++i) written.append(lines[i]).append("\r\n");
  if (Failure failure = replaceFile(path, written)) return pageKeyBox(failure.description);
  return std::nullopt;
}
