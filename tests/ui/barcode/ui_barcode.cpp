// SPDX-License-Identifier: GPL-3.0-or-later
// The barcode window as its user has it: typed into, clicked, printed, left.
#include <QCheckBox>
#include <QClipboard>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTimer>
#include <cmath>
#include <set>
#include <tuple>

#include "barcode/BarcodeOptions.h"
#include "barcode/BarcodeRtf.h"
#include "barcode/BarcodeTexts.h"
#include "barcode/ModcodeBarre.h"
#include "barcode/ModuleSize.h"
#include "barcode/PictureFile.h"
#include "barcode/frmCodeBarrePrev.h"
#include "barcode/qt/SymbolPrint.h"
#include "barcode/qt/SymbolView.h"
#include "platform/Files.h"
#include "platform/qt/QtText.h"
#include "support/Doubles.h"
#include "support/Scratch.h"
#include "ui/UiMain.h"

namespace {

class Barcode : public testing::Test {
 protected:
  void open() {
    window.Form_Load();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  QLineEdit& box(const char* name) { return control<QLineEdit>(window, name); }
  QWidget& widget(const char* name) { return control<QWidget>(window, name); }
  SymbolView& view() { return control<SymbolView>(window, "rtbCBar"); }
  Text shown(const char* name) { return fromQt(box(name).text()); }
  void click(const char* name) { control<QAbstractButton>(window, name).click(); }
  void choose(int option) { click(("OptType_" + std::to_string(option)).c_str()); }
  void type(const char* name, const char* text) {
    box(name).setFocus();
    box(name).selectAll();
    QTest::keyClicks(&box(name), QString::fromLatin1(text));
  }
  void expectResult(const Text& result) {
    EXPECT_EQ(shown("txtCBar"), result);
    EXPECT_EQ(view().text(), result);
  }

  Scratch scratch;
  Text programFolder = scratch.text();
  LocaleData locale = frenchLocale();
  Journal journal;
  RecordingShell shell{journal};
  ScriptedQuestions questions{journal};

  // What was encoded last, with which add-on and check box.
  std::tuple<int, Text, Text, bool> encoded;
  bool encoderFails = false;

  // What the print dialog was given, and what it does.
  std::vector<bool> selectionsOffered;
  bool printsSelection = false;
  bool cancelsPrinting = false;
  QSizeF paper;  // in millimetres; the printer's own when there is none
  QMarginsF margins{1.5, 1.5, 1.5, 1.5};
  QRectF printable;  // in points

  frmCodeBarrePrev window{{.programFolder = programFolder,
                           .locale = locale,
                           .shell = shell,
                           .questions = questions,
                           .fontPage = [] { return Text(u"/nav/aide.html"); },
                           .encode =
                               [this](Text& result, std::uint8_t type, TextView source,
                                      TextView addOn, bool withCheck) {
                                 encoded = {type, Text(source), Text(addOn), withCheck};
                                 if (encoderFails) throw std::overflow_error("Dépassement");
                                 ModcodeBarre::CodeBarInto(result, type, source, addOn, withCheck);
                               }},
                          [this](QPrinter& printer, bool hasSelection) {
                            selectionsOffered.push_back(hasSelection);
                            printer.setOutputFormat(QPrinter::PdfFormat);
                            printer.setOutputFileName(toQt(scratch.text("page.pdf")));
                            if (printsSelection) printer.setPrintRange(QPrinter::Selection);
                            if (paper.isValid()) {
                              printer.setPageSize(QPageSize(paper, QPageSize::Millimeter));
                              printer.setPageMargins(margins, QPageLayout::Millimeter);
                            }
                            printable = printer.pageLayout().paintRect(QPageLayout::Point);
                            return !cancelsPrinting;
                          }};
};

}  // namespace

// --- What there is ------------------------------------------------------------------------------

TEST_F(Barcode, CaptionsAndTipsAreExactToTheCharacter) {
  const char* const result =
      "Chaîne de caractères que vous verrez dans votre tableau en appliquant la fonction";
  const char* const size = "Pour la taille du code barre affiché en bas (36 conseillé)";
  const char* const symbol =
      "C'est idem résultat en clair mais dans la police.ttf dédiée (copier/ coller possible aussi)";
  const char* const dense = "Compressé et illimité. Toutes les douchettes ne le lisent pas.";
  const char* const easy = "(Conseillé) Illimité en taille, facile à lire";
  const struct {
    const char* name;
    const char* property;
    const char* caption;
    const char* tip;
  } rows[] = {
      {"Frame1", "title", "Type de code barre", ""},
      {"OptType_0", "text", "39 (police.ttf Code 3 de 9)", easy},
      {"OptType_1", "text", "39 (police.ttf Code 3 de 9 Lab)", easy},
      {"OptType_2", "text", "EAN 13", "Celui des grandes surface (GenCode) 12 chiffres + 1 clé"},
      {"OptType_3", "text", "EAN 8", "Idem EAN13 avec 8 chiffres (7+1 clé)"},
      {"OptType_4", "text", "2 /5 Entrelacé", dense},
      {"OptType_5", "text", "128 (EAN 128)", dense},
      {"Frame2", "title", "Entrez vos données :", ""},
      {"Label1", "text", "Tapez ici votre code ->", "Ce qui doit être codé"},
      {"txtSource", "text", "", "Ce qui doit être codé"},
      {"LabAdd", "text", "Add-on ->", "Optionel :  2 ou 5 chiffres supplémentaires"},
      {"TxtAdd", "text", "", "Optionnel :  2 ou 5 chiffres supplémentaires"},
      {"chkKey25i", "text", "Ajouter 1 clé", ""},
      {"Label4", "text", "Taille de la police ->", size},
      {"TxtSize", "text", "36", size},
      {"Frame3", "title", "Calcul du code barre", ""},
      {"Label2", "text", "Résultat ( en clair ) ->", result},
      {"txtCBar", "text", "", result},
      {"LabFont", "text", "Police .ttf associée ->", ""},
      {"Label3", "text", "Résultat sous forme de code barre :", symbol},
      {"rtbCBar", "accessibleName", "Code barre", symbol},
      {"cmdPrint", "text", "Imprimer le code barre", ""},
      {"cmdExport", "text", "Exporter le code barre", ""},
      {"cmdSaveImage", "text", "Enregistrer l’image", ""},
      {"cmdCopyImage", "text", "Copier l’image", ""},
      {"LabLicence", "text",
       "<a href=\"page\">Polices de codes barres : Tavrollo, licence GNU GPL</a>", ""},
  };
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Ostrelle : Prévisualiser un code barre"));
  for (const auto& row : rows) {
    EXPECT_EQ(widget(row.name).property(row.property).toString(), QString::fromUtf8(row.caption))
        << row.name;
    EXPECT_EQ(widget(row.name).toolTip(), QString::fromUtf8(row.tip)) << row.name;
  }
}

TEST_F(Barcode, OpensWithEan13At36Points) {
  open();
  EXPECT_TRUE(control<QRadioButton>(window, "OptType_2").isChecked());
  EXPECT_EQ(shown("TxtFont"), u"Code EAN13");
  EXPECT_EQ(view().fontSize(), 36);
  expectResult(u"");
  EXPECT_TRUE(box("txtSource").hasFocus());
  type("txtSource", "1234");
  expectResult(u"0AAAAAA*abcdei+");
}

TEST_F(Barcode, OpensAt36PointsWhateverWasTypedBefore) {
  box("TxtSize").setText(QStringLiteral("48"));
  ASSERT_EQ(view().fontSize(), 48);
  open();
  EXPECT_EQ(view().fontSize(), 36);
  choose(5);
  EXPECT_EQ(view().fontSize(), 48) << "what the box shows";
}

TEST_F(Barcode, IsNoModalWindowAndLiesInTheMiddleOfTheScreen) {
  open();
  EXPECT_FALSE(window.isModal());
  const QPoint off =
      window.frameGeometry().center() - window.screen()->availableGeometry().center();
  EXPECT_LT(std::abs(off.x()), 40);
  EXPECT_LT(std::abs(off.y()), 40);
}

// Also on a screen that has twice the dots for everything.
TEST_F(Barcode, HasRoomOnTheScreenWithItsFrame) {
  open();
  const QRect area = window.screen()->availableGeometry();
  EXPECT_TRUE(waitUntil([&] { return area.contains(window.frameGeometry()); }))
      << testing::PrintToString(window.frameGeometry().size()) << window.frameGeometry().height();
}

TEST_F(Barcode, WhatHasNoRoomIsScrolledToByTheTabKey) {
  open();
  window.resize(600, 300);
  ASSERT_TRUE(waitUntil([&] { return window.height() == 300; })) << window.height();
  widget("OptType_2").setFocus();
  std::set<QWidget*> seen;
  for (QWidget* focused = window.focusWidget(); seen.insert(focused).second;
       focused = window.focusWidget()) {
    EXPECT_EQ(focused->visibleRegion().boundingRect(), focused->rect())
        << focused->objectName().toStdString();
    QTest::keyClick(focused, Qt::Key_Tab);
  }
  EXPECT_EQ(seen.size(), 15U);
  EXPECT_TRUE(seen.contains(&widget("cmdExport")));
}

// --- Types --------------------------------------------------------------------------------------

TEST_F(Barcode, EachTypeHasItsFontItsControlsAndItsResult) {
  open();
  type("txtSource", "1234567");
  for (int option = 5; option >= 0; --option) {
    choose(option);
    const BarcodeOption& expected = barcodeOptions()[static_cast<std::size_t>(option)];
    EXPECT_EQ(shown("TxtFont"), expected.shownFont);
    EXPECT_EQ(view().barFont().family(), expected.font);
    EXPECT_EQ(box("TxtAdd").isVisible(), expected.hasAddOn) << option;
    EXPECT_EQ(widget("LabAdd").isVisible(), expected.hasAddOn) << option;
    EXPECT_EQ(widget("chkKey25i").isVisible(), expected.hasCheckBox) << option;
    EXPECT_EQ(shown("txtSource"), u"1234567");
    expectResult(ModcodeBarre::CodeBar(expected.type, u"1234567", u"", false));
  }
}

TEST_F(Barcode, BothKindsOfCode39EncodeTheSame) {
  open();
  for (const int option : {0, 1}) {
    choose(option);
    type("txtSource", "AB-12");
    expectResult(u"*AB-12*");
    type("txtSource", "abc");
    expectResult(u"");
  }
}

TEST_F(Barcode, WhatCannotBeEncodedShowsNothingAndNoBox) {
  open();
  type("txtSource", "12x");
  expectResult(u"");
  EXPECT_TRUE(questions.boxes.empty());
  type("TxtAdd", "12");
  expectResult(u"[B\\C");
}

TEST_F(Barcode, WhatNobodyTypesLeavesNoResultAndNoBox) {
  open();
  const char16_t bad[] = {0, 0xD83D, 0xDE00, 0x0661, 0xFF11, 0xFFFF};
  for (int option = 0; option < 6; ++option) {
    choose(option);
    for (const char16_t character : bad) {
      box("txtSource").setText(QStringLiteral("12") + QChar(character) + QStringLiteral("34"));
      box("TxtAdd").setText(QString(QChar(character)));
      expectResult(u"");
    }
  }
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(Barcode, TheAddOnAndTheCheckBoxRecomputeAtOnce) {
  open();
  choose(3);
  type("txtSource", "1234567");
  type("TxtAdd", "13");
  expectResult(u":BCDE*fgha+[B\\N");
  choose(4);
  type("txtSource", "123");
  expectResult(ModcodeBarre::Interleaved2of5(u"123", false));
  click("chkKey25i");
  expectResult(ModcodeBarre::Interleaved2of5(u"123", true));
  click("chkKey25i");
  expectResult(ModcodeBarre::Interleaved2of5(u"123", false));
  type("TxtAdd", "99");
  choose(5);
  expectResult(ModcodeBarre::Code128(u"123"));
}

TEST_F(Barcode, TheAddOnAndTheCheckBoxCountForEveryTypeAndStayAsTheyAre) {
  using Encoded = std::tuple<int, Text, Text, bool>;
  open();
  type("txtSource", "1234567");
  type("TxtAdd", "13");
  choose(4);
  click("chkKey25i");
  for (const int option : {5, 4, 1, 3, 0, 2, 3}) {
    choose(option);
    const int codeType = barcodeOptions()[static_cast<std::size_t>(option)].type;
    EXPECT_EQ(encoded, Encoded(codeType, u"1234567", u"13", true)) << option;
  }
  expectResult(u":BCDE*fgha+[B\\N");
  choose(4);
  expectResult(ModcodeBarre::Interleaved2of5(u"1234567", true));
}

TEST_F(Barcode, AnErrorOfTheEncoderIsToldAndLeavesNoResult) {
  open();
  type("txtSource", "1234");
  expectResult(u"0AAAAAA*abcdei+");
  encoderFails = true;
  questions.answers = {Answer::Ok};
  type("TxtAdd", "1");
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(questions.boxes[0].text, u"Erreur dans fonction CodeBar()\r\nDépassement");
  EXPECT_EQ(questions.boxes[0].buttons, BoxButtons::Ok);
  expectResult(u"");
  EXPECT_TRUE(window.isVisible());
}

TEST_F(Barcode, ALongTextIsPastedWhole) {
  open();
  choose(5);
  constexpr int kLength = 100'000;
  QApplication::clipboard()->setText(QString(kLength, QLatin1Char('x')));
  box("txtSource").setFocus();
  box("txtSource").paste();
  EXPECT_EQ(box("txtSource").text().size(), kLength);
  const Text result = ModcodeBarre::Code128(Text(kLength, u'x'));
  EXPECT_EQ(result.size(), kLength + 3U);
  EXPECT_TRUE(shown("txtCBar") == result) << box("txtCBar").text().size();
  EXPECT_TRUE(view().text() == result) << view().text().size();
}

TEST_F(Barcode, WhatIsPastedOrDroppedEndsWithItsFirstLine) {
  const struct {
    const char* pasted;
    const char* kept;
  } rows[] = {{"12 34", "12 34"}, {"12\n", "12"},       {"12\r\n", "12"},   {"12\r", "12"},
              {"12\n\n", "12"},   {"12\r\n34\n", "12"}, {"12\u2028", "12"}, {"12\u202934", "12"}};
  open();
  choose(5);
  QLineEdit& source = box("txtSource");
  for (const auto& row : rows) {
    QApplication::clipboard()->setText(QString::fromUtf8(row.pasted));
    source.setText(QStringLiteral("AB"));
    source.setCursorPosition(1);
    QTest::keyClick(&source, Qt::Key_V, Qt::ControlModifier);
    const Text expected = u"A" + fromUtf8Lossless(row.kept) + u"B";
    EXPECT_EQ(shown("txtSource"), expected) << row.pasted;
    EXPECT_EQ(source.cursorPosition(), static_cast<int>(expected.size()) - 1) << row.pasted;
    EXPECT_EQ(encoded, std::make_tuple(5, expected, Text(), false));
    expectResult(ModcodeBarre::Code128(expected));
  }
  QMimeData dragged;
  dragged.setText(QStringLiteral("34\n"));
  source.clear();
  const QPoint place(5, 5);
  QDragEnterEvent enter(place, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&source, &enter);
  QDropEvent drop(place, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&source, &drop);
  EXPECT_EQ(shown("txtSource"), u"34");
}

TEST_F(Barcode, ALineEndIsPastedIntoNoBox) {
  open();
  type("txtSource", "1234");
  QApplication::clipboard()->setText(QStringLiteral("48\r\n"));
  for (const char* name : {"TxtAdd", "TxtSize"}) {
    box(name).selectAll();
    QTest::keyClick(&box(name), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(name), u"48");
  }
  expectResult(ModcodeBarre::CodeBar(2, u"1234", u"48", false));
  EXPECT_EQ(view().fontSize(), 48);
}

TEST_F(Barcode, TheResultHasRoomForTheLongestText) {
  const int longest = box("txtSource").maxLength();
  EXPECT_EQ(longest, 1'000'000);
  EXPECT_EQ(box("TxtAdd").maxLength(), longest);
  const auto length = static_cast<std::size_t>(longest);
  for (const std::uint8_t type : {ModcodeBarre::kCode39, ModcodeBarre::kCode128}) {
    const Text result = ModcodeBarre::CodeBar(type, Text(length, u'A'), u"", false);
    EXPECT_GT(result.size(), length);
    EXPECT_LE(result.size(), static_cast<std::size_t>(box("txtCBar").maxLength()));
  }
}

TEST_F(Barcode, TheSizeIsThatOfTheLastNumber) {
  open();
  const struct {
    const char* typed;
    int size;
  } rows[] = {{"48", 48}, {"abc", 48}, {"", 48}, {"0", 48}, {"7,5", 8}, {"-3", 8}, {"96", 96}};
  for (const auto& row : rows) {
    box("TxtSize").setText(QString::fromLatin1(row.typed));
    EXPECT_EQ(view().fontSize(), row.size) << row.typed;
    choose(view().fontSize() % 2 == 0 ? 5 : 4);
    EXPECT_EQ(view().fontSize(), row.size) << row.typed << " after choosing a type";
  }
}

TEST_F(Barcode, EachHelpButtonShowsItsTopic) {
  open();
  for (int topic = 0; topic < 5; ++topic) {
    questions.answers = {Answer::Ok};
    click(("CmdAideCodeBarre_" + std::to_string(topic)).c_str());
    EXPECT_EQ(questions.boxes.back(), *barcodeHelpBox(topic, u"/nav/aide.html"));
  }
  EXPECT_EQ(questions.boxes.size(), 5U);
}

// --- Exporting ----------------------------------------------------------------------------------

TEST_F(Barcode, ExportWritesTheDocumentAndOpensIt) {
  open();
  scratch.write("temp.rtf", std::string(10000, 'x'));
  choose(5);
  type("txtSource", "Ab");
  click("cmdExport");
  EXPECT_EQ(scratch.read("temp.rtf"), exportedRtf(ModcodeBarre::Code128(u"Ab")));
  EXPECT_EQ(journal, Journal({"start write " + scratch.path("temp.rtf")}));
}

TEST_F(Barcode, ExportTellsWhatWentWrong) {
  open();
  questions.answers = {Answer::Ok, Answer::Ok};
  shell.failure = {53, u"Fichier introuvable : write"};
  click("cmdExport");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdExport_Click", u"Fichier introuvable : write"));

  scratch.makeFolders("occupied/temp.rtf");
  programFolder = scratch.text("occupied");
  journal.clear();
  click("cmdExport");
  EXPECT_EQ(questions.boxes.size(), 2U);
  EXPECT_TRUE(questions.boxes.back().text.starts_with(u"Erreur dans cmdExport_Click\r\n"));
  EXPECT_EQ(journal, Journal({"ask Tavrollo"})) << "what was not written is not opened";
}

TEST_F(Barcode, AClickOnTheLicenceLeadsToThePageAboutTheFonts) {
  open();
  auto& licence = control<QLabel>(window, "LabLicence");
  QTest::mouseClick(&licence, Qt::LeftButton, {}, QPoint(20, licence.height() / 2));
  ASSERT_EQ(shell.requests.size(), 1U);
  EXPECT_EQ(shell.requests[0].operation, u"open");
  EXPECT_EQ(shell.requests[0].file, u"/nav/aide.html");
  EXPECT_EQ(shell.requests[0].show, ShowState::Maximised);
}

TEST_F(Barcode, AnErrorInAHandlerBecomesABox) {
  open();
  shell.throws = "panne";
  questions.answers = {Answer::Ok};
  Q_EMIT control<QLabel>(window, "LabLicence").linkActivated({});
  EXPECT_EQ(questions.boxes, std::vector<Box>({errorBox(u"LabLicence_Click", u"panne")}));
}

// --- Leaving and keys ---------------------------------------------------------------------------

TEST_F(Barcode, EscapeClosesItAndEnterDoesNothing) {
  open();
  type("txtSource", "12");
  for (const char* name : {"txtSource", "TxtSize", "OptType_2", "rtbCBar"}) {
    QTest::keyClick(&widget(name), Qt::Key_Return);
    EXPECT_TRUE(window.isVisible());
  }
  EXPECT_EQ(journal, Journal());
  EXPECT_TRUE(selectionsOffered.empty());
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
  window.show();
  EXPECT_EQ(shown("txtSource"), u"12");
}

TEST_F(Barcode, ItBeginsWithTheTextAndTheTabKeyGoesFromTheTypesDownToTheButtons) {
  open();
  EXPECT_EQ(window.focusWidget(), &box("txtSource"));
  const char* const order[] = {"OptType_2",
                               "CmdAideCodeBarre_0",
                               "CmdAideCodeBarre_1",
                               "CmdAideCodeBarre_2",
                               "CmdAideCodeBarre_3",
                               "txtSource",
                               "TxtAdd",
                               "TxtSize",
                               "txtCBar",
                               "TxtFont",
                               "CmdAideCodeBarre_4",
                               "rtbCBar",
                               "cmdPrint",
                               "cmdExport"};
  widget("OptType_2").setFocus();
  for (const char* name : order) {
    EXPECT_EQ(window.focusWidget()->objectName(), QString::fromLatin1(name));
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  }
}

// --- With the fonts -----------------------------------------------------------------------------

namespace {

class BarcodeSymbols : public Barcode {
 protected:
  void SetUp() override {
    if (!TAVROLLO_HAS_FONTS) GTEST_SKIP() << "built without the fonts";
  }

  QImage seen(double scale) {
    QWidget& viewport = *view().viewport();
    QImage image(viewport.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    viewport.render(&image);
    return image;
  }

  // The lengths of black and white in the middle line of the symbol, the outer white left out.
  static std::vector<int> runs(const QImage& image) {
    std::vector<int> lengths;
    QRgb before = qRgb(255, 255, 255);
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, image.height() / 2);
      if (pixel != before) {
        lengths.push_back(0);
        before = pixel;
      }
      if (!lengths.empty()) ++lengths.back();
    }
    if (!lengths.empty()) lengths.pop_back();
    return lengths;
  }

  int drag(const Text& text, std::size_t from, std::size_t to) {
    const SymbolPainter symbol(view().barFont(), text);
    const int module = wholeModule(moduleWidth(view().fontSize(), view().logicalDpiX()));
    const int left = (view().viewport()->width() - symbol.size().width() * module) / 2;
    const auto place = [&](std::size_t position) {
      return QPoint(left + symbol.left(position) * module + 1, 20);
    };
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, place(from));
    QTest::mouseMove(view().viewport(), place(to));
    QMouseEvent move(QEvent::MouseMove, place(to), view().viewport()->mapToGlobal(place(to)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(view().viewport(), &move);
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, place(to));
    return module;
  }
};

}  // namespace

TEST_F(BarcodeSymbols, EveryFontShowsWhatTheEncodersGive) {
  const struct {
    std::size_t option;
    TextView text;
  } rows[] = {
      {0, u"* $%+-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ*"},
      {1, u"* $%+-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ*"},
      {2, u"0123456789:ABCDEFGHIJKLMNOPQRST*abcdefghij+[\\"},
      {3, u"0123456789:ABCDEFGHIJKLMNOPQRST*abcdefghij+[\\"},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(BarFont(barcodeOptions()[row.option].font).canShow(row.text)) << row.option;
  }
  Text ascii;
  for (char16_t character = 32; character <= 126; ++character) ascii += character;
  for (char16_t character = 195; character <= 202; ++character) ascii += character;
  EXPECT_TRUE(BarFont(u"Code 2 of 5 interleaved").canShow(ascii.substr(1)));
  for (char16_t character = 203; character <= 206; ++character) ascii += character;
  EXPECT_TRUE(BarFont(u"Code 128").canShow(ascii));
  EXPECT_FALSE(BarFont(u"Code 128").canShow(u"\u00E9"));
  EXPECT_FALSE(BarFont(u"Code 3 de 9").canShow(u"*a*"));
}

TEST_F(BarcodeSymbols, GlyphsAreReadInWholeModules) {
  const BarFont font(u"Code EAN13");
  const BarFont::Glyph& zero = font.glyph(u'A');  // 0001101
  EXPECT_EQ(zero.advance, 7);
  EXPECT_EQ(zero.bars, std::vector<QRect>({QRect(3, -44, 2, 35), QRect(6, -44, 1, 35)}));
  EXPECT_FALSE(zero.label.isEmpty());
  const BarFont::Glyph& guard = font.glyph(u'*');  // 01010
  EXPECT_EQ(guard.bars, std::vector<QRect>({QRect(1, -44, 1, 40), QRect(3, -44, 1, 40)}));
  EXPECT_TRUE(guard.label.isEmpty());
  EXPECT_EQ(font.ascent(), 46);
  EXPECT_EQ(font.height(), 50);
}

TEST_F(BarcodeSymbols, EveryModuleIsTheSameWholeNumberOfDotsAtEveryScale) {
  window.resize(1200, 780);
  open();
  choose(5);
  type("txtSource", "Tav");
  const std::vector<int> widths = [&] {
    box("TxtSize").setText(QStringLiteral("18"));  // one dot to a module
    return runs(seen(1));
  }();
  ASSERT_EQ(widths.size(), 6U * 6U + 1U) << "start, three characters, check, stop";
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    for (const int size : {12, 17, 18, 25, 36, 41, 72}) {
      box("TxtSize").setText(QString::number(size));
      const QImage image = seen(scale);
      const int module = wholeModule(moduleWidth(size, view().logicalDpiX() * scale));
      std::vector<int> expected;
      for (const int width : widths) expected.push_back(width * module);
      EXPECT_EQ(runs(image), expected) << size << " at " << scale;
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, image.height() / 2);
        ASSERT_TRUE(pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255)) << size << " " << x;
      }
    }
  }
}

