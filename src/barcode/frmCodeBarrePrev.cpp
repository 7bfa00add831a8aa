// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/frmCodeBarrePrev.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPrinter>

#include "barcode/BarcodeOptions.h"
#include "barcode/BarcodeRtf.h"
#include "barcode/BarcodeTexts.h"
#include "barcode/PictureFile.h"
#include "barcode/qt/SymbolPainter.h"
#include "barcode/qt/SymbolPicture.h"
#include "barcode/qt/SymbolPrint.h"
#include "platform/Files.h"
#include "platform/Guarded.h"
#include "platform/qt/Centre.h"
#include "platform/qt/PastedLines.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ReturnKey.h"
#include "ui_frmCodeBarrePrev.h"

namespace {

constexpr int kEan13Option = 2;

}  // namespace

frmCodeBarrePrev::frmCodeBarrePrev(BarcodeSurroundings surroundings, PrinterChoice CommonDialog1)
    : to_(std::move(surroundings)),
      CommonDialog1_(std::move(CommonDialog1)),
      ui_(std::make_unique<Ui::frmCodeBarrePrev>()) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  cutPastedLines(*this);
  connectControls();
}

frmCodeBarrePrev::~frmCodeBarrePrev() = default;

void frmCodeBarrePrev::connectControls() {
  // What goes wrong in a handler becomes a box that names it.
  const auto on = [this](auto* control, auto signal, TextView name, auto handler) {
    connect(control, signal, this,
            [this, procedure = Text(name), handler] { guardedly(procedure, handler); });
  };
  QRadioButton* const options[] = {ui_->OptType_0, ui_->OptType_1, ui_->OptType_2,
                                   ui_->OptType_3, ui_->OptType_4, ui_->OptType_5};
  for (int index = 0; QRadioButton * option : options) {
    on(option, &QRadioButton::toggled, u"OptType_Click", [this, option, index] {
      if (option->isChecked()) OptType_Click(index);
    });
    ++index;
  }
  QPushButton* const helpButtons[] = {ui_->CmdAideCodeBarre_0, ui_->CmdAideCodeBarre_1,
                                      ui_->CmdAideCodeBarre_2, ui_->CmdAideCodeBarre_3,
                                      ui_->CmdAideCodeBarre_4};
  constexpr auto kClicked = &QPushButton::clicked;
  for (int index = 0; QPushButton * button : helpButtons) {
    on(button, kClicked, u"CmdAideCodeBarre_Click",
       [this, index] { CmdAideCodeBarre_Click(index); });
    ++index;
  }
  constexpr auto kChanged = &QLineEdit::textChanged;
  on(ui_->txtSource, kChanged, u"txtSource_Change", [this] { txtSource_Change(); });
  on(ui_->TxtAdd, kChanged, u"TxtAdd_Change", [this] { TxtAdd_Change(); });
  on(ui_->TxtSize, kChanged, u"TxtSize_Change", [this] { TxtSize_Change(); });
  on(ui_->chkKey25i, &QCheckBox::toggled, u"chkKey25i_Click", [this] { chkKey25i_Click(); });
  on(ui_->cmdExport, kClicked, u"cmdExport_Click", [this] { cmdExport_Click(); });
  on(ui_->cmdPrint, kClicked, u"cmdPrint", [this] { cmdPrint_Click(); });
  on(ui_->cmdSaveImage, kClicked, u"cmdSaveImage_Click", [this] { cmdSaveImage_Click(); });
  on(ui_->cmdCopyImage, kClicked, u"cmdCopyImage_Click", [this] { cmdCopyImage_Click(); });
  on(ui_->LabLicence, &QLabel::linkActivated, u"LabLicence_Click", [this] { LabLicence_Click(); });
}

void frmCodeBarrePrev::guardedly(TextView procedure, const std::function<void()>& body) {
  guarded(to_.questions, procedure, body);
}

void frmCodeBarrePrev::tell(TextView procedure, const Failure& failure) {
  if (failure) to_.questions.ask(errorBox(procedure, failure.description));
}

void frmCodeBarrePrev::Form_Load() {
  centre(*this);
  ui_->OptType_2->setChecked(true);
  OptType_Click(kEan13Option);
  ui_->rtbCBar->setFontSize(kUsualFontSize);
  // What everybody begins with, though it is not the first in the order.
  ui_->txtSource->setFocus();
}

