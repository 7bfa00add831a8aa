// SPDX-License-Identifier: GPL-3.0-or-later
// The synchronisation window on real folders, as its user has it.
#include <QAbstractButton>
#include <QClipboard>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>
#include <chrono>
#include <cstdlib>

#include "config/ConfigFile.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "sync/SyncTexts.h"
#include "sync/frmSynchro.h"
#include "sync/qt/DefilerGrille.h"
#include "sync/qt/modControlBox.h"
#include "ui/UiMain.h"
#include "windows/qt/Drawing.h"

namespace {

using Lines = std::vector<std::string>;

constexpr auto kOlder = std::chrono::hours(-24);

class Synchro : public testing::Test {
 protected:
  Synchro() {
    scratch.write("nav/res_css/js/shortQrCode.js", "live");
    scratch.makeFolders("nav/user_datas");
    scratch.makeFolders("stick");
    age("nav/res_css/js/shortQrCode.js");
    settings.shortcutPath = scratch.text("nav/res_css/js/shortQrCode.js");
    settings.backupPath = scratch.text("stick") + u"/";
    window = std::make_unique<frmSynchro>(surroundings());
  }

  SynchroSurroundings surroundings() {
    return {.settings = settings,
            .programFolder = programFolder,
            .locale = locale,
            .shell = shell,
            .questions = questions,
            .pumpEvents =
                [this] {
                  ++pumps;
                  QCoreApplication::processEvents();
                  if (whilePumping) whilePumping();
                },
            .trace = [this](const Text& line) { traced.push_back(toUtf8(line)); },
            .readShortcutsAgain = [this] { journal.push_back("read again"); },
            .restartWatching = [this] { journal.push_back("restart"); }};
  }

  void open() {
    window->Form_Load();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }

  // Makes a file look `by` younger (older, when negative).
  void age(const char* name, std::chrono::hours by = kOlder) {
    const std::filesystem::path path(scratch.path(name));
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + by);
  }

  // One difference of each kind.
  void writeFourKinds() {
    scratch.write("nav/user_datas/docs/neuf.txt", "0");
    scratch.write("nav/user_datas/forth.txt", "new");
    scratch.write("stick/forth.txt", "old");
    age("stick/forth.txt");
    scratch.write("stick/clé/neuf.txt", "2");
    scratch.write("stick/back.txt", "new");
    scratch.write("nav/user_datas/back.txt", "old");
    age("nav/user_datas/back.txt");
    scratch.write("stick/shortQrCode.js", "live");
    age("stick/shortQrCode.js");
  }

  template <class Control>
  Control& find(const char* name) {
    return control<Control>(*window, name);
  }
  QTableView& grid() { return find<QTableView>("Grid"); }
  QProgressBar& bar() { return find<QProgressBar>("ProgressBar"); }
  QLineEdit& path() { return find<QLineEdit>("txtPath"); }
  std::string label(const char* name) { return find<QLabel>(name).text().toStdString(); }
  void click(const char* name) { find<QAbstractButton>(name).click(); }
  bool isShown(const char* name) { return find<QWidget>(name).isVisible(); }

  std::string cell(int row, int column) {
    return grid().model()->index(row - 1, column).data().toString().toStdString();
  }
  // Each row as its code and its paths.
  Lines rows() {
    Lines lines;
    for (int row = 1; row <= grid().model()->rowCount(); ++row) {
      lines.push_back(cell(row, 0) + "|" + cell(row, 1) + "|" + cell(row, 5));
    }
    return lines;
  }
  bool isBold(int row, int column) {
    return grid().model()->index(row - 1, column).data(Qt::FontRole).value<QFont>().bold();
  }

  void notch(QWidget& target, int angle) {
    QWheelEvent event(QPointF(5, 5), target.mapToGlobal(QPointF(5, 5)), {}, {0, angle},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&target, &event);
  }
  int firstRow() { return grid().verticalScrollBar()->value(); }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Settings settings;
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};
  Lines traced;
  int pumps = 0;
  std::function<void()> whilePumping;
  std::unique_ptr<frmSynchro> window;
};

struct Place {
  const char* control;
  int left;
  int top;  // -1: any
};

}  // namespace

// --- Opening ------------------------------------------------------------------------------------

TEST_F(Synchro, OpensWithItsTexts) {
  open();
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Tavrollo : Synchronisation de la sauvegarde"));
  struct Row {
    const char* control;
    const char* text;
    const char* toolTip;
  };
  const Row labels[] = {{"Label1", "Chemin de la sauvegarde", ""},
                        {"Label2", "Filtrer les fichiers", ""},
                        {"labDir_0", "<  Cliquez pour comparer les fichiers.", ""},
                        {"labNbre_1", "Résultat : fichier(s) trouvé(s)", ""},
                        {"labNbre_2", "Résultat : fichier(s) trouvé(s)", ""},
                        {"labIdem", "", ""}};
  for (const Row& row : labels) EXPECT_EQ(label(row.control), row.text) << row.control;
  const Row buttons[] = {{"cmdPath", "", "Choisir le dossier de sauvegarde"},
                         {"cmdOpen", "", "ouvrir le dossier de sauvegarde"},
                         {"cmdCompare", "Comparer les fichiers", ""},
                         {"cmdSynchro", "Synchroniser les fichiers", ""},
                         {"cmdClose", "Fermer", "Fermer cette fenêtre"}};
  for (const Row& row : buttons) {
    EXPECT_EQ(find<QAbstractButton>(row.control).text().toStdString(), row.text) << row.control;
    EXPECT_EQ(find<QWidget>(row.control).toolTip().toStdString(), row.toolTip) << row.control;
  }
  EXPECT_EQ(find<QLineEdit>("txtFiltre").text(), QStringLiteral("*.*"));
  EXPECT_EQ(find<QLineEdit>("txtFiltre").toolTip(),
            QStringLiteral("Filtre : exemple *.doc (* est le jocker) défaut : *.*"));
  EXPECT_FALSE(find<QAbstractButton>("cmdPath").icon().isNull());
  EXPECT_FALSE(find<QAbstractButton>("cmdOpen").icon().isNull());
  const QImage ours = find<QLabel>("Picture1_2").pixmap(Qt::ReturnByValue).toImage();
  const QImage theirs = find<QLabel>("Picture1_3").pixmap(Qt::ReturnByValue).toImage();
  EXPECT_FALSE(ours.isNull());
  EXPECT_FALSE(theirs.isNull());
  EXPECT_NE(ours, theirs);
}

