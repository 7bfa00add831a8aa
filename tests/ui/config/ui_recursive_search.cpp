// SPDX-License-Identifier: GPL-3.0-or-later
// The search window on real folders.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "config/SearchBoxes.h"
#include "config/frmRecursiveSearch.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "text/Paths.h"
#include "ui/UiMain.h"

namespace {

class RecursiveSearch : public testing::Test {
 protected:
  RecursiveSearch() : window(surroundings()) { settings.cookiesPath = u"/ancien"; }

  SearchSurroundings surroundings() {
    return {
        .settings = settings,
        .locale = locale,
        .questions = questions,
        .pumpEvents =
            [this] {
              ++pumped;
              shownFolders.push_back(label("labDir"));
              QCoreApplication::processEvents();
              if (whilePumping) whilePumping();
            },
        .showSettings = [this] { journal.push_back("settings shown"); },
        .storeChosen = [this](const Text& path) { journal.push_back("chosen " + toUtf8(path)); },
        .storeNotFound = [this] { journal.push_back("not found"); },
        .MenuAbout_Click =
            [this] { journal.push_back(window.isVisible() ? "about" : "about, hidden"); }};
  }

  void search() { window.search(scratch.text(), u"cookies.sqlite"); }
  QListWidget& results() { return control<QListWidget>(window, "listResult"); }
  QPushButton& button(const char* name) { return control<QPushButton>(window, name); }
  Text label(const char* name) { return fromQt(control<QLabel>(window, name).text()); }
  void clickResult(int row) {
    const QRect place = results().visualItemRect(results().item(row));
    QTest::mouseClick(results().viewport(), Qt::LeftButton, {}, place.center());
  }
  void writeTwoStores() {
    scratch.write("firefox/a/cookies.sqlite", "x");
    scratch.write("firefox/b/cookies.sqlite", std::string(2048, 'x'));
  }

  Scratch scratch;
  LocaleData locale = frenchLocale();
  Settings settings;
  Journal journal;
  ScriptedQuestions questions{journal};
  int pumped = 0;
  std::vector<Text> shownFolders;
  std::function<void()> whilePumping;
  frmRecursiveSearch window;
};

}  // namespace

TEST_F(RecursiveSearch, OneStoreChoosesItselfWithoutAQuestion) {
  scratch.write("firefox/a/cookies.sqlite", "x");
  search();
  const Text store = scratch.text("firefox/a/cookies.sqlite");
  EXPECT_EQ(journal, Journal({"settings shown", "chosen " + toUtf8(store)}));
  EXPECT_EQ(settings.cookiesPath, store);
  EXPECT_EQ(label("labNbre"), u"Résultat : 1fichier trouvé");
  EXPECT_EQ(label("labDir"), u"Recherche terminée");
  EXPECT_EQ(label("labDetails"), storeChosenText());
  EXPECT_TRUE(button("cmdClose").isVisible());
}

TEST_F(RecursiveSearch, ShowsWhatItWasAskedAndWhereItIs) {
  scratch.makeFolders("firefox/a");
  questions.answers = {Answer::Ok};
  search();
  EXPECT_EQ(fromQt(control<QLineEdit>(window, "txtPath").text()), scratch.text());
  EXPECT_EQ(fromQt(control<QLineEdit>(window, "txtFile").text()), u"cookies.sqlite");
  EXPECT_EQ(pumped, 3) << "once a folder";
  const Text separator(1, nativeSeparator());
  EXPECT_EQ(shownFolders[1], scratch.text() + separator);
  EXPECT_EQ(shownFolders[2], scratch.text("firefox") + separator);
}

TEST_F(RecursiveSearch, TheFirstOfTheWaitingFoldersIsTheOneBeingVisited) {
  scratch.makeFolders("firefox/a");
  scratch.makeFolders("autre");
  std::vector<QStringList> waiting;
  whilePumping = [&] {
    QStringList folders;
    const auto& list = control<QListWidget>(window, "List1");
    for (int row = 0; row < list.count(); ++row) {
      folders.append(list.item(row)->text().mid(toQt(scratch.text()).size()));
    }
    waiting.push_back(folders);
  };
  questions.answers = {Answer::Ok};
  search();
  const auto at = [](const char* text) { return QString::fromLatin1(text); };
  EXPECT_EQ(
      waiting,
      std::vector<QStringList>(
          {{at("/")}, {at("/autre/"), at("/firefox/")}, {at("/firefox/")}, {at("/firefox/a/")}}));
  EXPECT_EQ(control<QListWidget>(window, "List1").count(), 0);
}

TEST_F(RecursiveSearch, LiesInTheMiddleOfTheScreen) {
  questions.answers = {Answer::Ok};
  search();
  const QRect screen = window.screen()->availableGeometry();
  const QPoint off = window.frameGeometry().center() - screen.center();
  EXPECT_LT(std::abs(off.x()), 40);
  EXPECT_LT(std::abs(off.y()), 40);
}

TEST_F(RecursiveSearch, AMistypedFolderCanBeMendedAndSearchedWithTheReturnKey) {
  questions.answers = {Answer::Ok};
  window.search(scratch.text("missing"), u"cookies.sqlite");
  scratch.write("firefox/a/cookies.sqlite", "x");
  auto& folder = control<QLineEdit>(window, "txtPath");
  folder.setText(toQt(scratch.text()));
  QTest::keyClick(&folder, Qt::Key_Return);
  EXPECT_EQ(journal.back(), "chosen " + scratch.path("firefox/a/cookies.sqlite"));
}

TEST_F(RecursiveSearch, NoStoreEmptiesThePath) {
  questions.answers = {Answer::Ok};
  search();
  EXPECT_EQ(questions.boxes, std::vector<Box>{noCookieStoreBox()});
  EXPECT_EQ(settings.cookiesPath, u"");
  EXPECT_EQ(journal.back(), "not found");
  EXPECT_EQ(label("labNbre"), u"Résultat : 0fichier trouvé");
}