TEST_F(BarcodeSymbols, AQuietZoneIsAroundEverySymbol) {
  const BarFont font(u"Code 3 de 9");
  const SymbolPainter symbol(font, u"*A*");
  EXPECT_EQ(symbol.size(), QSize(2 * 10 + 3 * 16, 50));
  QImage image(symbol.size() * 2, QImage::Format_Grayscale8);
  image.fill(Qt::white);
  QPainter painter(&image);
  symbol.paint(painter, {}, 2);
  painter.end();
  for (int x = 0; x < 20; ++x) {
    EXPECT_EQ(image.pixel(x, 40), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(image.width() - 1 - x, 40), qRgb(255, 255, 255));
  }
  EXPECT_EQ(image.pixel(20, 40), qRgb(0, 0, 0));
}

TEST_F(BarcodeSymbols, AWideSymbolIsScrolledAndShowsItsEnds) {
  open();
  choose(0);
  box("txtSource").setText(QString(200, QLatin1Char('A')));
  QScrollBar& bar = *view().horizontalScrollBar();
  EXPECT_GT(bar.maximum(), 0);
  const int width = (202 * 16 + 20) * 2;
  EXPECT_EQ(bar.maximum(), width - view().viewport()->width());
  const QImage begin = seen(1);
  bar.setValue(bar.maximum());
  const QImage end = seen(1);
  EXPECT_EQ(begin.pixel(0, 40), qRgb(255, 255, 255));
  EXPECT_EQ(begin.pixel(20, 40), qRgb(0, 0, 0));
  EXPECT_EQ(end.pixel(end.width() - 23, 40), qRgb(0, 0, 0)) << "the last bar";
  EXPECT_EQ(end.pixel(end.width() - 1, 40), qRgb(255, 255, 255));
}

