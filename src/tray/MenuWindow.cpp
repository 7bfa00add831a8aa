// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/MenuWindow.h"

#include <QCloseEvent>

#include "platform/qt/ReturnKey.h"
#include "tray/TrayMenu.h"
#include "ui_MenuWindow.h"
#include "windows/qt/Assets.h"

MenuWindow::MenuWindow(TrayMenu& menu)
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint),
      menu_(menu),
      ui_(std::make_unique<Ui::MenuWindow>()) {
  ui_->setupUi(this);
  pressWithReturn(*this);
  setWindowIcon(programIcon());
  ui_->cmdMenu->setIcon(programIcon());
  connect(ui_->cmdMenu, &QPushButton::clicked, this, &MenuWindow::cmdMenu_Click);
}

MenuWindow::~MenuWindow() = default;

void MenuWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  showMinimized();
}

void MenuWindow::cmdMenu_Click() {
  menu_.popUpAt(ui_->cmdMenu->mapToGlobal(ui_->cmdMenu->rect().bottomLeft()));
}