TEST_F(Synchro, BeforeItsLoadThePathIsTheDrawnOne) {
  EXPECT_EQ(path().text(), QStringLiteral("c:\\"));
  EXPECT_FALSE(find<QWidget>("cmdOpen").isVisibleTo(window.get()));
}

TEST_F(Synchro, OpensInTheMiddleOfTheScreenWithoutAnyRows) {
  open();
  const QPoint off =
      window->frameGeometry().center() - window->screen()->availableGeometry().center();
  EXPECT_LT(std::abs(off.x()), 40);
  EXPECT_LT(std::abs(off.y()), 40);
  EXPECT_EQ(rows(), Lines{"||"}) << "one empty row";
  EXPECT_FALSE(isShown("cmdSynchro"));
  EXPECT_FALSE(isShown("ProgressBar"));
  EXPECT_TRUE(isShown("cmdOpen"));
  EXPECT_TRUE(window->isOpen());
  EXPECT_TRUE(journal.empty());
}

TEST_F(Synchro, ItsLoadPutsItIntoTheMiddleBeforeTheDesktopPlacesIt) {
  window->move(0, 0);
  window->Form_Load();
  const QPoint off = window->geometry().center() - window->screen()->availableGeometry().center();
  EXPECT_LT(std::abs(off.x()), 40);
  EXPECT_LT(std::abs(off.y()), 40);
}

TEST_F(Synchro, ShowsTheBackupFolderWithASeparator) {
  settings.backupPath = scratch.text("stick");
  open();
  EXPECT_EQ(fromQt(path().text()), scratch.text("stick") + u"/");
  EXPECT_EQ(settings.backupPath, scratch.text("stick")) << "only the box shows it so";
}

TEST_F(Synchro, AMissingOrTooShortBackupFolderIsAskedForAtOnce) {
  ::setenv("HOMEDRIVE", scratch.path("stick").c_str(), 1);
  for (const Text& before : {scratch.text("absent"), Text(u".."), Text()}) {
    settings.backupPath = before;
    questions.folders = {scratch.text("nav")};
    questions.folderRequests.clear();
    frmSynchro other(surroundings());
    other.Form_Load();
    const FolderRequest asked{.title = u"Synchroniser : Répertoire de la sauvegarde :",
                              .startFolder = scratch.text("stick") + u"/"};
    EXPECT_EQ(questions.folderRequests, std::vector<FolderRequest>{asked});
    EXPECT_EQ(settings.backupPath, scratch.text("nav") + u"/");
  }
  settings.backupPath = scratch.text("absent");
  questions.folders = {std::nullopt};
  frmSynchro other(surroundings());
  other.Form_Load();
  EXPECT_EQ(settings.backupPath, scratch.text("stick") + u"/") << "cancelled: the home drive";
  EXPECT_EQ(fromQt(control<QLineEdit>(other, "txtPath").text()), settings.backupPath);
  ::unsetenv("HOMEDRIVE");
}

// --- Layout -------------------------------------------------------------------------------------

TEST_F(Synchro, ControlsStandWhereTheyWereDrawn) {
  open();
  EXPECT_EQ(window->size(), QSize(1021, 566));
  const Place places[] = {{"labNbre_2", 648, -1}, {"Picture1_1", 592, -1}, {"Picture1_3", 600, -1},
                          {"labDir_2", 600, -1},  {"cmdClose", 944, 528},  {"labIdem", 520, 536}};
  for (const Place& place : places) {
    EXPECT_EQ(find<QWidget>(place.control).x(), place.left) << place.control;
    if (place.top >= 0) {
      EXPECT_EQ(find<QWidget>(place.control).y(), place.top) << place.control;
    }
  }
  EXPECT_EQ(grid().size(), QSize(1009, 337));
  EXPECT_EQ(grid().columnWidth(1), 307);
  EXPECT_EQ(grid().columnWidth(5), 307);
}

TEST_F(Synchro, AWiderAndHigherWindowSharesWhatItGained) {
  open();
  const int date = grid().columnWidth(2);
  window->resize(1021 + 100, 566 + 60);
  ASSERT_TRUE(waitUntil([&] { return grid().width() == 1109; }));
  const Place places[] = {{"labNbre_2", 698, -1}, {"Picture1_1", 642, -1}, {"Picture1_3", 650, -1},
                          {"labDir_2", 650, -1},  {"cmdClose", 1044, 588}, {"labIdem", 620, 596}};
  for (const Place& place : places) {
    EXPECT_EQ(find<QWidget>(place.control).x(), place.left) << place.control;
    if (place.top >= 0) {
      EXPECT_EQ(find<QWidget>(place.control).y(), place.top) << place.control;
    }
  }
  EXPECT_EQ(grid().height(), 397);
  EXPECT_EQ(grid().columnWidth(1), 357);
  EXPECT_EQ(grid().columnWidth(5), 357);
  EXPECT_EQ(grid().columnWidth(2), date);
  // What has no place of its own goes from edge to edge.
  for (const char* right : {"top", "Picture1_1", "Grid"}) {
    EXPECT_EQ(find<QWidget>(right).geometry().right(), 1121 - 6 - 1) << right;
  }
  EXPECT_EQ(find<QWidget>("Picture1_0").width(), find<QWidget>("Picture1_1").width());
  EXPECT_EQ(find<QWidget>("labDir_2").geometry().right(),
            find<QWidget>("Picture1_1").geometry().right() - 8);
}

