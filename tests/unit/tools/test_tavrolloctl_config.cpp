// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "config/ConfigFile.h"
#include "unit/tools/RunTavrolloctl.h"

namespace {

Outcome runOn(const std::string& bytes) {
  const Scratch folder;
  writeBytes(folder.text("config.cfg"), bytes);
  return runTavrolloctl({"config", argument(folder.text("config.cfg"))});
}

std::string bytesWith(const Settings& settings) { return configBytes(settings, frenchLocale()); }

// The bytes of the usual settings with one of them set.
template <class Value>
std::string bytesWith(Value Settings::*setting, const Value& value) {
  Settings settings;
  settings.*setting = value;
  return bytesWith(settings);
}

}  // namespace

TEST(TavrolloctlConfig, ShowsEachSettingOnALine) {
  const Outcome run = runOn(bytesWith({.browser = 1,
                                       .cookiesPath = u"/home/Łukasz/é/Cookies",
                                       .pollInterval = 1500,
                                       .shortcutPath = u"C:\\nav\\res_css\\js\\shortQrCode.js",
                                       .scaleX = 600,
                                       .scaleY = 550,
                                       .notifications = 2,
                                       .backupPath = u"E:\\é"}));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "browser\t1\n"
                     "cookies\t/home/Łukasz/é/Cookies\n"
                     "interval\t1500\n"
                     "shortcuts\tC:\\nav\\res_css\\js\\shortQrCode.js\n"
                     "scaleX\t600\n"
                     "scaleY\t550\n"
                     "notifications\t2\n"
                     "backup\tE:\\é\n");
  EXPECT_EQ(run.err, "");
}

TEST(TavrolloctlConfig, AppliesNoFallback) {
  Settings settings;
  settings.browser = -7;
  settings.pollInterval = -1;
  settings.shortcutPath = u"nulle part";
  const Outcome run = runOn(bytesWith(settings));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "browser\t-7\ncookies\t\ninterval\t-1\nshortcuts\tnulle part\n"
                     "scaleX\t567\nscaleY\t567\nnotifications\t1\nbackup\t\n");
}

TEST(TavrolloctlConfig, ShowsOddValuesAsTheyStand) {
  const Outcome run = runOn(bytesWith(&Settings::cookiesPath, Text(u"a\tb\u0001\u0081")));
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("cookies\ta\tb\x01\xC2\x81\n"), std::string::npos) << run.out;

  std::string withZero = bytesWith(&Settings::cookiesPath, Text(u"a#b"));
  withZero[withZero.find("a#b") + 1] = '\0';
  EXPECT_NE(runOn(withZero).out.find(std::string("cookies\ta\0b\n", 12)), std::string::npos);
}

TEST(TavrolloctlConfig, AFileThatDoesNotReadShowsNothingButOneSentence) {
  const std::string whole = bytesWith(&Settings::backupPath, Text(u"E:"));
  const std::string rows[] = {
      "", whole.substr(0, whole.find("E:")), bytesWith(&Settings::cookiesPath, Text(u"a,b")),
      bytesWith(&Settings::notifications, std::int16_t{3}), bytesWith(&Settings::scaleX, 567.5)};
  for (const std::string& bytes : rows) {
    const Scratch folder;
    const std::string path = argument(folder.text("config.cfg"));
    writeBytes(folder.text("config.cfg"), bytes);
    const Outcome run = runTavrolloctl({"config", path});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "Le fichier " + path +
                           " n'est pas un config.cfg complet : il finit trop tôt ou un nombre n'y "
                           "est pas valable.\n");
  }
}

TEST(TavrolloctlConfig, TheFilesNameMayHoldAnyBytes) {
  const Scratch folder;
  const std::string path = folder.path() + "/\xFFŁ é.cfg";
  std::ofstream(path, std::ios::binary) << bytesWith(Settings());
  EXPECT_EQ(runTavrolloctl({"config", path}).status, 0);
}
