// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <sstream>

#include "tools/Verbs.h"
#include "unit/bridge/BrowserStore.h"

namespace {

const std::string kName = "Tavr1CodeToExe";

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

Outcome run(const std::vector<std::string>& arguments) {
  std::ostringstream out;
  std::ostringstream err;
  Outcome outcome;
  outcome.status = cookieVerb(arguments, out, err);
  outcome.out = out.str();
  outcome.err = err.str();
  return outcome;
}

std::string argument(const Text& path) { return toUtf8Lossless(path); }

class TavrolloctlCookie : public testing::Test {
 protected:
  std::string write(TextView name, std::string_view bytes) {
    return argument(folder_.write(name, bytes));
  }

  StoreFolder folder_;
};

}  // namespace

TEST_F(TavrolloctlCookie, ShowsPositionHostAndValue) {
  const Outcome raw = run({write(u"raw", "..." + kName + "ini_|_\xC3\xA9_|__e-o-v_")});
  EXPECT_EQ(raw.status, 0);
  EXPECT_EQ(raw.out, "position\t4\nhost\t-\nvalue\tini_|_\xC3\xA9_|_\n");
  EXPECT_EQ(raw.err, "");

  FirefoxStore store(folder_ / u"cookies.sqlite");
  store.setCommand("notepad_|_a_|_");
  const Outcome local = run({argument(store.path())});
  EXPECT_EQ(local.status, 0);
  EXPECT_TRUE(local.out.starts_with("position\t")) << local.out;
  EXPECT_TRUE(local.out.ends_with("\nhost\t\nvalue\tnotepad_|_a_|_\n")) << local.out;

  ChromiumStore encrypted(folder_ / u"Cookies");
  encrypted.set(kName, "", "763130aa", "localhost");
  EXPECT_TRUE(run({argument(folder_ / u"Cookies")}).out.ends_with("\nhost\tlocalhost\nvalue\t\n"));
}

TEST_F(TavrolloctlCookie, BeginsNearTheGivenOffset) {
  const std::string store =
      write(u"raw", "xx" + kName + "a_e-o-v_" + std::string(600, '.') + kName + "b_e-o-v_");
  EXPECT_EQ(run({store}).out, "position\t3\nhost\t-\nvalue\ta\n");
  EXPECT_EQ(run({store, "--offset", "500"}).out, "position\t625\nhost\t-\nvalue\tb\n");
  EXPECT_EQ(run({"--offset", "99999", store}).out, "position\t3\nhost\t-\nvalue\ta\n");
}

TEST_F(TavrolloctlCookie, WithoutACommandTheStatusIs1) {
  const Outcome nothing = run({write(u"raw", "nothing here")});
  EXPECT_EQ(nothing.status, 1);
  EXPECT_EQ(nothing.out, "");
  EXPECT_EQ(nothing.err, "");
  EXPECT_EQ(run({write(u"empty", "")}).status, 1);
}

TEST_F(TavrolloctlCookie, RefusedHostsAreNamedAndListedOnesAllowed) {
  FirefoxStore store(folder_ / u"cookies.sqlite");
  store.setCommand("a", "nav.example");
  const std::string path = argument(store.path());
  const Outcome refused = run({path});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(refused.err, "cookie refusé, hôte : nav.example\n");

  const Outcome allowed = run({path, "--hosts", write(u"hosts", "nav.example\n")});
  EXPECT_EQ(allowed.status, 0);
  EXPECT_TRUE(allowed.out.ends_with("\nhost\tnav.example\nvalue\ta\n"));
  EXPECT_EQ(allowed.err, "");
}

TEST_F(TavrolloctlCookie, AStoreThatCannotBeReadIsOneLine) {
  const struct {
    std::string store;
    std::string line;
  } rows[] = {
      {argument(folder_ / u"none"), "erreurFichier introuvable 53 - i=0\n"},
      {argument(folder_.text()), "erreurErreur d'accès Chemin/Fichier 75 - i=0\n"},
      {write(u"cut", "xx" + kName + "a"), "erreurL'entrée dépasse la fin du fichier 62 - i=3\n"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = run({row.store});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, row.line);
  }
  const std::string store = write(u"raw", "xx" + kName + "a_e-o-v_");
  const Outcome noList = run({store, "--hosts", argument(folder_ / u"none")});
  EXPECT_EQ(noList.status, 2);
  EXPECT_EQ(noList.out, "");
  EXPECT_EQ(noList.err, "Le fichier " + argument(folder_ / u"none") +
                            " ne peut pas être lu : Fichier introuvable.\n");
}

TEST_F(TavrolloctlCookie, SaysHowItIsUsed) {
  const Outcome help = run({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(
      help.out.starts_with("Usage : tavrolloctl cookie BASE [--offset N] [--hosts FICHIER]\n"));
  EXPECT_EQ(help.err, "");

  const std::string store = write(u"raw", "xx" + kName + "a_e-o-v_");
  const std::vector<std::string> rows[] = {{},
                                           {""},
                                           {store, store},
                                           {store, "--offset"},
                                           {store, "--offset", ""},
                                           {store, "--offset", "1x"},
                                           {store, "--offset", "2147483648"},
                                           {store, "--hosts"},
                                           {store, "--hosts", ""},
                                           {store, "--other"},
                                           {"--offset", "3"},
                                           {store, "--help"}};
  for (const auto& arguments : rows) {
    const Outcome wrong = run(arguments);
    EXPECT_EQ(wrong.status, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(wrong.out, "");
    EXPECT_EQ(wrong.err, help.out);
  }
}
