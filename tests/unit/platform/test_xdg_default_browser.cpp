// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/linux/XdgDefaultBrowser.h"
#include "support/Processes.h"

namespace {

class XdgDefaultBrowserTest : public ::testing::Test {
 protected:
  // Both tools write what they are asked, and BROWSER, into "log".
  void fakeTool(const std::string& name, const std::string& body) {
    scratch.script("bin/" + name, "echo \"" + name + " $* [$BROWSER]\" >> '" + scratch.path("log") +
                                      "'\n" + body + "\n");
  }
  void install(const std::string& id) {
    scratch.write("data/applications/" + id, "[Desktop Entry]\nType=Application\nExec=firefox\n");
  }
  std::string setting(const std::string& name) { return "'" + scratch.path(name) + "'"; }

  Scratch scratch;
  Variable path{"PATH", scratch.path("bin") + ":/usr/bin:/bin"};
  Variable dataHome{"XDG_DATA_HOME", scratch.path("data")};
  Variable dataDirs{"XDG_DATA_DIRS", scratch.path("none")};
  Variable browserVariable{"BROWSER", "something-else"};
  XdgDefaultBrowser browser;
};

TEST_F(XdgDefaultBrowserTest, TheOpenCommandIsTheDesktopsBrowser) {
  fakeTool("xdg-settings", "echo firefox-esr.desktop");
  Text value;
  EXPECT_EQ(browser.RegRead(kHttpOpenCommand, value), 0u);
  EXPECT_EQ(value, u"firefox-esr.desktop");
  EXPECT_EQ(scratch.read("log"), "xdg-settings get default-web-browser []\n");
}

TEST_F(XdgDefaultBrowserTest, TheUserChoiceIsTheHandlerOfHttp) {
  fakeTool("xdg-mime", "echo Firefox.desktop");
  Text value;
  EXPECT_EQ(browser.RegRead(kHttpUserChoice, value), 0u);
  EXPECT_EQ(value, u"Firefox.desktop");
  EXPECT_EQ(scratch.read("log"), "xdg-mime query default x-scheme-handler/http []\n");
}

TEST_F(XdgDefaultBrowserTest, AnEmptyAnswerAFailureOrNoToolIsFileNotFound) {
  Text value = u"before";
  for (const char* body : {"", "echo", "echo firefox.desktop; exit 1"}) {
    fakeTool("xdg-settings", body);
    fakeTool("xdg-mime", body);
    EXPECT_EQ(browser.RegRead(kHttpOpenCommand, value), kRegistryFileNotFound) << body;
    EXPECT_EQ(browser.RegRead(kHttpUserChoice, value), kRegistryFileNotFound) << body;
  }
  const Variable empty("PATH", scratch.path("nothing"));
  EXPECT_EQ(browser.RegRead(kHttpOpenCommand, value), kRegistryFileNotFound);
  EXPECT_EQ(browser.RegRead(kHttpUserChoice, value), kRegistryFileNotFound);
  EXPECT_EQ(browser.RegRead(u"HKEY_CLASSES_ROOT\\other", value), kRegistryFileNotFound);
  EXPECT_EQ(value, u"before");
}

TEST_F(XdgDefaultBrowserTest, AToolThatHangsIsNotWaitedFor) {
  fakeTool("xdg-settings", "sleep 60");
  Text value;
  const auto before = std::chrono::steady_clock::now();
  EXPECT_EQ(browser.RegRead(kHttpOpenCommand, value), kRegistryFileNotFound);
  EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(20));
}

TEST_F(XdgDefaultBrowserTest, AnInstalledFirefoxIsFoundUnderEachOfItsNames) {
  EXPECT_FALSE(RegExists(browser, kFirefoxApplication));
  for (const char* id : {"firefox.desktop", "firefox-esr.desktop", "org.mozilla.firefox.desktop",
                         "firefox_firefox.desktop"}) {
    install(id);
    EXPECT_TRUE(RegExists(browser, kFirefoxApplication)) << id;
    EXPECT_EQ(readRegister(browser, kFirefoxApplication), fromPath(id));
    std::filesystem::remove(scratch.path("data/applications/" + std::string(id)));
  }
  install("chromium.desktop");
  EXPECT_FALSE(RegExists(browser, kFirefoxApplication));
}

TEST_F(XdgDefaultBrowserTest, WritingMakesTheInstalledFirefoxTheBrowser) {
  install("firefox-esr.desktop");
  fakeTool("xdg-settings", "if test $1 = set; then echo $3 > " + setting("now") + "; else cat " +
                               setting("now") + "; fi");
  fakeTool("xdg-mime", "");
  browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand);
  EXPECT_EQ(scratch.read("now"), "firefox-esr.desktop\n");
  EXPECT_EQ(scratch.read("log"), "xdg-settings set default-web-browser firefox-esr.desktop []\n"
                                 "xdg-settings get default-web-browser []\n");
}

TEST_F(XdgDefaultBrowserTest, WhatDoesNotStickIsSetForTheSchemes) {
  install("firefox.desktop");
  fakeTool("xdg-settings", "if test $1 = get; then echo other.desktop; fi");
  fakeTool("xdg-mime", "");
  browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand);
  EXPECT_TRUE(scratch.read("log").ends_with(
      "xdg-mime default firefox.desktop x-scheme-handler/http x-scheme-handler/https []\n"));
}

TEST_F(XdgDefaultBrowserTest, WithoutFirefoxAndForOtherKeysNothingIsSet) {
  fakeTool("xdg-settings", "");
  fakeTool("xdg-mime", "");
  browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand);
  install("firefox.desktop");
  browser.RegWrite(kHttpUserChoice, kFirefoxOpenCommand);
  EXPECT_EQ(scratch.read("log"), "");
}

// The real tools on a desktop that has nothing but a Firefox.
TEST_F(XdgDefaultBrowserTest, TheRealToolsTakeAndGiveTheBrowser) {
  if (std::system("command -v xdg-settings >/dev/null && command -v xdg-mime >/dev/null") != 0) {
    GTEST_SKIP() << "the xdg tools are not installed";
  }
  const Variable home("HOME", scratch.path());
  const Variable config("XDG_CONFIG_HOME", scratch.path("config"));
  const Variable desktop("XDG_CURRENT_DESKTOP", std::nullopt);
  std::filesystem::create_directory(scratch.path("config"));
  scratch.script("bin/firefox", "");
  scratch.write("data/applications/firefox.desktop",
                "[Desktop Entry]\nType=Application\nName=Firefox\nExec=firefox %u\n"
                "MimeType=x-scheme-handler/http;x-scheme-handler/https;text/html;\n");
  scratch.write("data/applications/other.desktop",
                "[Desktop Entry]\nType=Application\nName=Other\nExec=true %u\n"
                "MimeType=x-scheme-handler/http;x-scheme-handler/https;text/html;\n");
  scratch.write("config/mimeapps.list",
                "[Default Applications]\nx-scheme-handler/http=other.desktop\n"
                "x-scheme-handler/https=other.desktop\n");
  ASSERT_EQ(readRegister(browser, kHttpUserChoice), u"other.desktop");
  browser.RegWrite(kHttpOpenCommand, kFirefoxOpenCommand);
  EXPECT_EQ(readRegister(browser, kHttpUserChoice), u"firefox.desktop");
}

}  // namespace
