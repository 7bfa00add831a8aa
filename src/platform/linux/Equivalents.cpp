// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/Equivalents.h"

#include <algorithm>

#include "platform/linux/Programs.h"
#include "text/Utf.h"

namespace {

constexpr Equivalent kEditors[] = {
    {"gnome-text-editor", "gnome-text-editor"},
    {"gedit", "gedit"},
    {"kate", "kate"},
    {"mousepad", "mousepad"},
    {"xed", "xed"},
    {"pluma", "pluma"},
    {"featherpad", "featherpad"},
};

constexpr Equivalent kWriters[] = {{"lowriter", "libreoffice-writer"}};

constexpr Equivalent kCharacterTables[] = {
    {"gucharmap", "gucharmap"},
    {"gnome-characters", "gnome-characters"},
    {"kcharselect", "kcharselect"},
};

constexpr Equivalent kControlPanels[] = {
    {"gnome-control-center", "gnome-control-center"}, {"systemsettings", "systemsettings"},
    {"xfce4-settings-manager", "xfce4-settings"},     {"lxqt-config", "lxqt-config"},
    {"mate-control-center", "mate-control-center"},
};

constexpr Equivalent kTerminals[] = {
    {"x-terminal-emulator", "xterm", "-e"},
    {"gnome-terminal", "gnome-terminal", "--"},
    {"kgx", "gnome-console", "--"},
    {"ptyxis", "ptyxis", "--"},
    {"konsole", "konsole", "-e"},
    {"xfce4-terminal", "xfce4-terminal", "-x"},
    {"mate-terminal", "mate-terminal", "-x"},
    {"lxterminal", "lxterminal", "-e"},
    {"qterminal", "qterminal", "-e"},
    {"tilix", "tilix", "-e"},
    {"terminator", "terminator", "-x"},
    {"kitty", "kitty", "-e"},
    {"alacritty", "alacritty", "-e"},
    {"urxvt", "rxvt-unicode", "-e"},
    {"xterm", "xterm", "-e"},
    {"foot", "foot", "-e"},  // it knows Wayland alone
};

constexpr Equivalent kRegistries[] = {{"dconf-editor", "dconf-editor"}};

constexpr Equivalent kFileManagers[] = {kDocumentOpener};

constexpr TextView kTerminal = u"cmd.exe";

constexpr std::size_t kMostSuggestions = 5;

constexpr EquivalentRow kRows[] = {
    {u"notepad", CommandKind::OnePath, Handler::First, "text/plain", kEditors},
    {u"write", CommandKind::OnePath, Handler::Last, "application/rtf", kWriters},
    {kWordBasic, CommandKind::OnePath, Handler::Last, "application/msword", kWriters},
    {u"explorer", CommandKind::OnePath, Handler::Alone, "inode/directory", kFileManagers},
    {u"charmap", CommandKind::Words, Handler::None, "", kCharacterTables},
    {u"control", CommandKind::Words, Handler::None, "", kControlPanels},
    {kTerminal, CommandKind::Words, Handler::None, "", kTerminals},
    {u"regedit", CommandKind::Words, Handler::None, "", kRegistries},
    {u"winver", CommandKind::Box, Handler::None, "", {}},
};

}  // namespace

std::span<const EquivalentRow> equivalentRows() { return kRows; }

const EquivalentRow* equivalentRow(TextView command) {
  const auto* found =
      std::find_if(std::begin(kRows), std::end(kRows),
                   [&](const EquivalentRow& row) { return row.command == command; });
  return found == std::end(kRows) ? nullptr : found;
}

const Equivalent* installedEquivalent(const EquivalentRow& row) {
  for (const Equivalent& equivalent : row.programs) {
    if (!programInPath(std::string(equivalent.program)).empty()) return &equivalent;
  }
  return nullptr;
}

Text missingText(std::span<const Equivalent> programs) {
  const auto suggested = programs.first(std::min(programs.size(), kMostSuggestions));
  std::string text;
  for (const Equivalent& equivalent : suggested) {
    if (!text.empty()) text += &equivalent == &suggested.back() ? " ou " : ", ";
    text.append(equivalent.program).append(" (paquet ").append(equivalent.package).append(")");
  }
  return fromUtf8(text);
}

std::vector<std::string> terminalCommand() {
  const Equivalent* terminal = installedEquivalent(*equivalentRow(kTerminal));
  if (!terminal) return {};
  return {std::string(terminal->program), std::string(terminal->terminalOption)};
}
