// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include "text/Text.h"

inline QString toQt(TextView text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline Text fromQt(const QString& text) { return text.toStdU16String(); }

// The characters of `text` where they stand; it must outlive them.
inline TextView viewOf(const QString& text) {
  return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}