void frmCodeBarrePrev::OptType_Click(int index) {
  const BarcodeOption& option = barcodeOptions()[static_cast<std::size_t>(index)];
  type_ = option.type;
  ui_->TxtFont->setText(toQt(option.shownFont));
  ui_->TxtAdd->setVisible(option.hasAddOn);
  ui_->LabAdd->setVisible(option.hasAddOn);
  ui_->chkKey25i->setVisible(option.hasCheckBox);
  ui_->rtbCBar->setFontFamily(option.font);
  TxtSize_Change();
  txtSource_Change();
}

void frmCodeBarrePrev::txtSource_Change() {
  const QString source = ui_->txtSource->text();
  const QString addOn = ui_->TxtAdd->text();
  result_.clear();
  guardedly(u"fonction CodeBar()", [&] {
    to_.encode(result_, type_, viewOf(source), viewOf(addOn), ui_->chkKey25i->isChecked());
  });
  ui_->txtCBar->setText(toQt(result_));
  ui_->rtbCBar->setText(fromQt(ui_->txtCBar->text()));
  ui_->rtbCBar->setAccessibleDescription(ui_->txtCBar->text());
  const bool hasSymbol = !symbol(ui_->rtbCBar->text()).isEmpty();
  ui_->cmdSaveImage->setEnabled(hasSymbol);
  ui_->cmdCopyImage->setEnabled(hasSymbol);
}

void frmCodeBarrePrev::TxtAdd_Change() { txtSource_Change(); }

void frmCodeBarrePrev::chkKey25i_Click() { txtSource_Change(); }

void frmCodeBarrePrev::TxtSize_Change() {
  const auto size = typedFontSize(fromQt(ui_->TxtSize->text()), to_.locale);
  if (size) ui_->rtbCBar->setFontSize(*size);
}

void frmCodeBarrePrev::CmdAideCodeBarre_Click(int index) {
  if (const auto box = barcodeHelpBox(index, to_.fontPage())) to_.questions.ask(*box);
}

void frmCodeBarrePrev::cmdExport_Click() {
  const Text path = exportPath(to_.programFolder);
  Failure failure = replaceFile(path, exportedRtf(fromQt(ui_->txtCBar->text())));
  if (!failure) failure = to_.shell.startCommandLine(u"write " + path);
  tell(u"cmdExport_Click", failure);
}

void frmCodeBarrePrev::cmdPrint_Click() {
  const BarFont& font = ui_->rtbCBar->barFont();
  if (!font.isThere()) return tell(u"cmdPrint", failures::missingFont(font.family()));
  const Text selected = ui_->rtbCBar->selectedText();
  QPrinter printer(QPrinter::HighResolution);
  if (!CommonDialog1_(printer, !selected.empty())) {
    return tell(u"cmdPrint", failures::printingCancelled());
  }
  const bool onlySelected = printer.printRange() == QPrinter::Selection && !selected.empty();
  tell(u"cmdPrint", printSymbol(printer, symbol(onlySelected ? selected : ui_->rtbCBar->text()),
                                ui_->rtbCBar->fontSize()));
}

void frmCodeBarrePrev::cmdSaveImage_Click() {
  const std::optional<Text> path = to_.questions.chooseNewFile(pictureSaveRequest());
  if (!path) return;
  const QByteArray bytes =
      symbolPicture(symbol(ui_->rtbCBar->text()), ui_->rtbCBar->fontSize(), pictureFormat(*path));
  const auto size = static_cast<std::size_t>(bytes.size());
  tell(u"cmdSaveImage_Click", bytes.isEmpty() ? failures::barcodeTooLarge()
                                              : replaceFile(*path, {bytes.constData(), size}));
}

void frmCodeBarrePrev::cmdCopyImage_Click() {
  const QImage image = symbolImage(symbol(ui_->rtbCBar->text()), ui_->rtbCBar->fontSize());
  if (image.isNull()) return tell(u"cmdCopyImage_Click", failures::barcodeTooLarge());
  QGuiApplication::clipboard()->setImage(image);
}

void frmCodeBarrePrev::LabLicence_Click() {
  to_.shell.ShellExecute(
      {.operation = u"open", .file = to_.fontPage(), .show = ShowState::Maximised});
}

SymbolPainter frmCodeBarrePrev::symbol(const Text& text) const {
  return {ui_->rtbCBar->barFont(), text};
}
