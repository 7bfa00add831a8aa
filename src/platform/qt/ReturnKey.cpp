// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/ReturnKey.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

namespace {

bool isReturn(const QKeyEvent& event) {
  const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  return plain && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

class ReturnKey : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!isReturn(key)) return false;
    // A key that is held down would press the button again and again.
    if (!key.isAutoRepeat()) static_cast<QAbstractButton*>(watched)->click();
    return true;
  }
};

}  // namespace

void pressWithReturn(QWidget& window) {
  auto* filter = new ReturnKey;
  filter->setParent(&window);
  for (QPushButton* button : window.findChildren<QPushButton*>())
    button->installEventFilter(filter);
  for (QToolButton* button : window.findChildren<QToolButton*>())
    button->installEventFilter(filter);
}