TEST_F(Synchro, TheWindowIsNeverSmallerThanItWasDrawn) {
  open();
  window->resize(400, 300);
  EXPECT_EQ(window->size(), QSize(1021, 566));
  window->resize(400, 700);
  EXPECT_EQ(window->width(), 1021);
}

TEST_F(Synchro, TheGridHasItsHeadingsAndWidths) {
  open();
  const char* headings[] = {".", "Fichers Source Tavrollo (user_datas)", "Date", "Poids",
                            "",  "Fichiers de la sauvegarde (USB...)",   "Date", "Poids"};
  const int widths[] = {0, 307, 109, 60, 35, 307, 109, 60};
  ASSERT_EQ(grid().model()->columnCount(), 8);
  for (int column = 0; column < 8; ++column) {
    EXPECT_EQ(grid().model()->headerData(column, Qt::Horizontal).toString().toStdString(),
              headings[column]);
    EXPECT_EQ(grid().columnWidth(column), widths[column]) << column;
  }
  EXPECT_TRUE(grid().isColumnHidden(0));
}

TEST_F(Synchro, SizesStandAtTheRightUnderTheirHeadings) {
  scratch.write("nav/user_datas/a", "1");
  open();
  click("cmdCompare");
  for (int column = 1; column < 8; ++column) {
    const bool isSize = column == 3 || column == 7;
    const auto expected = Qt::AlignVCenter | (isSize ? Qt::AlignRight : Qt::AlignLeft);
    const QAbstractItemModel& model = *grid().model();
    EXPECT_EQ(
        model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(),
        expected)
        << column;
    EXPECT_EQ(model.index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>(), expected)
        << column;
  }
}

TEST_F(Synchro, DatesAndSizesAreReadWholeInTheirColumns) {
  open();
  const QFontMetrics metrics(grid().font());
  EXPECT_LE(metrics.horizontalAdvance(QStringLiteral("28/12/2026 23:59:58")),
            grid().columnWidth(2) - 6);
  EXPECT_LE(metrics.horizontalAdvance(QStringLiteral("999,99 Ko")), grid().columnWidth(3) - 6);
}

TEST_F(Synchro, TheTabKeyGoesThroughTheControlsInOrder) {
  scratch.write("nav/user_datas/a", "1");
  open();
  click("cmdCompare");
  path().setFocus();
  for (const char* next :
       {"cmdPath", "cmdOpen", "txtFiltre", "cmdCompare", "cmdSynchro", "Grid", "cmdClose"}) {
    QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window->focusWidget()->objectName(), QLatin1String(next));
  }
}

TEST_F(Synchro, ComparingLeavesTheFocusWhereItWas) {
  scratch.write("nav/user_datas/a", "1");
  open();
  QTest::keyClick(&path(), Qt::Key_Tab);
  find<QWidget>("cmdCompare").setFocus();
  QTest::keyClick(window->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(rows().size(), 2u);
  EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("cmdCompare"));
}

TEST_F(Synchro, AFocusThatMovedWhileItComparedStaysThere) {
  open();
  find<QWidget>("cmdCompare").setFocus();
  whilePumping = [&] { find<QWidget>("txtFiltre").setFocus(); };
  click("cmdCompare");
  EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("txtFiltre"));
}

TEST_F(Synchro, EveryComparisonLetsTheWindowBePaintedAtItsBeginning) {
  open();
  for (int i = 0; i < 20; ++i) {
    pumps = 0;
    click("cmdCompare");
    EXPECT_GT(pumps, 0) << i;
  }
}

TEST_F(Synchro, FindingDifferencesMovesNoOtherControl) {
  scratch.write("nav/user_datas/a", "1");
  open();
  QCoreApplication::processEvents();
  const QRect button = find<QWidget>("cmdPath").geometry();
  const QRect box = path().geometry();
  click("cmdCompare");
  QCoreApplication::processEvents();
  EXPECT_EQ(find<QWidget>("cmdPath").geometry(), button);
  EXPECT_EQ(path().geometry(), box);
  EXPECT_EQ(path().x(), find<QWidget>("txtFiltre").x());
}

// --- Leaving ------------------------------------------------------------------------------------

TEST_F(Synchro, OnlyItsButtonLeavesTheWindow) {
  open();
  EXPECT_FALSE(window->windowFlags().testFlag(Qt::WindowCloseButtonHint));
  EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_TRUE(window->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
  QTest::keyClick(window.get(), Qt::Key_Escape);
  QTest::keyClick(window.get(), Qt::Key_F4, Qt::AltModifier);
  window->close();
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->isOpen());
  click("cmdClose");
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(window->isOpen());
}

TEST_F(Synchro, LeavingTakesTheTravellingTableAwayAndRestartsTheWatching) {
  open();
  click("cmdCompare");
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "live");
  click("cmdClose");
  EXPECT_FALSE(std::filesystem::exists(scratch.path("nav/user_datas/shortQrCode.js")));
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "live");
  EXPECT_EQ(journal, Journal{"restart"});
}

TEST_F(Synchro, LeavingWithoutATravellingTableIsSilent) {
  open();
  click("cmdClose");
  EXPECT_EQ(journal, Journal{"restart"});
}

TEST_F(Synchro, LeavingKeepsTheTravellingTableWhileTheLiveOneIsMissing) {
  scratch.write("nav/user_datas/shortQrCode.js", "the last");
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  open();
  click("cmdClose");
  EXPECT_EQ(scratch.read("nav/user_datas/shortQrCode.js"), "the last");
  EXPECT_EQ(journal, Journal{"restart"});
}

TEST_F(Synchro, EnleverFermerIsForWindows) {
  QWidget alone;
  QWidget part(&alone);
  EXPECT_TRUE(EnleverFermer(alone));
  EXPECT_FALSE(EnleverFermer(part));
}

// --- The backup folder --------------------------------------------------------------------------

