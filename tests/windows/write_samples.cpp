// SPDX-License-Identifier: GPL-3.0-or-later
// write_samples FOLDER: writes a config.cfg and a shortQrCode.js into an existing folder, always
// the same ones. For same_on_both.py.
#include <iostream>

#include "config/ConfigFile.h"
#include "config/ShortcutFile.h"
#include "platform/Console.h"
#include "platform/Files.h"
#include "text/Utf.h"

namespace {

// Nobody is there to be asked: a box is a failure.
class NoQuestions : public Questions {
 public:
  Answer ask(const Box& box) override {
    std::cerr << toUtf8(box.text) << '\n';
    return box.defaultAnswer;
  }
  std::optional<Text> chooseFile(const FileRequest&) override { return std::nullopt; }
  std::optional<Text> chooseNewFile(const SaveRequest&) override { return std::nullopt; }
  std::optional<Text> chooseFolder(const FolderRequest&) override { return std::nullopt; }
};

Settings sampleSettings() {
  return {.browser = 1,
          .cookiesPath = u"C:\\Users\\Zoé €\\Mozilla\\Firefox\\日本\\cookies.sqlite",
          .pollInterval = 1250,
          .shortcutPath = u"C:\\Écoles\\nav\\res_css\\js\\shortQrCode.js",
          .scaleX = 567,
          .scaleY = 600,
          .notifications = 2,
          .backupPath = u"/media/prof/clé\nUSB/\xD83D\xDE00"};
}

ShortcutTable sampleShortcuts() {
  ShortcutTable table;
  table.load(41,
             {{.key = u"000000001", .name = u"Aide", .address = u"loc../../user_datas/a b.html"},
              {.key = u"000000007", .name = u"Été à Nîmes €", .address = u"webhttps://x/é?a=1"}});
  table.addRow(table.newKey() + u"\t日本語 \"x\"\tloc../../user_datas/日本.pdf");
  return table;
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words = commandArguments(count, arguments);
  if (words.size() != 1) {
    std::cerr << "usage: write_samples FOLDER\n";
    return 2;
  }
  const Text folder = fromUtf8Lossless(words[0]);
  NoQuestions questions;
  const bool settings = RecConfig(folder, sampleSettings(), frenchLocale(), questions);
  const Failure shortcuts =
      replaceFile(folder + u"/shortQrCode.js", shortcutBytes(sampleShortcuts()));
  return settings && !shortcuts ? 0 : 1;
}
