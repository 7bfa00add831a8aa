// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/frmSynchro.h"

#include <QCloseEvent>
#include <QScrollBar>
#include <algorithm>

#include "config/ConfigFile.h"
#include "platform/Guarded.h"
#include "platform/qt/Centre.h"
#include "platform/qt/ClickHandler.h"
#include "platform/qt/PastedLines.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ReturnKey.h"
#include "sync/BackupFolder.h"
#include "sync/SyncPaths.h"
#include "sync/SyncTexts.h"
#include "sync/SynchroLayout.h"
#include "sync/modBrowseForFolder.h"
#include "sync/qt/DifferenceGridView.h"
#include "sync/qt/modControlBox.h"
#include "text/Paths.h"
#include "ui_frmSynchro.h"
#include "windows/qt/Assets.h"

namespace {

// Work reports more often than anybody can see.
constexpr qint64 kYieldMilliseconds = 15;

constexpr std::size_t kStatus = 0;
constexpr std::size_t kSource = 1;
constexpr std::size_t kBackup = 2;

constexpr std::size_t elementOf(Side side) { return side == Side::Source ? kSource : kBackup; }

void moveTo(QWidget& control, double left, double top) {
  control.move(pixelsFromTwips(left), pixelsFromTwips(top));
}

void moveLeft(QWidget& control, double left) { control.move(pixelsFromTwips(left), control.y()); }

QPixmap sidePicture(TextView key) { return imageOfKey(key).pixmap(24, 24); }

}  // namespace

// While it lives, nothing that would come between is begun: the work lets events in.
class frmSynchro::Busy {
 public:
  Busy(frmSynchro& window, std::initializer_list<QWidget*> waiting)
      : window_(window), waiting_(waiting), focus_(window.focusWidget()) {
    window_.sinceYield_.invalidate();
    if (focus_) focus_->clearFocus();  // else it goes on to whatever comes next
    for (QWidget* control : waiting_) control->setEnabled(false);
  }
  ~Busy() {
    window_.ui_->ProgressBar->hide();
    for (QWidget* control : waiting_) control->setEnabled(true);
    if (focus_ && !window_.focusWidget()) focus_->setFocus();
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  frmSynchro& window_;
  std::vector<QWidget*> waiting_;
  QWidget* focus_;
};

frmSynchro::frmSynchro(SynchroSurroundings surroundings)
    : to_(std::move(surroundings)),
      ui_(std::make_unique<Ui::frmSynchro>()),
      sync_(to_.questions, *this),
      model_(sync_, to_.locale) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  cutPastedLines(*this);
  labDir_ = {ui_->labDir_0, ui_->labDir_1, ui_->labDir_2};
  labNbre_ = {nullptr, ui_->labNbre_1, ui_->labNbre_2};
  ui_->cmdPath->setIcon(imageOfKey(u"backup"));
  ui_->cmdOpen->setIcon(imageOfKey(u"explorer"));
  // The boxes of both rows begin at one line.
  ui_->Label2->setMinimumWidth(ui_->Label1->sizeHint().width());
  // Nothing moves when the button comes.
  QSizePolicy policy = ui_->cmdSynchro->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  ui_->cmdSynchro->setSizePolicy(policy);
  ui_->Picture1_2->setPixmap(sidePicture(u"webUser"));
  ui_->Picture1_3->setPixmap(sidePicture(u"backup"));
  ui_->Grid->setModel(&model_);
  connectControls();
}

frmSynchro::~frmSynchro() = default;

void frmSynchro::connectControls() {
  Questions& ask = to_.questions;
  onClick(ui_->cmdPath, this, ask, u"cmdPath_Click", [this] { cmdPath_Click(); });
  onClick(ui_->cmdOpen, this, ask, u"cmdOpen_Click", [this] { cmdOpen_Click(); });
  onClick(ui_->cmdCompare, this, ask, u"cmdCompare_Click", [this] { cmdCompare_Click(); });
  onClick(ui_->cmdSynchro, this, ask, u"cmdSynchro_Click", [this] { cmdSynchro_Click(); });
  onClick(ui_->cmdClose, this, ask, u"cmdClose_Click", [this] { cmdClose_Click(); });
}

// --- The window ---------------------------------------------------------------------------------