TEST_F(Synchro, AChosenFolderIsShownAndWrittenAtOnce) {
  open();
  scratch.makeFolders("Sauvegarde");
  questions.folders = {scratch.text("Sauvegarde")};
  click("cmdPath");
  EXPECT_EQ(questions.folderRequests.back().startFolder, scratch.text("stick") + u"/");
  EXPECT_EQ(fromQt(path().text()), scratch.text("Sauvegarde") + u"/");
  EXPECT_EQ(settings.backupPath, scratch.text("Sauvegarde") + u"/");
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
  EXPECT_NE(scratch.read("config.cfg").find(scratch.path("Sauvegarde") + "/"), std::string::npos);
}

TEST_F(Synchro, CancellingTheChoiceKeepsTheFolder) {
  open();
  questions.folders = {std::nullopt};
  click("cmdPath");
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
  EXPECT_EQ(settings.backupPath, scratch.text("stick") + u"/");
  EXPECT_EQ(fromQt(path().text()), scratch.text("stick") + u"/");
}

TEST_F(Synchro, TheChoiceBeginsAtTheLastChosenFolderAndNotAtATypedOne) {
  scratch.makeFolders("autre");
  open();
  path().setText(toQt(scratch.text("autre")));
  questions.folders = {std::nullopt};
  click("cmdPath");
  EXPECT_EQ(questions.folderRequests.back().startFolder, scratch.text("stick") + u"/");
  EXPECT_EQ(settings.backupPath, scratch.text("stick") + u"/") << "cancelled";
  EXPECT_EQ(fromQt(path().text()), scratch.text("stick") + u"/");
  EXPECT_EQ(scratch.read("config.cfg"), configBytes(settings, locale));
}

TEST_F(Synchro, OpensTheBackupFolder) {
  open();
  click("cmdOpen");
  EXPECT_EQ(journal, Journal{"start explorer " + scratch.path("stick") + "/"});
}

TEST_F(Synchro, TheFolderThatWasChosenIsOpenedAndNotTheTypedOne) {
  scratch.makeFolders("autre");
  open();
  path().setText(toQt(scratch.text("autre")));
  click("cmdOpen");
  EXPECT_EQ(journal, Journal{"start explorer " + scratch.path("stick") + "/"});
}

TEST_F(Synchro, ABackupFolderThatIsGoneIsNotOpened) {
  open();
  std::filesystem::remove(scratch.path("stick"));
  questions.answers = {Answer::Ok};
  click("cmdOpen");
  EXPECT_EQ(questions.boxes, std::vector<Box>{backupFolderMissingBox(settings.backupPath)});
  EXPECT_EQ(journal, Journal{"ask Tavrollo : Synchroniser"});
}

TEST_F(Synchro, WhatIsNoBackupFolderIsNotOpenedThoughSomethingIsThere) {
  open();
  scratch.write("fichier", "no folder");
  for (const Text& there : {Text(u".."), scratch.text("fichier")}) {
    settings.backupPath = there;
    questions.answers = {Answer::Ok};
    questions.boxes.clear();
    click("cmdOpen");
    EXPECT_EQ(questions.boxes, std::vector<Box>{backupFolderMissingBox(there)});
  }
  EXPECT_EQ(journal, Journal(2, "ask Tavrollo : Synchroniser")) << "nothing was started";
}

TEST_F(Synchro, AnExplorerThatCannotBeStartedIsToldAbout) {
  open();
  shell.failure = {.number = 53, .description = u"introuvable"};
  questions.answers = {Answer::Ok};
  click("cmdOpen");
  EXPECT_EQ(questions.boxes, std::vector<Box>{errorBox(u"cmdOpen_Click", u"introuvable")});
}

// --- Comparing ----------------------------------------------------------------------------------

TEST_F(Synchro, AllFourKindsOfDifferencesAreShown) {
  writeFourKinds();
  open();
  click("cmdCompare");
  EXPECT_EQ(rows(), (Lines{"3|back.txt|back.txt", "1|forth.txt|forth.txt", "0|docs/neuf.txt|",
                           "2||clé/neuf.txt"}));
  EXPECT_TRUE(isBold(1, 1));
  EXPECT_FALSE(isBold(1, 5));
  EXPECT_TRUE(isBold(2, 5));
  EXPECT_FALSE(isBold(2, 1));
  EXPECT_FALSE(isBold(3, 1));
  EXPECT_FALSE(isBold(4, 5));
  EXPECT_EQ(cell(1, 3), "3 o");
  EXPECT_EQ(cell(3, 7), "");
  EXPECT_EQ(cell(1, 2).size(), std::string("28/12/2026 23:59:58").size());
  EXPECT_TRUE(isShown("Grid"));
  EXPECT_TRUE(isShown("cmdSynchro"));
  EXPECT_EQ(label("labIdem"), "Cliquez pour fermer sans synchroniser.");
  EXPECT_EQ(label("labDir_0"), "Recherche terminée");
  EXPECT_EQ(label("labNbre_1"), "Résultat : 4 fichiers trouvés");
  EXPECT_EQ(label("labNbre_2"), "Résultat : 4 fichiers trouvés");
  EXPECT_EQ(label("labDir_1"), scratch.path("nav/user_datas/docs") + "/") << "the last folder";
  EXPECT_EQ(label("labDir_2"), scratch.path("stick/clé") + "/");
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(Synchro, EveryKindHasItsArrowInTheMiddleOfItsCell) {
  writeFourKinds();
  open();
  click("cmdCompare");
  const char* const names[] = {"flecheG", "flecheD", "flecheDn", "flecheGn"};
  std::vector<QImage> arrows;
  for (int row = 0; row < 4; ++row) {
    const auto icon = grid().model()->index(row, 4).data(Qt::DecorationRole).value<QIcon>();
    ASSERT_FALSE(icon.isNull()) << row;
    arrows.push_back(icon.pixmap(16, 16).toImage());
    const QIcon wanted = drawingIcon(QStringLiteral("arrows/") + QLatin1String(names[row]));
    ASSERT_FALSE(wanted.isNull()) << names[row];
    EXPECT_EQ(arrows.back(), wanted.pixmap(16, 16).toImage()) << names[row];
    for (int before = 0; before < row; ++before) {
      EXPECT_NE(arrows[static_cast<std::size_t>(before)], arrows.back());
    }
    EXPECT_TRUE(grid().model()->index(row, 1).data(Qt::DecorationRole).isNull());
  }
  // The arrow's colours lie evenly about the middle of the cell.
  const QRect cellRect = grid().visualRect(grid().model()->index(0, 4));
  const QImage image = grid().viewport()->grab(cellRect).toImage();
  int left = image.width();
  int right = -1;
  for (int y = 0; y < image.height() - 1; ++y) {
    for (int x = 0; x < image.width() - 1; ++x) {
      if (image.pixelColor(x, y).hslSaturation() < 100) continue;
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }
  ASSERT_GE(right, left);
  EXPECT_NEAR((left + right) / 2.0, image.width() / 2.0, 2.0);
}

TEST_F(Synchro, TheTableIsATableAndNoTree) {
  writeFourKinds();
  open();
  click("cmdCompare");
  const QAbstractItemModel& model = *grid().model();
  const QModelIndex cell = model.index(0, 1);
  EXPECT_EQ(model.rowCount(cell), 0);
  EXPECT_EQ(model.columnCount(cell), 0);
  EXPECT_FALSE(model.data(QModelIndex()).isValid());
  EXPECT_FALSE(model.headerData(1, Qt::Vertical).isValid());
}

TEST_F(Synchro, IdenticalSidesAreToldAndNothingIsOffered) {
  open();
  scratch.write("stick/shortQrCode.js", "live");
  age("stick/shortQrCode.js");
  click("cmdCompare");
  EXPECT_EQ(label("labIdem"), "Les 2 côtés sont identiques. Rien à synchroniser.");
  EXPECT_FALSE(isShown("Grid"));
  EXPECT_FALSE(isShown("cmdSynchro"));
  EXPECT_EQ(label("labNbre_1"), "Résultat : 1 fichier trouvé");
}

TEST_F(Synchro, TheFilterIsForFilesAndNotForFolders) {
  scratch.write("nav/user_datas/a.txt", "1");
  scratch.write("nav/user_datas/docs/b.doc", "1");
  open();
  find<QLineEdit>("txtFiltre").setText(QStringLiteral("*.doc"));
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"0|docs/b.doc|"});
}

