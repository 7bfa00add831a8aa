// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTimer>
#include <functional>

#include "platform/qt/MessageBoxQuestions.h"
#include "platform/qt/QtText.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"

namespace {

// Shows `box` and, once its window has the focus, does `act` to it.
Answer answerTo(const Box& box, const std::function<void(QMessageBox&)>& act) {
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* window = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!window || !window->isActiveWindow()) return;
    look.stop();
    act(*window);
  });
  look.start(10);
  return MessageBoxQuestions().ask(box);
}

Answer press(const Box& box, const QString& caption) {
  return answerTo(box, [&](QMessageBox& window) {
    for (QAbstractButton* button : window.buttons()) {
      if (button->text() == caption) return button->click();
    }
    ADD_FAILURE() << "no button " << caption.toStdString();
    window.done(0);
  });
}

QStringList captions(const QMessageBox& window) {
  QStringList texts;
  for (const QAbstractButton* button : window.buttons()) texts.append(button->text());
  texts.sort();
  return texts;
}

void closeAnyway(QMessageBox& window) { window.done(QMessageBox::NoButton); }

// Does `act` to the file dialog as soon as `show` shows one.
std::optional<Text> chosen(const std::function<std::optional<Text>()>& show,
                           const std::function<void(QFileDialog&)>& act) {
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    look.stop();
    act(*dialog);
  });
  look.start(10);
  return show();
}

std::optional<Text> chosenFile(const FileRequest& request,
                               const std::function<void(QFileDialog&)>& act) {
  return chosen([&] { return MessageBoxQuestions().chooseFile(request); }, act);
}

std::optional<Text> chosenFolder(const FolderRequest& request,
                                 const std::function<void(QFileDialog&)>& act) {
  return chosen([&] { return MessageBoxQuestions().chooseFolder(request); }, act);
}

}  // namespace

TEST(MessageBox, ShowsTitleTextAndIconWithEveryKindOfLineBreak) {
  const Box box{.title = u"Tavrollo : essai",
                .text = u"un\r\ndeux\rtrois\nquatre é",
                .icon = BoxIcon::Critical};
  answerTo(box, [](QMessageBox& window) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Tavrollo : essai"));
    EXPECT_EQ(window.text(), QStringLiteral("un\ndeux\ntrois\nquatre é"));
    EXPECT_EQ(window.textFormat(), Qt::PlainText);
    EXPECT_EQ(window.icon(), QMessageBox::Critical);
    closeAnyway(window);
  });
}

TEST(MessageBox, LiesAboveTheWindowsThatAreAboveAllOthers) {
  answerTo({.title = u"t", .text = u"x"}, [](QMessageBox& window) {
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    closeAnyway(window);
  });
}

TEST(MessageBox, EveryIconHasItsPicture) {
  struct Row {
    BoxIcon icon;
    QMessageBox::Icon shown;
  };
  const Row rows[] = {{BoxIcon::None, QMessageBox::NoIcon},
                      {BoxIcon::Critical, QMessageBox::Critical},
                      {BoxIcon::Question, QMessageBox::Question},
                      {BoxIcon::Exclamation, QMessageBox::Warning},
                      {BoxIcon::Information, QMessageBox::Information}};
  for (const Row& row : rows) {
    answerTo({.title = u"t", .text = u"x", .icon = row.icon}, [&](QMessageBox& window) {
      EXPECT_EQ(window.icon(), row.shown);
      closeAnyway(window);
    });
  }
}

TEST(MessageBox, EveryButtonGivesItsAnswer) {
  struct Row {
    BoxButtons buttons;
    QString caption;
    Answer answer;
  };
  const Row rows[] = {{BoxButtons::Ok, QStringLiteral("OK"), Answer::Ok},
                      {BoxButtons::OkCancel, QStringLiteral("OK"), Answer::Ok},
                      {BoxButtons::OkCancel, QStringLiteral("Annuler"), Answer::Cancel},
                      {BoxButtons::YesNo, QStringLiteral("Oui"), Answer::Yes},
                      {BoxButtons::YesNo, QStringLiteral("Non"), Answer::No},
                      {BoxButtons::YesNoCancel, QStringLiteral("Oui"), Answer::Yes},
                      {BoxButtons::YesNoCancel, QStringLiteral("Non"), Answer::No},
                      {BoxButtons::YesNoCancel, QStringLiteral("Annuler"), Answer::Cancel}};
  for (const Row& row : rows) {
    EXPECT_EQ(press({.title = u"t", .text = u"x", .buttons = row.buttons}, row.caption), row.answer)
        << row.caption.toStdString();
  }
}

TEST(MessageBox, HasTheButtonsAskedForAndNoOther) {
  answerTo(
      {.title = u"t", .text = u"x", .buttons = BoxButtons::YesNoCancel}, [](QMessageBox& window) {
        EXPECT_EQ(captions(window), QStringList({QStringLiteral("Annuler"), QStringLiteral("Non"),
                                                 QStringLiteral("Oui")}));
        closeAnyway(window);
      });
}

TEST(MessageBox, EnterPressesTheDefaultButton) {
  const Box box{
      .title = u"t", .text = u"x", .buttons = BoxButtons::YesNo, .defaultAnswer = Answer::No};
  EXPECT_EQ(answerTo(box, [](QMessageBox& window) { QTest::keyClick(&window, Qt::Key_Return); }),
            Answer::No);
}