void frmSynchro::Form_Load() {
  open_ = true;
  setMinimumSize(pixelsFromTwips(kSynchroWidth), pixelsFromTwips(kSynchroHeight));
  ui_->Grid->viewport()->installEventFilter(this);
  ui_->Grid->verticalScrollBar()->installEventFilter(this);
  EnleverFermer(*this);
  if (!isBackupFolder(to_.settings.backupPath)) {
    to_.settings.backupPath = homeDriveRoot(drivePlaces());
    ui_->txtPath->setText(toQt(to_.settings.backupPath));
    guarded(to_.questions, u"cmdPath_Click", [this] { cmdPath_Click(); });
  }
  ui_->cmdOpen->show();
  centre(*this);
  ui_->txtPath->setText(toQt(AjouterAntislash(to_.settings.backupPath)));
  setUpDifferenceGrid(*ui_->Grid, to_.locale);
}

void frmSynchro::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Form_Resize();
}

// The window system keeps the window from getting smaller than it was drawn.
void frmSynchro::Form_Resize() {
  const Twips wider = std::max(0, twipsFromPixels(width() - pixelsFromTwips(kSynchroWidth)));
  const Twips higher = std::max(0, twipsFromPixels(height() - pixelsFromTwips(kSynchroHeight)));
  const SynchroLayout to = synchroLayout(wider, higher);
  moveLeft(*ui_->labNbre_2, to.backupCountLeft);
  moveLeft(*ui_->Picture1_1, to.backupPictureLeft);
  moveLeft(*ui_->Picture1_3, to.backupFolderLeft);
  moveLeft(*ui_->labDir_2, to.backupFolderLeft);
  moveTo(*ui_->cmdClose, to.closeLeft, to.closeTop);
  moveTo(*ui_->labIdem, to.outcomeLeft, to.outcomeTop);
  ui_->Grid->resize(pixelsFromTwips(to.gridWidth), pixelsFromTwips(to.gridHeight));
  ui_->Grid->setColumnWidth(kSourceColumn, pixelsFromTwips(to.pathColumnWidth));
  ui_->Grid->setColumnWidth(kBackupColumn, pixelsFromTwips(to.pathColumnWidth));

  // What has no place of its own fills the room between the others.
  const int margin = ui_->Grid->x();
  const int sideWidth = width() - margin - ui_->Picture1_1->x();
  ui_->top->resize(width() - 2 * margin, ui_->top->height());
  for (QWidget* side : {ui_->Picture1_0, ui_->Picture1_1}) side->resize(sideWidth, side->height());
  const int folderWidth = sideWidth - 2 * (ui_->labDir_2->x() - ui_->Picture1_1->x());
  for (QWidget* folder : {ui_->labDir_1, ui_->labDir_2}) {
    folder->resize(folderWidth, folder->height());
  }
  ui_->labReport->setGeometry(margin, ui_->labIdem->y(), ui_->labIdem->x() - 2 * margin,
                              ui_->labIdem->height());
  ui_->ProgressBar->setGeometry(ui_->labReport->geometry());
}

void frmSynchro::wheelEvent(QWheelEvent* event) { MouseEvent1_Wheel(*event); }

bool frmSynchro::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Wheel) return QWidget::eventFilter(watched, event);
  const auto& wheel = static_cast<const QWheelEvent&>(*event);
  if (wheel.angleDelta().y() == 0) return false;  // sideways
  MouseEvent1_Wheel(wheel);
  return true;
}

void frmSynchro::MouseEvent1_Wheel(const QWheelEvent& event) {
  constexpr std::uint8_t kRowsPerNotch = 3;
  int notches = notches_.add(event);
  for (; notches > 0; --notches) DefilerGrille(1, kRowsPerNotch, *ui_->Grid);
  for (; notches < 0; ++notches) DefilerGrille(-1, kRowsPerNotch, *ui_->Grid);
}

// From the title bar, from the keyboard, from the desktop: only cmdClose leaves the window.
void frmSynchro::closeEvent(QCloseEvent* event) { event->ignore(); }

void frmSynchro::cmdClose_Click() {
  FolderSync::removeTravellingTable(webApplicationRoot(to_.settings.shortcutPath));
  open_ = false;
  hide();
  to_.restartWatching();
}

// --- The backup folder --------------------------------------------------------------------------

void frmSynchro::cmdPath_Click() {
  const Text path = ChoisirDossier(u"Synchroniser : Répertoire de la sauvegarde :",
                                   to_.settings.backupPath, to_.questions);
  ui_->txtPath->setText(toQt(path));
  to_.settings.backupPath = path;
  RecConfig(to_.programFolder, to_.settings, to_.locale, to_.questions);
}

void frmSynchro::cmdOpen_Click() {
  const Text& path = to_.settings.backupPath;
  if (!isBackupFolder(path)) {
    to_.questions.ask(backupFolderMissingBox(path));
    return;
  }
  const Failure failure = to_.shell.startCommandLine(u"explorer " + path);
  if (failure) to_.questions.ask(errorBox(u"cmdOpen_Click", failure.description));
}