TEST_F(Synchro, TheTypedPathIsComparedWith) {
  scratch.write("autre/c", "1");
  open();
  path().setText(toQt(scratch.text("autre")));
  click("cmdCompare");
  EXPECT_EQ(rows(), (Lines{"0|shortQrCode.js|", "2||c"}));
  EXPECT_EQ(settings.backupPath, scratch.text("stick") + u"/") << "only the dialog's choice stays";
}

TEST_F(Synchro, WhatIsPastedEndsWithItsFirstLine) {
  scratch.write("autre/c.doc", "1");
  scratch.write("autre/c.txt", "1");
  open();
  const auto paste = [this](const char* name, const QString& text) {
    QApplication::clipboard()->setText(text);
    find<QLineEdit>(name).selectAll();
    QTest::keyClick(&find<QLineEdit>(name), Qt::Key_V, Qt::ControlModifier);
  };
  paste("txtPath", toQt(scratch.text("autre")) + QStringLiteral("\r\n"));
  paste("txtFiltre", QStringLiteral("*.doc\n*.txt\n"));
  EXPECT_EQ(fromQt(path().text()), scratch.text("autre"));
  EXPECT_EQ(find<QLineEdit>("txtFiltre").text(), QStringLiteral("*.doc"));
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"2||c.doc"});
}

TEST_F(Synchro, AChosenFolderWithALineEndInItsNameStaysWhatItIs) {
  scratch.write("deux\nlignes/c", "1");
  open();
  questions.folders = {scratch.text("deux\nlignes")};
  click("cmdPath");
  click("cmdCompare");
  EXPECT_EQ(rows(), (Lines{"0|shortQrCode.js|", "2||c"}));
}

TEST_F(Synchro, AMissingBackupIsToldAndItsSideIsEmpty) {
  open();
  path().setText(toQt(scratch.text("absent")));
  questions.answers = {Answer::Ok};
  click("cmdCompare");
  EXPECT_EQ(questions.boxes, std::vector<Box>{folderMissingBox(scratch.text("absent") + u"/")});
  EXPECT_EQ(rows(), Lines{"0|shortQrCode.js|"});
  EXPECT_EQ(label("labDir_2"), scratch.path("absent") + "/");
  EXPECT_EQ(label("labNbre_2"), "Résultat : fichier(s) trouvé(s)");
}

TEST_F(Synchro, OfAMissingBackupNothingIsShownFromTheComparisonBefore) {
  scratch.write("stick/docs/a", "1");
  open();
  click("cmdCompare");
  EXPECT_EQ(label("labDir_2"), scratch.path("stick/docs") + "/");
  path().setText(toQt(scratch.text("absent")));
  questions.answers = {Answer::Ok};
  click("cmdCompare");
  EXPECT_EQ(label("labDir_2"), scratch.path("absent") + "/");
  EXPECT_EQ(label("labNbre_2"), "Résultat : fichier(s) trouvé(s)");
}

TEST_F(Synchro, ABackupAmongTheUsersFilesIsRefused) {
  writeFourKinds();
  open();
  click("cmdCompare");
  path().setText(toQt(scratch.text("nav/user_datas/docs")));
  questions.answers = {Answer::Ok};
  click("cmdCompare");
  ASSERT_EQ(questions.boxes.size(), 1u);
  EXPECT_EQ(questions.boxes[0], foldersOverlapBox(scratch.text("nav/user_datas/docs") + u"/"));
  EXPECT_FALSE(isShown("Grid"));
  EXPECT_FALSE(isShown("cmdSynchro"));
  EXPECT_EQ(label("labIdem"), "");
  EXPECT_TRUE(find<QWidget>("cmdClose").isEnabled());
}

