// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/frmDebug.h"

#include <QKeyEvent>
#include <QScrollBar>

#include "platform/qt/QtText.h"
#include "platform/qt/ReturnKey.h"
#include "text/Split.h"
#include "ui_frmDebug.h"
#include "windows/qt/AlwaysOnTheTop.h"

namespace {

QString shown(const Text& text) { return toQt(withPlainLineBreaks(text)); }

}  // namespace

frmDebug::frmDebug(TraceBuffer& trace, DebugCommands commands)
    : trace_(trace), commands_(std::move(commands)), ui_(std::make_unique<Ui::frmDebug>()) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  ui_->rtbDebug->setMaximumBlockCount(static_cast<int>(TraceBuffer::kMostMessages));
  ui_->rtbDebug->setTabChangesFocus(true);
  MettreAuPremierPlan(*this, true);
  connect(ui_->cmdInfos, &QPushButton::clicked, this, &frmDebug::cmdInfos_Click);
  connect(ui_->cmdTest, &QPushButton::clicked, this, &frmDebug::cmdTest_Click);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmDebug::cmdClose_Click);
  trace_.observe([this](const Text& message) { append(message); });
}

frmDebug::~frmDebug() = default;

void frmDebug::cmdClose_Click() { hide(); }

// While the window is hidden the trace costs it nothing: it is filled anew when it is shown.
void frmDebug::append(const Text& message) {
  if (!isVisible()) return;
  if (ui_->rtbDebug->document()
          ->isEmpty()) {  // appending to nothing would lose the first line break
    ui_->rtbDebug->setPlainText(shown(trace_.text()));
  } else {
    ui_->rtbDebug->appendPlainText(shown(message));
  }
}

void frmDebug::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  ui_->rtbDebug->setPlainText(shown(trace_.text()));
  ui_->rtbDebug->verticalScrollBar()->setValue(ui_->rtbDebug->verticalScrollBar()->maximum());
  ui_->cmdClose->setFocus();
}

void frmDebug::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    cmdClose_Click();
  } else {
    QWidget::keyPressEvent(event);
  }
}
