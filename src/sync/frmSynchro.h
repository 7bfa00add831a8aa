// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QWidget>
#include <array>
#include <memory>

#include "sync/FolderSync.h"
#include "sync/SynchroSurroundings.h"
#include "sync/qt/DefilerGrille.h"
#include "sync/qt/DifferenceGridModel.h"

namespace Ui {
class frmSynchro;
}

class QLabel;

// The synchronisation's window: the backup folder is chosen, compared with the user's files and
// brought in step. It is left by its own button alone. One window is one opening.
class frmSynchro : public QWidget, private SyncProgress {
  Q_OBJECT

 public:
  explicit frmSynchro(SynchroSurroundings surroundings);
  ~frmSynchro() override;

  // The load handler, to be called once; it may ask for a folder.
  void Form_Load();

  // From the load to cmdClose.
  bool isOpen() const { return open_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void Form_Resize();
  void cmdPath_Click();
  void cmdOpen_Click();
  void cmdCompare_Click();
  void cmdSynchro_Click();
  void cmdClose_Click();
  void MouseEvent1_Wheel(const QWheelEvent& event);

  bool listing(Side side, const Text& folder, std::size_t files) override;
  bool copying(std::size_t row, std::uint64_t bytes) override;
  void waiting() override;
  void trace(const Text& line) override;

  class Busy;
  void connectControls();
  void compare();
  void startComparison();
  void showOutcome(FolderSync::Outcome outcome);
  void showSide(std::size_t element, const Text& root, const Listing& listing);
  void showFolder(std::size_t element, const Text& folder);
  void yield();

  SynchroSurroundings to_;
  std::unique_ptr<Ui::frmSynchro> ui_;
  std::array<QLabel*, 3> labDir_;
  std::array<QLabel*, 3> labNbre_;  // none is element 0
  FolderSync sync_;
  DifferenceGridModel model_;
  WheelNotches notches_;
  QElapsedTimer sinceYield_;
  Text lastFolder_[3];
  bool open_ = false;
};
