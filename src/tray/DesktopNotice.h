// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

// A notice as the desktop's own notification, where windows cannot place themselves. A notice that
// comes while one is up takes its place.
class DesktopNotice {
 public:
  virtual ~DesktopNotice() = default;

  virtual void show(const QString& text) = 0;
};

// False on a window platform (QGuiApplication::platformName) whose windows cannot say where on the
// screen they go.
bool windowsPlaceThemselves(const QString& platformName);

// The desktop's notification for a window platform whose windows cannot place
// themselves; nothing for the others.
std::unique_ptr<DesktopNotice> desktopNoticeFor(const QString& platformName);