TEST_F(Synchro, WithoutAWebApplicationNothingIsComparedMadeOrDeleted) {
  settings.shortcutPath = scratch.text("shortQrCode.js");
  scratch.write("shortQrCode.js", "live");
  scratch.write("stick/a", "1");
  scratch.write("here/user_datas/shortQrCode.js", "another's");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(scratch.path("here"));
  open();
  questions.answers = {Answer::Ok};
  click("cmdCompare");
  EXPECT_EQ(questions.boxes, std::vector<Box>{folderMissingBox(u"user_datas/")});
  EXPECT_EQ(traced, Lines{toUtf8(kNoWebRoot)});
  EXPECT_EQ(label("labIdem"), "");
  EXPECT_FALSE(isShown("Grid"));
  EXPECT_FALSE(isShown("cmdSynchro"));
  click("cmdClose");
  std::filesystem::current_path(before);
  EXPECT_FALSE(window->isOpen());
  EXPECT_EQ(scratch.read("here/user_datas/shortQrCode.js"), "another's");
  EXPECT_EQ(scratch.namesIn("here"), Lines{"user_datas"});
  EXPECT_EQ(scratch.namesIn("stick"), Lines{"a"});
}

TEST_F(Synchro, AMissingShortcutTableIsToldAndTheComparisonGoesOn) {
  std::filesystem::remove(scratch.path("nav/res_css/js/shortQrCode.js"));
  scratch.write("nav/user_datas/a", "1");
  open();
  questions.answers = {Answer::Ok};
  click("cmdCompare");
  EXPECT_EQ(questions.boxes, std::vector<Box>{shortcutCopyFailedBox()});
  EXPECT_EQ(rows(), Lines{"0|a|"});
}

TEST_F(Synchro, WhileItComparesNothingElseIsBegun) {
  writeFourKinds();
  open();
  click("cmdCompare");
  bool looked = false;
  whilePumping = [&] {
    looked = true;
    for (const char* name :
         {"cmdPath", "txtPath", "cmdClose", "labNbre_1", "labNbre_2", "cmdCompare"}) {
      EXPECT_FALSE(find<QWidget>(name).isEnabled()) << name;
    }
    EXPECT_TRUE(find<QWidget>("cmdOpen").isEnabled());
    EXPECT_TRUE(find<QWidget>("txtFiltre").isEnabled());
    EXPECT_FALSE(isShown("Grid"));
    EXPECT_FALSE(isShown("cmdSynchro"));
    EXPECT_EQ(label("labIdem"), "");
    click("cmdCompare");
    click("cmdClose");
    window->close();
    EXPECT_TRUE(window->isOpen());
  };
  click("cmdCompare");
  EXPECT_TRUE(looked);
  for (const char* name : {"cmdPath", "txtPath", "cmdClose", "labNbre_1", "labNbre_2", "cmdCompare",
                           "cmdSynchro", "txtFiltre"}) {
    EXPECT_TRUE(find<QWidget>(name).isEnabled()) << name;
  }
  EXPECT_EQ(rows().size(), 4u);
}

TEST_F(Synchro, WhileItListsFolderAndCountAreShown) {
  scratch.write("nav/user_datas/a", "1");
  open();
  click("cmdCompare");
  std::vector<Lines> shown;
  whilePumping = [&] {
    shown.push_back({label("labDir_1"), label("labNbre_1"), label("labDir_2"), label("labNbre_2")});
  };
  click("cmdCompare");
  ASSERT_FALSE(shown.empty());
  EXPECT_EQ(shown.front(),
            (Lines{scratch.path("nav/user_datas") + "/", "Résultat : 0 fichier trouvé", "",
                   "Résultat : fichier(s) trouvé(s)"}));
}

TEST_F(Synchro, WhatCouldNotBeAskedIsCountedInTheWindow) {
  scratch.write("nav/user_datas/docs/a", "1");
  scratch.makeFolders("ailleurs");
  std::filesystem::create_directory_symlink(scratch.path("ailleurs"), scratch.path("stick/docs"));
  open();
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"0|shortQrCode.js|"});
  EXPECT_EQ(label("labReport"), toUtf8(notComparedLine(1)));
  EXPECT_FALSE(traced.empty());
  std::filesystem::remove(scratch.path("stick/docs"));
  click("cmdCompare");
  EXPECT_EQ(label("labReport"), "");
}

TEST_F(Synchro, WithoutRowsWhatCouldNotBeReadIsCountedAndNothingIsCalledIdentical) {
  scratch.write("stick/shortQrCode.js", "live");
  age("stick/shortQrCode.js");
  std::filesystem::create_symlink("nowhere", scratch.path("nav/user_datas/a"));
  open();
  click("cmdCompare");
  EXPECT_EQ(label("labIdem"), "");
  EXPECT_EQ(label("labReport"), "Synchronisation : 1 non comparé");
  EXPECT_EQ(label("labDir_0"), "Recherche terminée");
  EXPECT_FALSE(isShown("Grid"));
  EXPECT_FALSE(isShown("cmdSynchro"));
  std::filesystem::remove(scratch.path("nav/user_datas/a"));
  click("cmdCompare");
  EXPECT_EQ(label("labIdem"), "Les 2 côtés sont identiques. Rien à synchroniser.");
  EXPECT_EQ(label("labReport"), "");
}

TEST_F(Synchro, TheTableShowsTheLastComparison) {
  scratch.write("nav/user_datas/a", "1");
  scratch.write("stick/shortQrCode.js", "live");
  age("stick/shortQrCode.js");
  open();
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"0|a|"});
  std::filesystem::rename(scratch.path("nav/user_datas/a"), scratch.path("nav/user_datas/b"));
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"0|b|"});
  EXPECT_EQ(grid().model()->index(0, 1).data(Qt::ToolTipRole).toString(), QStringLiteral("b"));
}

TEST_F(Synchro, ThousandsOfFoldersDoNotMakeThousandsOfPauses) {
  for (int i = 0; i < 300; ++i) scratch.makeFolders("nav/user_datas/d" + std::to_string(i));
  open();
  pumps = 0;
  QElapsedTimer timer;
  timer.start();
  click("cmdCompare");
  EXPECT_GT(pumps, 0);
  EXPECT_LE(pumps, timer.elapsed() / 15 + 1);
}