namespace {

int inkOf(const QImage& image) {
  int dark = 0;
  for (int x = 0; x < image.width(); ++x) {
    dark += image.pixel(x, image.height() / 2) == qRgb(0, 0, 0) ? 1 : 0;
  }
  return dark;
}

// A viewport whose screen can be changed for a finer one.
class MovingViewport : public QWidget {
 public:
  double dotsPerPixel = 1;

 protected:
  int metric(PaintDeviceMetric metric) const override {
    if (metric == PdmDevicePixelRatioScaled) {
      return static_cast<int>(std::lround(dotsPerPixel * devicePixelRatioFScale()));
    }
    return QWidget::metric(metric);
  }
};

}  // namespace

TEST_F(BarcodeSymbols, AFinerScreenHasTheScrollBarsOfItsModules) {
  open();
  choose(0);
  box("TxtSize").setText(QStringLiteral("30"));  // 1.67 dots are 2; of a screen of 1.75, 2.92 are 3
  auto* viewport = new MovingViewport;           // the view's from now on
  view().setViewport(viewport);
  box("txtSource").setText(QString(200, QLatin1Char('A')));
  const QScrollBar& bar = *view().horizontalScrollBar();
  const int modules = 202 * 16 + 20;
  ASSERT_EQ(bar.maximum(), modules * 2 - viewport->width());
  ASSERT_TRUE(waitUntil([&] { return bar.isVisible(); }));
  QApplication::processEvents();
  const QSize before = viewport->size();
  viewport->dotsPerPixel = 1.75;
  viewport->update();
  const int width = static_cast<int>(std::ceil(modules * 3 / 1.75));
  EXPECT_TRUE(waitUntil([&] { return bar.maximum() == width - viewport->width(); }))
      << bar.maximum();
  EXPECT_EQ(viewport->size(), before);
}

