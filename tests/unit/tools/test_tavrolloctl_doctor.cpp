// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>

#include "bridge/StateScript.h"
#include "config/ConfigFile.h"
#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "support/Processes.h"
#include "text/Split.h"
#include "text/Utf.h"
#include "unit/tools/RunTavrolloctl.h"

namespace {

constexpr const char* kStore = ".mozilla/firefox/abcd.default-esr/cookies.sqlite";

// A user's home of its own, without a screen and with the programs that are put into its PATH.
class TavrolloctlDoctor : public ::testing::Test {
 protected:
  TavrolloctlDoctor() { home.makeFolders("bin"); }

  // Everything that can be well without a desktop.
  void setUp() {
    ASSERT_FALSE(fillProgramFolder(folder(), templateFolder(folderOf(fromUtf8(TAVROLLOCTL)))));
    home.write(".mozilla/firefox/profiles.ini",
               "[Profile0]\nName=d\nIsRelative=1\nPath=abcd.default-esr\nDefault=1\n");
    home.write(kStore, "no command");
    configure(home.text(kStore));
    BridgeState state;
    state.time = u"21/11/2026 10:00:00";
    ASSERT_FALSE(writeStateScript(folder() + u"/nav/", state));
    home.script("bin/gedit", "");
    home.script("bin/lowriter", "");
    home.script("bin/xdg-settings", "echo firefox-esr.desktop\n");
    home.script("bin/fc-list",
                "printf '%s\\n' 'Code 3 de 9' 'Code 3 de 9 Lab,Code 3 de 9 Lab Regular' \\\n"
                "  'Code EAN13' 'Code 2 of 5 interleaved' 'Code 128'\n");
    ASSERT_TRUE(guard.acquire(folder()));
  }

  void configure(const Text& store) {
    Settings settings;
    settings.cookiesPath = store;
    settings.shortcutPath = folder() + u"/nav/res_css/js/shortQrCode.js";
    writeBytes(configPath(folder()), configBytes(settings, systemLocale()));
  }

  Text folder() const { return home.text("Tavrollo"); }

  // The fields of each line, by its subject; `status` gets the exit status.
  std::map<std::string, std::vector<std::string>> ask(std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), "doctor");
    const Outcome run = runTavrolloctl(arguments);
    status = run.status;
    std::map<std::string, std::vector<std::string>> lines;
    for (const std::string_view line : splitLines(run.out)) {
      std::vector<std::string> fields;
      for (const std::string_view field : split(line, "\t")) fields.emplace_back(field);
      if (fields.size() > 1) lines[fields[1]] = fields;
    }
    return lines;
  }

  const Scratch home;
  const Variable itsHome{"HOME", home.path()};
  const Variable runtime{"XDG_RUNTIME_DIR", home.path()};
  const Variable config{"XDG_CONFIG_HOME", std::nullopt};
  const Variable data{"XDG_DATA_DIRS", home.path("none")};
  const Variable path{"PATH", home.path("bin")};
  const Variable screen{"DISPLAY", std::nullopt};
  const Variable otherScreen{"WAYLAND_DISPLAY", std::nullopt};
  InstanceGuard guard;
  int status = -1;
};

}  // namespace

TEST_F(TavrolloctlDoctor, WhereAllIsWellItSaysSo) {
  setUp();
  const auto lines = ask();
  EXPECT_EQ(lines.size(), 11u);
  for (const auto& [subject, fields] : lines) {
    EXPECT_EQ(fields[0], subject == "Zone de notification" ? "inconnu" : "bien")
        << subject << ": " << fields[2];
    EXPECT_EQ(fields.size(), 3u) << subject;
  }
  EXPECT_EQ(status, 0);
  EXPECT_EQ(lines.at("Dernière commande")[2], "reçue le 21/11/2026 10:00:00");
  EXPECT_EQ(lines.at("Navigateur par défaut")[2], "firefox-esr.desktop");
  EXPECT_EQ(lines.at("Éditeur de texte")[2], "gedit");
}

TEST_F(TavrolloctlDoctor, InAnEmptyHomeItSaysWhatToDo) {
  const auto lines = ask();
  EXPECT_EQ(status, 1);
  for (const char* subject :
       {"Programme", "Application web", "Réglages", "Profil de Firefox", "Base de cookies",
        "Dernière commande", "Navigateur par défaut", "Éditeur de texte", "Traitement de texte"}) {
    ASSERT_EQ(lines.count(subject), 1u) << subject;
    EXPECT_EQ(lines.at(subject)[0], "à revoir") << subject;
    EXPECT_EQ(lines.at(subject).size(), 4u) << subject;
  }
  EXPECT_EQ(lines.at("Polices des codes barres")[0], "inconnu");  // nobody there can be asked
}

TEST_F(TavrolloctlDoctor, NamesWhatTheWebApplicationLacksButNotTheUsersOwnFiles) {
  setUp();
  std::filesystem::remove(home.path("Tavrollo/nav/aide.html"));
  std::filesystem::remove_all(home.path("Tavrollo/nav/user_datas"));
  EXPECT_EQ(ask().at("Application web")[2], "manque : nav/aide.html");
  EXPECT_EQ(status, 1);
}

TEST_F(TavrolloctlDoctor, KnowsTheProfileThatFirefoxUsesNow) {
  setUp();
  home.write("other/cookies.sqlite", "x");
  configure(home.text("other/cookies.sqlite"));
  const auto fields = ask().at("Profil de Firefox");
  EXPECT_EQ(fields[0], "à revoir");
  EXPECT_NE(fields[3].find(home.path(kStore)), std::string::npos);
}

TEST_F(TavrolloctlDoctor, AStoreThatCannotBeReadIsTold) {
  setUp();
  home.write(kStore, "a store with Tavr1CodeToExe and no end of it");
  const auto fields = ask().at("Base de cookies");
  EXPECT_EQ(fields[0], "à revoir");
  EXPECT_TRUE(fields[2].starts_with("ne peut pas être lue : ")) << fields[2];
}

TEST_F(TavrolloctlDoctor, LaunchersOfTheUsersCount) {
  setUp();
  std::filesystem::remove(home.path("bin/gedit"));
  EXPECT_EQ(ask().at("Éditeur de texte")[0], "à revoir");
  home.write("Tavrollo/lanceurs.cfg", "notepad=my-editor --new\n");
  EXPECT_EQ(ask().at("Éditeur de texte")[2], "my-editor --new");
}

TEST_F(TavrolloctlDoctor, NamesTheFontsThatAreMissing) {
  setUp();
  home.script("bin/fc-list",
              "printf '%s\\n' 'Code 3 de 9' 'Code EAN13' 'Code 2 of 5 interleaved'\n");
  EXPECT_EQ(ask().at("Polices des codes barres")[2], "manque : Code 3 de 9 Lab, Code 128");
}

TEST_F(TavrolloctlDoctor, LooksAtTheFolderThatItIsGiven) {
  setUp();
  const auto lines = ask({"--program-folder", home.path("other")});
  EXPECT_EQ(lines.at("Programme")[0], "à revoir");
  EXPECT_EQ(lines.at("Réglages")[0], "à revoir");
}

TEST_F(TavrolloctlDoctor, ArgumentsThatAreNotUnderstoodAreRefused) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"x"}, {"--program-folder"}, {"--program-folder", ""}, {"--program-folder", "a", "b"}}) {
    EXPECT_TRUE(ask(arguments).empty());
    EXPECT_EQ(status, 2);
  }
}
