// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CommandActions.h"

#include "text/EncodeDecodeUtf8.h"
#include "text/Paths.h"

namespace {

constexpr std::size_t kPagePrefix = 3;  // what a page puts in front of a new shortcut's address

}  // namespace

std::optional<Text> CommandActions::carryOut(const std::vector<Text>& fields) {
  if (fields.size() < 2) return std::nullopt;
  const Text& word = fields[0];
  const Text& first = fields[1];
  if (word == u"notepad") return notepad(first);
  if (word == u"shellexe") return shellexe(first);
  if (word == u"ini") return ini(first);
  if (word == u"lzck") return lzck(first);

  if (word != u"runapp" && word != u"createlink") return Text();
  if (fields.size() < 3) return std::nullopt;
  return word == u"runapp" ? runapp(first, fields[2]) : createlink(first, fields[2]);
}

// What becomes of a start is not awaited: the shell traces what it could not do.
Text CommandActions::notepad(const Text& file) {
  to_.shell.startCommandLine(u"notepad " + nativePath(file));
  return u"Lancement de NotePad";
}

Text CommandActions::shellexe(const Text& file) {
  execute(file, {});
  return u"Lancement depuis l'extension";
}

// The parameters came as bytes: decoded, the program is given the very bytes that the page wrote.
Text CommandActions::runapp(const Text& file, const Text& parameters) {
  execute(file, EncodeDecodeUtf8::decode(parameters));
  return u"Lancement de l'application";
}

void CommandActions::execute(const Text& file, const Text& parameters) {
  to_.shell.ShellExecute({.operation = u"open",
                          .file = nativePath(file),
                          .parameters = parameters,
                          .directory = startInFolder(to_.currentFolder(), nativeSeparator()),
                          .show = ShowState::Maximised});
}

Text CommandActions::createlink(const Text& target, const Text& name) {
  const Text address = target.size() > kPagePrefix ? target.substr(kPagePrefix) : Text();
  // The address came as bytes too. The table holds real text; its file keeps what a page reads
  // back.
  to_.shortcuts.addRow(to_.shortcuts.newKey() + u"\t" + EncodeDecodeUtf8::decode(name) + u"\t" +
                       EncodeDecodeUtf8::decode(address));
  to_.recShortQrCode();
  return u"Raccourci Créé";
}

Text CommandActions::ini(const Text& key) {
  to_.writePageKey(key);
  to_.lockMenus(false);
  return {};
}

Text CommandActions::lzck(const Text& lock) {
  to_.lockMenus(lock != u"false");
  return {};
}