TEST_F(BarcodeSymbols, AVeryLargeSymbolIsShownUpToItsEnd) {
  open();
  choose(5);
  view().setText(Text(1'000'000, u'8'));
  view().setFontSize(2160);
  QScrollBar& bar = *view().horizontalScrollBar();
  const int modules = SymbolPainter(view().barFont(), view().text()).size().width();
  EXPECT_EQ(bar.maximum(), modules * 90 - view().viewport()->width());
  view().verticalScrollBar()->setValue(10 * 90);
  bar.setValue(bar.maximum());
  EXPECT_EQ(inkOf(seen(1)), 0) << "the quiet zone";
  bar.setValue(bar.maximum() - kQuietZone * 90);
  EXPECT_GT(inkOf(seen(1)), 0) << "the last character";
}

TEST_F(BarcodeSymbols, AVeryLongTextIsShownWhole) {
  open();
  choose(0);
  box("txtSource").setText(QString(32767, QLatin1Char('Z')));
  expectResult(u"*" + Text(32767, u'Z') + u"*");
}

// --- Selecting and copying ----------------------------------------------------------------------

TEST_F(BarcodeSymbols, DraggingSelectsCharacters) {
  open();
  choose(0);
  type("txtSource", "ABCD");
  const int module = drag(u"*ABCD*", 1, 3);
  EXPECT_EQ(view().selectedText(), u"AB");
  drag(u"*ABCD*", 4, 2);
  EXPECT_EQ(view().selectedText(), u"BC");
  const QImage image = seen(1);
  int marked = 0;
  for (int x = 0; x < image.width(); ++x) {
    const QRgb pixel = image.pixel(x, image.height() / 2);
    if (pixel != qRgb(0, 0, 0) && pixel != qRgb(255, 255, 255)) ++marked;
  }
  EXPECT_EQ(marked, 2 * 7 * module) << "the spaces of two characters are seen to be selected";
  type("txtSource", "X");
  EXPECT_EQ(view().selectedText(), u"");
}

