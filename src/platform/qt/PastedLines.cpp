// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/PastedLines.h"

#include <QLineEdit>
#include <algorithm>

namespace {

bool isLineEnd(QChar character) {
  return character == u'\n' || character == u'\r' || character == QChar::LineSeparator ||
         character == QChar::ParagraphSeparator;
}

// The cursor stands behind what was pasted, also in the middle of a text.
void cutFromLineEndToCursor(QLineEdit& box) {
  const QString text = box.text();
  const auto lineEnd = std::find_if(text.begin(), text.end(), isLineEnd);
  const auto begin = lineEnd - text.begin();
  const int cursor = box.cursorPosition();
  if (begin >= cursor) return;
  box.setText(text.left(begin) + text.mid(cursor));
  box.setCursorPosition(static_cast<int>(begin));
}

}  // namespace

void cutPastedLines(QWidget& window) {
  for (QLineEdit* box : window.findChildren<QLineEdit*>()) {
    QObject::connect(box, &QLineEdit::textEdited, box, [box] { cutFromLineEndToCursor(*box); });
  }
}