// --- Synchronising ------------------------------------------------------------------------------

TEST_F(Synchro, ARoundTripBringsBothSidesInStep) {
  writeFourKinds();
  open();
  click("cmdCompare");
  click("cmdSynchro");
  EXPECT_EQ(scratch.read("stick/docs/neuf.txt"), "0");
  EXPECT_EQ(scratch.read("stick/forth.txt"), "new");
  EXPECT_EQ(scratch.read("nav/user_datas/clé/neuf.txt"), "2");
  EXPECT_EQ(scratch.read("nav/user_datas/back.txt"), "new");
  EXPECT_EQ(label("labDir_0"), "Synchro terminée !");
  EXPECT_EQ(label("labIdem"), "Les 2 côtés sont identiques. Plus rien à synchroniser.");
  EXPECT_EQ(label("labReport"), toUtf8(copiedLine(4, 0)));
  EXPECT_FALSE(isShown("Grid"));
  EXPECT_FALSE(isShown("cmdSynchro"));
  EXPECT_FALSE(isShown("ProgressBar"));
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_TRUE(journal.empty()) << "the live table is what it was";
  EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("cmdClose"));
}

TEST_F(Synchro, ARestoredShortcutTableIsReadAgain) {
  scratch.write("stick/shortQrCode.js", "from the backup");
  open();
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"3|shortQrCode.js|shortQrCode.js"});
  click("cmdSynchro");
  EXPECT_EQ(scratch.read("nav/res_css/js/shortQrCode.js"), "from the backup");
  EXPECT_EQ(journal, Journal{"read again"});
}

TEST_F(Synchro, APathThatIsTypedAfterTheComparisonIsForTheNextOne) {
  scratch.write("nav/user_datas/a", "1");
  scratch.makeFolders("autre");
  open();
  click("cmdCompare");
  path().setText(toQt(scratch.text("autre")));
  click("cmdSynchro");
  EXPECT_EQ(scratch.read("stick/a"), "1");
  EXPECT_TRUE(scratch.namesIn("autre").empty());
  EXPECT_EQ(rows(), (Lines{"0|a|", "0|shortQrCode.js|"}));
  EXPECT_EQ(label("labDir_2"), scratch.path("autre") + "/");
}

TEST_F(Synchro, WhatChangedInTheBackupSinceTheComparisonIsLeftAndTold) {
  scratch.write("nav/user_datas/a", "ours");
  scratch.write("stick/a", "old");
  age("stick/a");
  open();
  click("cmdCompare");
  scratch.write("stick/a", "edited there");
  age("stick/a", std::chrono::hours(1));
  click("cmdSynchro");
  EXPECT_EQ(scratch.read("stick/a"), "edited there");
  EXPECT_EQ(label("labReport"), toUtf8(copiedLine(1, 1)));
  EXPECT_EQ(traced, (Lines{toUtf8(notCopiedLine(scratch.text("nav/user_datas/a"),
                                                failures::changedSinceCompared())),
                           toUtf8(copiedLine(1, 1))}));
  EXPECT_EQ(rows(), Lines{"3|a|a"}) << "the comparison that followed";
  EXPECT_TRUE(isShown("cmdSynchro"));
  EXPECT_EQ(window->focusWidget()->objectName(), QStringLiteral("cmdSynchro")) << "once more";
}

TEST_F(Synchro, TheEndIsToldBeforeTheFoldersAreComparedAgain) {
  scratch.write("nav/user_datas/a", "1");
  open();
  click("cmdCompare");
  Lines told;
  whilePumping = [&] {
    if (!bar().isVisible()) told.push_back(label("labDir_0"));
  };
  click("cmdSynchro");
  ASSERT_FALSE(told.empty());
  for (const std::string& text : told) EXPECT_EQ(text, "Synchro terminée !");
}

TEST_F(Synchro, TheBarBeginsAnewWithEachRun) {
  open();
  for (const char* name : {"nav/user_datas/a", "nav/user_datas/b", "nav/user_datas/c"}) {
    scratch.write(name, "1");
    click("cmdCompare");
    QSignalSpy moved(&bar(), &QProgressBar::valueChanged);
    click("cmdSynchro");
    ASSERT_FALSE(moved.empty());
    EXPECT_EQ(moved.front()[0].toInt(), 0) << name;
  }
}

TEST_F(Synchro, AFolderThatIsChosenDuringTheCopyIsTheOneOfTheNextComparison) {
  scratch.write("nav/user_datas/a", "1");
  scratch.makeFolders("autre");
  open();
  click("cmdCompare");
  questions.folders = {scratch.text("autre")};
  whilePumping = [&] {
    if (bar().isVisible() && questions.folderRequests.empty()) click("cmdPath");
  };
  click("cmdSynchro");
  EXPECT_EQ(scratch.read("stick/a"), "1") << "the folder that was compared";
  EXPECT_EQ(settings.backupPath, scratch.text("autre") + u"/");
  EXPECT_EQ(rows(), (Lines{"0|a|", "0|shortQrCode.js|"}));
  EXPECT_TRUE(scratch.namesIn("autre").empty());
}

TEST_F(Synchro, WhatCouldNotBeAskedIsCountedAfterARunToo) {
  scratch.write("nav/user_datas/docs/a", "1");
  scratch.makeFolders("ailleurs");
  std::filesystem::create_directory_symlink(scratch.path("ailleurs"), scratch.path("stick/docs"));
  open();
  click("cmdCompare");
  whilePumping = [&] {
    if (bar().isVisible()) {
      EXPECT_EQ(label("labReport"), "") << "the bar is in its place";
    }
  };
  click("cmdSynchro");
  EXPECT_EQ(label("labReport"), toUtf8(reportLine(1, 0, 1)));
}