TEST_F(BarcodeSymbols, KeysSelectAndCopyWithTheFont) {
  open();
  choose(2);
  type("txtSource", "1234");
  type("TxtAdd", "12");
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&view(), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(view().selectedText(), u"0A");
  QTest::keyClick(&view(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(view().selectedText(), u"0");
  QTest::keyClick(&view(), Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(view().selectedText(), view().text());
  QTest::keyClick(&view(), Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(view().selectedText(), u"");
  QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_EQ(fromQt(copied->text()), u"0AAAAAA*abcdei+[B\\C");
  EXPECT_EQ(copied->data(QStringLiteral("text/rtf")).toStdString(),
            copiedRtf(u"0AAAAAA*abcdei+[B\\C", u"Code EAN13", 36));
}

// --- Pictures -----------------------------------------------------------------------------------

TEST_F(BarcodeSymbols, PicturesAreOfferedWhereThereIsASymbol) {
  open();
  EXPECT_FALSE(widget("cmdSaveImage").isEnabled());
  EXPECT_FALSE(widget("cmdCopyImage").isEnabled());
  type("txtSource", "1");
  EXPECT_TRUE(widget("cmdSaveImage").isEnabled());
  EXPECT_TRUE(widget("cmdCopyImage").isEnabled());
}

TEST_F(BarcodeSymbols, APictureIsSavedInTheFormatOfItsName) {
  open();
  choose(0);
  type("txtSource", "A");
  questions.newFiles = {scratch.text("a.png"), scratch.text("a.svg"), std::nullopt};
  for (int i = 0; i < 3; ++i) click("cmdSaveImage");
  EXPECT_EQ(questions.saveRequests.size(), 3U);
  EXPECT_EQ(questions.saveRequests.front(), pictureSaveRequest());
  EXPECT_EQ(scratch.entries(), 2U);

  const QImage png(toQt(scratch.text("a.png")));
  EXPECT_EQ(png.size(), QSize(68, 50) * 6) << "36 points at 300 dots to the inch";
  EXPECT_NEAR(png.dotsPerMeterX(), 288 / 0.0254, 1);
  QSvgRenderer svg(toQt(scratch.text("a.svg")));
  ASSERT_TRUE(svg.isValid());
  EXPECT_EQ(svg.viewBox().size(), QSize(68, 50) * 15);
  EXPECT_NE(scratch.read("a.svg").find("width=\"35.98"), std::string::npos) << "in millimetres";
}

TEST_F(BarcodeSymbols, APictureThatCannotBeWrittenOrMadeIsTold) {
  open();
  choose(0);
  type("txtSource", "A");
  questions.newFiles = {scratch.text("nowhere/a.png"), scratch.text("a.png")};
  questions.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
  click("cmdSaveImage");
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_TRUE(questions.boxes[0].text.starts_with(u"Erreur dans cmdSaveImage_Click\r\n"));

  box("txtSource").setText(QString(3000, QLatin1Char('A')));
  const Text tooLong = failures::barcodeTooLarge().description;
  click("cmdSaveImage");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdSaveImage_Click", tooLong));
  click("cmdCopyImage");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdCopyImage_Click", tooLong));
}

TEST_F(BarcodeSymbols, APictureHasNoMoreDotsThanOtherProgramsRead) {
  open();
  type("txtSource", "x");
  type("TxtAdd", "12");
  expectResult(u"[B\\C");
  box("TxtSize").setText(QStringLiteral("2160"));
  questions.newFiles = {scratch.text("a.svg")};
  click("cmdSaveImage");
  QSvgRenderer svg(toQt(scratch.text("a.svg")));
  ASSERT_TRUE(svg.isValid());
  const QSize symbol = SymbolPainter(view().barFont(), view().text()).size();
  ASSERT_GT(symbol.height(), symbol.width());
  EXPECT_EQ(svg.viewBox().size(), symbol * (32767 / symbol.height()));

  box("TxtSize").setText(QStringLiteral("1080"));
  click("cmdCopyImage");
  const QSize copied = QApplication::clipboard()->image().size();
  const int module = copied.height() / symbol.height();
  const auto area = [&](int dots) { return symbol.width() * symbol.height() * dots * dots; };
  EXPECT_EQ(copied, symbol * module);
  EXPECT_LE(area(module), 32'000'000);
  EXPECT_GT(area(module + 1), 32'000'000);
}

TEST_F(BarcodeSymbols, ThePictureIsCopied) {
  open();
  choose(0);
  type("txtSource", "A");
  click("cmdCopyImage");
  EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(68, 50) * 6);
}

// --- Printing -----------------------------------------------------------------------------------

TEST_F(BarcodeSymbols, PrintingOffersTheSelectionWhereThereIsOne) {
  open();
  type("txtSource", "1234");
  click("cmdPrint");
  EXPECT_TRUE(scratch.read("page.pdf").starts_with("%PDF"));
  view().selectAll();
  click("cmdPrint");
  EXPECT_EQ(selectionsOffered, std::vector<bool>({false, true}));
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(BarcodeSymbols, OnlyTheSelectionIsPrintedWhenItIsAskedFor) {
  open();
  choose(0);
  type("txtSource", "ABCDEFGH");
  const auto bars = [&] {
    click("cmdPrint");
    EXPECT_EQ(QProcess::execute(QStringLiteral("pdftoppm"),
                                {QStringLiteral("-png"), QStringLiteral("-singlefile"),
                                 QStringLiteral("-r"), QStringLiteral("144"),
                                 toQt(scratch.text("page.pdf")), toQt(scratch.text("page"))}),
              0);
    QImage page(toQt(scratch.text("page.png")));
    int dark = 0;
    const int line = page.height() / 12;
    for (int x = 1; x < page.width(); ++x) {
      const bool begins = qGray(page.pixel(x, line)) < 128 && qGray(page.pixel(x - 1, line)) >= 128;
      dark += begins ? 1 : 0;
    }
    return dark;
  };
  EXPECT_EQ(bars(), 10 * 5);
  drag(u"*ABCDEFGH*", 1, 3);
  EXPECT_EQ(bars(), 10 * 5) << "the user asked for everything";
  printsSelection = true;
  EXPECT_EQ(bars(), 2 * 5);
}

namespace {

// The printed page, seen at a dot to each quarter of a point.
class BarcodePrint : public BarcodeSymbols {
 protected:
  static constexpr int kDots = 4;  // to a point

  // The place of all ink, in points from the upper left corner of the page.
  QRectF ink() {
    click("cmdPrint");
    const QString pdf = toQt(scratch.text("page.pdf"));
    EXPECT_EQ(QProcess::execute(QStringLiteral("pdftoppm"),
                                {QStringLiteral("-gray"), QStringLiteral("-r"),
                                 QString::number(72 * kDots), pdf, toQt(scratch.text("sheet"))}),
              0);
    EXPECT_EQ(scratch.entries(), 2U) << "one file for each page, and the document";
    const QImage page(toQt(scratch.text("sheet-1.pgm")));
    QRect dark;
    for (int y = 0; y < page.height(); ++y) {
      for (int x = 0; x < page.width(); ++x) {
        if (qGray(page.pixel(x, y)) < 128) dark |= QRect(x, y, 1, 1);
      }
    }
    return {QPointF(dark.topLeft()) / kDots, QSizeF(dark.size()) / kDots};
  }

  // The same of the symbol alone, in modules from its own corner.
  QRectF inkOfSymbol() {
    const BarFont& font = view().barFont();
    QRectF all;
    int x = kQuietZone;
    for (const char16_t character : view().text()) {
      const BarFont::Glyph& glyph = font.glyph(character);
      for (const QRect& bar : glyph.bars) all |= QRectF(bar).translated(x, font.ascent());
      if (!glyph.label.isEmpty()) {
        all |= glyph.label.boundingRect().translated(x, font.ascent());
      }
      x += glyph.advance;
    }
    return all;
  }

  // Fails unless the symbol stands on the page with modules of `module` points.
  void expectPrinted(double module) {
    const QRectF printed = ink();
    const QRectF wanted = inkOfSymbol();
    const double tolerance = 1.5 / kDots;
    EXPECT_NEAR(printed.left(), printable.left() + wanted.left() * module, tolerance);
    EXPECT_NEAR(printed.top(), printable.top() + 12 + wanted.top() * module, tolerance);
    EXPECT_NEAR(printed.width(), wanted.width() * module, tolerance);
    EXPECT_NEAR(printed.height(), wanted.height() * module, tolerance);
    EXPECT_TRUE(printable.contains(printed));
  }
};

}  // namespace

TEST_F(BarcodePrint, OnePageHasAnEmptyLineAndBelowItTheSymbolInItsSize) {
  open();
  choose(0);
  type("txtSource", "TAVROLLO");
  expectPrinted(1.5);
  type("TxtSize", "24");
  expectPrinted(17.0 / 1200 * 72);  // whole dots of 1200 to the inch
}

TEST_F(BarcodePrint, WhatIsTooHighOrTooWideForThePageGetsSmaller) {
  open();
  type("txtSource", "12");
  paper = {62, 29};
  // 26 mm and less the empty line are 1028 dots, of which each of 50 modules has 20.
  expectPrinted(20.0 / 1200 * 72);
  paper = {40, 90};
  // 37 mm are 1748 dots, of which each of the symbol's modules has its part.
  const int modules = SymbolPainter(view().barFont(), view().text()).size().width();
  expectPrinted(1748 / modules / 1200.0 * 72);  // NOLINT(bugprone-integer-division)
}

TEST_F(BarcodePrint, NothingIsPrintedOnPaperThatIsTooLow) {
  open();
  type("txtSource", "12");
  paper = {62, 13};
  questions.answers = {Answer::Ok};
  click("cmdPrint");
  EXPECT_EQ(questions.boxes,
            std::vector<Box>({errorBox(u"cmdPrint", failures::barcodeTooLarge().description)}));
  EXPECT_EQ(scratch.entries(), 0U);
}

TEST_F(BarcodeSymbols, ACancelledPrintIsTold) {
  open();
  cancelsPrinting = true;
  questions.answers = {Answer::Ok};
  click("cmdPrint");
  EXPECT_EQ(questions.boxes,
            std::vector<Box>({errorBox(u"cmdPrint", failures::printingCancelled().description)}));
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(scratch.entries(), 0U);
}

TEST_F(BarcodeSymbols, WhatThePageCannotHoldIsNotPrinted) {
  open();
  choose(0);
  questions.answers = {Answer::Ok, Answer::Ok};
  box("txtSource").setText(QString(1000, QLatin1Char('A')));
  click("cmdPrint");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdPrint", failures::barcodeTooLarge().description));
  EXPECT_EQ(scratch.entries(), 0U);

  scratch.makeFolders("page.pdf");
  type("txtSource", "A");
  click("cmdPrint");
  EXPECT_EQ(questions.boxes.back(), errorBox(u"cmdPrint", failures::printerRefused().description));
}

TEST(PrintDialog, HasNoPageNumbersAndTheSelectionWhereThereIsOne) {
  for (const bool hasSelection : {false, true}) {
    QPrinter printer;
    QPrintDialog dialog(&printer);
    preparePrintDialog(dialog, hasSelection);
    EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
    EXPECT_EQ(dialog.testOption(QAbstractPrintDialog::PrintSelection), hasSelection);
    EXPECT_EQ(dialog.printRange(),
              hasSelection ? QAbstractPrintDialog::Selection : QAbstractPrintDialog::AllPages);
  }
}

TEST(PrintDialog, IsTheAnswerOfTheUser) {
  for (const bool accepts : {false, true}) {
    QPrinter printer;
    printer.setOutputFileName(QStringLiteral("/dev/null"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
      if (!dialog) return;
      look.stop();
      dialog->done(accepts ? QDialog::Accepted : QDialog::Rejected);
    });
    look.start(10);
    EXPECT_EQ(choosePrinter(printer, false), accepts);
  }
}

// --- Without the fonts --------------------------------------------------------------------------

TEST_F(Barcode, WithoutItsFontASymbolIsNeitherShownNorPrinted) {
  const BarFont font(u"Code inconnu");
  EXPECT_FALSE(font.isThere());
  EXPECT_TRUE(SymbolPainter(font, u"*A*").isEmpty());
  open();
  view().setText(u"*A*");
  view().setFontFamily(u"Code inconnu");
  const QImage seen = view().viewport()->grab().toImage();
  QImage blank(seen.size(), seen.format());
  blank.fill(Qt::white);
  EXPECT_NE(seen, blank) << "it says what is missing";
  questions.answers = {Answer::Ok};
  click("cmdPrint");
  EXPECT_EQ(questions.boxes.back(),
            errorBox(u"cmdPrint", failures::missingFont(u"Code inconnu").description));
  EXPECT_TRUE(selectionsOffered.empty());
}
