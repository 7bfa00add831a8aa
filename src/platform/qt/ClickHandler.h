// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <functional>

#include "platform/Guarded.h"

// From now on, while both live, a click on `button` runs the handler of its window, guarded.
// `procedure` is the handler's name.
inline void onClick(QAbstractButton* button, QObject* window, Questions& questions,
                    TextView procedure, std::function<void()> handler) {
  QObject::connect(button, &QAbstractButton::clicked, window,
                   [&questions, name = Text(procedure), run = std::move(handler)] {
                     guarded(questions, name, run);
                   });
}
