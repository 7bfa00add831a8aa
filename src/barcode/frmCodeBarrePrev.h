// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "barcode/BarcodeSurroundings.h"

namespace Ui {
class frmCodeBarrePrev;
}

class QPrinter;
class SymbolPainter;

// The barcode window: a text is typed, a type chosen, and the symbol shows at once, to be printed,
// exported and copied. It is hidden, never destroyed.
class frmCodeBarrePrev : public QDialog {
  Q_OBJECT

 public:
  // Shows the print dialog; false when the user cancels it.
  using PrinterChoice = std::function<bool(QPrinter&, bool hasSelection)>;

  frmCodeBarrePrev(BarcodeSurroundings surroundings, PrinterChoice CommonDialog1);
  ~frmCodeBarrePrev() override;

  // The load handler, to be called once.
  void Form_Load();

 private:
  void OptType_Click(int index);
  void txtSource_Change();
  void TxtAdd_Change();
  void chkKey25i_Click();
  void TxtSize_Change();
  void CmdAideCodeBarre_Click(int index);
  void cmdExport_Click();
  void cmdPrint_Click();
  void cmdSaveImage_Click();
  void cmdCopyImage_Click();
  void LabLicence_Click();

  void connectControls();
  void guardedly(TextView procedure, const std::function<void()>& body);
  void tell(TextView procedure, const Failure& failure);
  SymbolPainter symbol(const Text& text) const;

  BarcodeSurroundings to_;
  PrinterChoice CommonDialog1_;
  std::unique_ptr<Ui::frmCodeBarrePrev> ui_;
  std::uint8_t type_ = 0;  // CodeBar's
  Text result_;            // of the last keystroke; the next one uses its room again
};