TEST_F(RecursiveSearch, ABrowserThatRanMeanwhileIsFoundByTheReturnKey) {
  questions.answers = {Answer::Ok};
  search();
  EXPECT_EQ(label("labDetails"), searchAgainText());
  EXPECT_EQ(window.focusWidget(), &button("cmdOk"));
  scratch.write("firefox/a/cookies.sqlite", "x");
  QTest::keyClick(&window, Qt::Key_Return);
  EXPECT_EQ(journal.back(), "chosen " + scratch.path("firefox/a/cookies.sqlite"));
  EXPECT_NE(label("labDetails"), searchAgainText());
}

TEST_F(RecursiveSearch, AFolderThatDoesNotExistStopsTheSearch) {
  questions.answers = {Answer::Ok};
  window.search(scratch.text("missing"), u"cookies.sqlite");
  EXPECT_EQ(questions.boxes, std::vector<Box>{startFolderMissingBox(scratch.text("missing"))});
  EXPECT_EQ(settings.cookiesPath, u"/ancien");
  EXPECT_EQ(journal.size(), 1u) << "only the box";
}

TEST_F(RecursiveSearch, OfSeveralStoresNoneIsChosenUntilOneIsClickedAndConfirmed) {
  writeTwoStores();
  questions.answers = {Answer::Ok};
  search();
  EXPECT_EQ(questions.boxes, std::vector<Box>{severalCookieStoresBox(2)});
  EXPECT_EQ(settings.cookiesPath, u"/ancien");
  EXPECT_EQ(label("labNbre"), u"Résultat : 2fichiers trouvés");
  ASSERT_EQ(results().count(), 2);
  EXPECT_EQ(window.focusWidget(), &results());
  EXPECT_TRUE(button("cmdClose").isVisible());

  journal.clear();
  questions.answers = {Answer::No};
  clickResult(1);
  const Text second = scratch.text("firefox/b/cookies.sqlite");
  EXPECT_EQ(questions.boxes.back(), confirmCookieStoreBox(second));
  EXPECT_EQ(settings.cookiesPath, second) << "whatever the answer";
  EXPECT_EQ(journal.size(), 1u) << "only the box";
  EXPECT_NE(label("labDetails"), storeChosenText());

  questions.answers = {Answer::Yes};
  clickResult(0);
  const Text first = scratch.text("firefox/a/cookies.sqlite");
  EXPECT_EQ(settings.cookiesPath, first);
  EXPECT_EQ(journal.back(), "chosen " + toUtf8(first));
  EXPECT_EQ(label("labDetails"), storeChosenText());
}

TEST_F(RecursiveSearch, TheReturnKeyChoosesInTheListToo) {
  writeTwoStores();
  questions.answers = {Answer::Ok, Answer::Yes};
  search();
  results().setFocus();
  results().setCurrentRow(1);
  QTest::keyClick(&results(), Qt::Key_Return);
  EXPECT_EQ(journal.back(), "chosen " + scratch.path("firefox/b/cookies.sqlite"));
}

TEST_F(RecursiveSearch, ASingleResultIsNotAskedForByAClick) {
  scratch.write("firefox/a/cookies.sqlite", "x");
  search();
  clickResult(0);
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(RecursiveSearch, EachSearchBeginsAnew) {
  writeTwoStores();
  questions.answers = {Answer::Ok};
  search();
  std::filesystem::remove_all(scratch.path("firefox/b"));
  button("cmdOk").click();
  EXPECT_EQ(results().count(), 1);
  EXPECT_EQ(label("labNbre"), u"Résultat : 1fichier trouvé");
  clickResult(0);
  EXPECT_EQ(questions.boxes.size(), 1u) << "the old permission to choose is gone";
}

TEST_F(RecursiveSearch, TheCurrentResultTellsItsSizeAndAge) {
  writeTwoStores();
  questions.answers = {Answer::Ok};
  search();
  EXPECT_TRUE(label("labDetails").starts_with(u"1 octets, dernière écriture le "));
  results().setCurrentRow(1);
  EXPECT_TRUE(label("labDetails").starts_with(u"2,00 Ko, dernière écriture le "));
}

TEST_F(RecursiveSearch, CloseShowsTheSplashAndHides) {
  scratch.write("firefox/a/cookies.sqlite", "x");
  search();
  journal.clear();
  button("cmdClose").click();
  EXPECT_EQ(journal, Journal{"about"});
  EXPECT_FALSE(window.isVisible());
}

TEST_F(RecursiveSearch, ClosingStopsASearchThatRuns) {
  writeTwoStores();
  whilePumping = [this] {
    if (pumped == 2) QTest::keyClick(&window, Qt::Key_Escape);
  };
  search();
  EXPECT_EQ(pumped, 2);
  EXPECT_EQ(journal, Journal{"about"}) << "no outcome is told";
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(settings.cookiesPath, u"/ancien");
}

TEST_F(RecursiveSearch, ASecondSearchDoesNotBeginInsideTheFirst) {
  scratch.write("firefox/a/cookies.sqlite", "x");
  whilePumping = [this] { button("cmdOk").click(); };
  search();
  EXPECT_EQ(results().count(), 1);
  EXPECT_EQ(pumped, 3);
}

TEST_F(RecursiveSearch, CloseIsNotOfferedBeforeThereIsAnOutcome) {
  scratch.write("firefox/a/cookies.sqlite", "x");
  bool offered = false;
  whilePumping = [&] { offered = offered || button("cmdClose").isVisible(); };
  search();
  EXPECT_FALSE(offered);
}