TEST_F(Synchro, AfterARunWhatCouldNotBeReadIsCountedAndNothingIsCalledIdentical) {
  std::filesystem::create_symlink("nowhere", scratch.path("nav/user_datas/a"));
  open();
  click("cmdCompare");
  EXPECT_EQ(rows(), Lines{"0|shortQrCode.js|"});
  EXPECT_EQ(label("labIdem"), "Cliquez pour fermer sans synchroniser.");
  click("cmdSynchro");
  EXPECT_EQ(label("labReport"), toUtf8(reportLine(1, 0, 1)));
  EXPECT_EQ(label("labIdem"), "");
  EXPECT_EQ(label("labDir_0"), "Synchro terminée !");
  EXPECT_FALSE(isShown("cmdSynchro"));
}

TEST_F(Synchro, WhatCouldNotBeCopiedIsTracedCountedAndShownAgain) {
  scratch.write("nav/user_datas/a", "1");
  scratch.write("nav/user_datas/b", "1");
  open();
  click("cmdCompare");
  std::filesystem::remove(scratch.path("nav/user_datas/a"));
  scratch.makeFolders("nav/user_datas/a");
  click("cmdSynchro");
  EXPECT_EQ(label("labReport"), toUtf8(copiedLine(2, 1)));
  EXPECT_EQ(std::count_if(traced.begin(), traced.end(),
                          [](const std::string& line) {
                            return line.find("non copié : ") != std::string::npos;
                          }),
            1);
  EXPECT_EQ(label("labDir_0"), "Synchro terminée !");
}

TEST_F(Synchro, WhileItCopiesTheBarMovesEventsRunAndNothingElseIsBegun) {
  for (int i = 0; i < 40; ++i) {
    scratch.write("nav/user_datas/f" + std::to_string(i), std::string(100, 'x'));
  }
  open();
  click("cmdCompare");
  ASSERT_EQ(rows().size(), 41u);

  QSignalSpy moved(&bar(), &QProgressBar::valueChanged);
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
  timer.start(0);
  int whileBar = 0;
  int most = 0;
  whilePumping = [&] {
    if (!bar().isVisible()) return;
    ++whileBar;
    most = bar().maximum();
    for (const char* name : {"cmdCompare", "cmdClose", "cmdSynchro"}) {
      EXPECT_FALSE(find<QWidget>(name).isEnabled()) << name;
    }
    EXPECT_FALSE(window->focusWidget()) << "nothing looks chosen";
    for (const char* name : {"txtPath", "cmdPath", "cmdOpen", "txtFiltre", "labNbre_1"}) {
      EXPECT_TRUE(find<QWidget>(name).isEnabled()) << name;
    }
    click("cmdCompare");
    click("cmdSynchro");
    click("cmdClose");
    EXPECT_TRUE(window->isOpen());
  };
  click("cmdSynchro");
  EXPECT_GT(whileBar, 0);
  EXPECT_GT(ticks, 0) << "the window answers";
  EXPECT_EQ(most, 42) << "one more than there are rows";
  std::vector<int> values;
  for (const QList<QVariant>& value : moved) values.push_back(value[0].toInt());
  EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
  ASSERT_FALSE(values.empty());
  EXPECT_LE(values.front(), 1);
  EXPECT_EQ(values.back(), 41) << "the last row";
  EXPECT_EQ(label("labReport"), toUtf8(copiedLine(41, 0)));
}

// --- Scrolling ----------------------------------------------------------------------------------

TEST_F(Synchro, AWheelNotchMovesTheTableThreeRowsWhereverThePointerIs) {
  for (int i = 0; i < 60; ++i) scratch.write("nav/user_datas/f" + std::to_string(i), "");
  open();
  click("cmdCompare");
  ASSERT_EQ(firstRow(), 0);
  notch(*grid().viewport(), -120);
  EXPECT_EQ(firstRow(), 3);
  notch(*window, -120);
  EXPECT_EQ(firstRow(), 6);
  notch(*window, 120);
  EXPECT_EQ(firstRow(), 3);
  notch(*grid().viewport(), 240);
  EXPECT_EQ(firstRow(), 0) << "it stops at the first row";
  notch(*grid().viewport(), -60);
  EXPECT_EQ(firstRow(), 0);
  notch(*grid().viewport(), -60);
  EXPECT_EQ(firstRow(), 3) << "a touchpad's small steps add up";
  DefilerGrille(1, 255, grid());
  EXPECT_EQ(firstRow(), grid().verticalScrollBar()->maximum());
  EXPECT_LT(firstRow(), 60);
}

TEST_F(Synchro, AWheelNotchMovesTheTableThreeRowsWhateverTheDesktopsNumberOfLines) {
  const int usual = QApplication::wheelScrollLines();
  QApplication::setWheelScrollLines(usual + 4);
  for (int i = 0; i < 60; ++i) scratch.write("nav/user_datas/f" + std::to_string(i), "");
  open();
  click("cmdCompare");
  ASSERT_TRUE(waitUntil([&] { return grid().verticalScrollBar()->isVisible(); }));
  int expected = 0;
  for (QWidget* target : {static_cast<QWidget*>(grid().verticalScrollBar()), grid().viewport(),
                          grid().horizontalHeader()->viewport()}) {
    notch(*target, -120);
    EXPECT_EQ(firstRow(), expected += 3) << target->metaObject()->className();
  }
  notch(*grid().verticalScrollBar(), 120);
  EXPECT_EQ(firstRow(), expected - 3);
  QApplication::setWheelScrollLines(usual);
}

TEST_F(Synchro, AWheelThatTurnsSidewaysMovesTheTableSideways) {
  for (int i = 0; i < 60; ++i) scratch.write("nav/user_datas/f" + std::to_string(i), "");
  open();
  click("cmdCompare");
  grid().setColumnWidth(1, 900);
  QCoreApplication::processEvents();
  QWidget& target = *grid().viewport();
  QWheelEvent event(QPointF(5, 5), target.mapToGlobal(QPointF(5, 5)), {}, {-120, 0}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&target, &event);
  EXPECT_GT(grid().horizontalScrollBar()->value(), 0);
  EXPECT_EQ(firstRow(), 0);
}