// --- Comparing ----------------------------------------------------------------------------------

void frmSynchro::cmdCompare_Click() {
  ui_->labReport->clear();
  compare();
  if (sync_.notCompared() > 0) {
    ui_->labReport->setText(toQt(notComparedLine(sync_.notCompared())));
  }
}

void frmSynchro::compare() {
  FolderSync::Outcome outcome = FolderSync::Outcome::Stopped;
  {
    const Busy busy(*this, {ui_->cmdPath, ui_->txtPath, ui_->cmdCompare, ui_->cmdSynchro,
                            ui_->cmdClose, ui_->labNbre_1, ui_->labNbre_2});
    startComparison();
    const Text webRoot = webApplicationRoot(to_.settings.shortcutPath);
    outcome = sync_.compare(webRoot, fromQt(ui_->txtPath->text()), fromQt(ui_->txtFiltre->text()));
  }
  model_.show();
  showOutcome(outcome);
}

void frmSynchro::startComparison() {
  ui_->Grid->hide();
  ui_->cmdSynchro->hide();
  ui_->labIdem->clear();
  model_.hide();
  for (const std::size_t element : {kSource, kBackup}) {
    lastFolder_[element].clear();
    labDir_[element]->clear();
    labNbre_[element]->setText(toQt(kNothingListed));
  }
}

void frmSynchro::showOutcome(FolderSync::Outcome outcome) {
  if (outcome == FolderSync::Outcome::Refused || outcome == FolderSync::Outcome::Stopped) return;
  const Text webRoot = webApplicationRoot(to_.settings.shortcutPath);
  showSide(kSource, userFilesRoot(webRoot), sync_.source());
  showSide(kBackup, AjouterAntislash(fromQt(ui_->txtPath->text())), sync_.backup());
  labDir_[kStatus]->setText(toQt(kListingDone));
  const bool different = outcome == FolderSync::Outcome::Different;
  if (different) ui_->labIdem->setText(toQt(kCloseWithoutSync));
  if (outcome == FolderSync::Outcome::Identical) {
    ui_->labIdem->setText(toQt(identicalText(sync_.isFirstComparison())));
  }
  ui_->Grid->setVisible(different);
  ui_->cmdSynchro->setVisible(different);
}

void frmSynchro::showSide(std::size_t element, const Text& root, const Listing& listing) {
  showFolder(element, lastFolder_[element].empty() ? root : lastFolder_[element]);
  if (listing.rootMissing) return;
  labNbre_[element]->setText(toQt(resultText(listing.files.size())));
}

void frmSynchro::showFolder(std::size_t element, const Text& folder) {
  labDir_[element]->setText(toQt(folder));
}

// --- Synchronising ------------------------------------------------------------------------------

void frmSynchro::cmdSynchro_Click() {
  SyncReport report;
  {
    const Busy busy(*this, {ui_->cmdCompare, ui_->cmdSynchro, ui_->cmdClose});
    ui_->labReport->clear();
    ui_->ProgressBar->setMaximum(static_cast<int>(sync_.table().rows.size()) + 1);
    ui_->ProgressBar->setValue(0);
    ui_->ProgressBar->show();
    report = sync_.synchronise();
    labDir_[kStatus]->setText(toQt(kSyncDone));
  }
  if (report.shortcutsRestored) to_.readShortcutsAgain();
  compare();
  labDir_[kStatus]->setText(toQt(kSyncDone));
  ui_->labReport->setText(
      toQt(reportLine(report.copied, report.notCopied.size(), sync_.notCompared())));
  const bool more = !ui_->cmdSynchro->isHidden();
  (more ? ui_->cmdSynchro : ui_->cmdClose)->setFocus();
}

// --- While it works -----------------------------------------------------------------------------

bool frmSynchro::listing(Side side, const Text& folder, std::size_t files) {
  const std::size_t element = elementOf(side);
  lastFolder_[element] = folder;
  if (!sinceYield_.isValid() || sinceYield_.hasExpired(kYieldMilliseconds)) {
    showFolder(element, folder);
    labNbre_[element]->setText(toQt(resultText(files)));
  }
  yield();
  return true;
}

bool frmSynchro::copying(std::size_t row, std::uint64_t) {
  ui_->ProgressBar->setValue(static_cast<int>(row) + 1);
  yield();
  return true;
}

void frmSynchro::waiting() { yield(); }

void frmSynchro::trace(const Text& line) { to_.trace(line); }

void frmSynchro::yield() {
  if (sinceYield_.isValid() && !sinceYield_.hasExpired(kYieldMilliseconds)) return;
  to_.pumpEvents();
  sinceYield_.start();
}