TEST(MessageBox, EscapeIsCancelWhereThereIsOne) {
  const auto escape = [](QMessageBox& window) { QTest::keyClick(&window, Qt::Key_Escape); };
  EXPECT_EQ(answerTo({.title = u"t", .text = u"x", .buttons = BoxButtons::YesNoCancel}, escape),
            Answer::Cancel);
  EXPECT_EQ(answerTo({.title = u"t", .text = u"x", .buttons = BoxButtons::OkCancel}, escape),
            Answer::Cancel);
  EXPECT_EQ(answerTo({.title = u"t", .text = u"x"}, escape), Answer::Ok);
}

TEST(MessageBox, ABoxThatIsClosedFromOutsideAnswersWithItsLastButton) {
  struct Row {
    BoxButtons buttons;
    Answer answer;
  };
  for (const Row& row :
       {Row{BoxButtons::Ok, Answer::Ok}, Row{BoxButtons::OkCancel, Answer::Cancel},
        Row{BoxButtons::YesNo, Answer::No}, Row{BoxButtons::YesNoCancel, Answer::Cancel}}) {
    EXPECT_EQ(answerTo({.title = u"t", .text = u"x", .buttons = row.buttons}, closeAnyway),
              row.answer);
  }
}

TEST(MessageBox, AYesNoBoxIsLeftByItsButtonsAlone) {
  const Box box{
      .title = u"t", .text = u"x", .buttons = BoxButtons::YesNo, .defaultAnswer = Answer::Yes};
  const Answer answer = answerTo(box, [](QMessageBox& window) {
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_TRUE(window.isVisible());
    window.button(QMessageBox::Yes)->click();
  });
  EXPECT_EQ(answer, Answer::Yes);
}

TEST(FileDialog, StartsInTheNearestFolderAndGivesTheChosenFile) {
  const Scratch scratch;
  scratch.write("Cookies", "x");
  const FileRequest request{.title = u"Cookies  : cherchez é",
                            .filterLabel = u"Cookies ",
                            .pattern = u"*cookies*.*",
                            .startFolder = scratch.text("missing/deeper")};
  const std::optional<Text> chosen = chosenFile(request, [&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Cookies  : cherchez é"));
    EXPECT_EQ(dialog.directory().canonicalPath(), QDir(toQt(scratch.text(""))).canonicalPath());
    EXPECT_EQ(dialog.nameFilters().constFirst(), QStringLiteral("Cookies (*cookies*.* *cookies*)"));
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    dialog.selectFile(toQt(scratch.text("Cookies")));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(chosen, scratch.text("Cookies"));
}

TEST(FileDialog, CancellingGivesNothing) {
  const FileRequest request{.title = u"t", .filterLabel = u"f", .pattern = u"*", .startFolder = {}};
  EXPECT_EQ(chosenFile(request, [](QFileDialog& dialog) { dialog.reject(); }), std::nullopt);
}

TEST(FolderDialog, StartsInTheGivenFolderAndGivesTheChosenOne) {
  const Scratch scratch;
  scratch.makeFolders("clé/Sauvegarde é");
  const FolderRequest request{.title = u"Répertoire :", .startFolder = scratch.text("clé")};
  const std::optional<Text> folder = chosenFolder(request, [&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Répertoire :"));
    EXPECT_EQ(dialog.directory().canonicalPath(), QDir(toQt(scratch.text("clé"))).canonicalPath());
    EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
    EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
    dialog.selectFile(toQt(scratch.text("clé/Sauvegarde é")));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(folder, scratch.text("clé/Sauvegarde é"));
}

TEST(FolderDialog, CancellingGivesNothing) {
  EXPECT_EQ(chosenFolder({.title = u"t", .startFolder = {}},
                         [](QFileDialog& dialog) { dialog.reject(); }),
            std::nullopt);
}

// --- Saving -------------------------------------------------------------------------------------

namespace {

const SaveRequest kSaving{.title = u"Enregistrer",
                          .kinds = {{u"Image PNG", u"png"}, {u"Dessin SVG", u"svg"}},
                          .name = u"essai"};

std::optional<Text> savedFile(const std::function<void(QFileDialog&)>& act) {
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return;
    look.stop();
    act(*dialog);
  });
  look.start(10);
  return MessageBoxQuestions().chooseNewFile(kSaving);
}

}  // namespace

TEST(SaveDialog, ShowsWhatItWasAsked) {
  savedFile([](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Enregistrer"));
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.nameFilters(), QStringList({QStringLiteral("Image PNG (*.png)"),
                                                 QStringLiteral("Dessin SVG (*.svg)")}));
    EXPECT_EQ(QFileInfo(dialog.selectedFiles().value(0)).completeBaseName(),
              QStringLiteral("essai"));
    dialog.reject();
  });
}

TEST(SaveDialog, AddsTheEndingOfTheKindThatWasChosen) {
  const Scratch scratch;
  const auto save = [&](const char* name, int kind) {
    return savedFile([&](QFileDialog& dialog) {
      dialog.setDirectory(QString::fromStdString(scratch.path()));
      const QString filter = dialog.nameFilters().value(kind);
      dialog.selectNameFilter(filter);
      Q_EMIT dialog.filterSelected(filter);
      auto* edit = dialog.findChild<QLineEdit*>();
      ASSERT_TRUE(edit);
      edit->setText(QString::fromLatin1(name));
      static_cast<QDialog&>(dialog).accept();
    });
  };
  EXPECT_EQ(save("a", 0), scratch.text("a.png"));
  EXPECT_EQ(save("a", 1), scratch.text("a.svg"));
  EXPECT_EQ(save("a.svg", 0), scratch.text("a.svg"));
}

TEST(SaveDialog, CancellingChoosesNothing) {
  EXPECT_EQ(savedFile([](QFileDialog& dialog) { dialog.reject(); }), std::nullopt);
}
