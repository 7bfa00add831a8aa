// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Autostart.h"
#include "text/Text.h"

// The launcher tavrollo.desktop in the user's autostart folder (Desktop Application Autostart
// Specification). A desktop that switches it off leaves it there with Hidden=true or
// X-GNOME-Autostart-enabled=false.
class XdgAutostart : public Autostart {
 public:
  struct Places {
    Text own;                  // the user's folder of configurations
    std::vector<Text> shared;  // the system's, where an administrator may have put a launcher
  };

  // `command`: the program and its arguments.
  XdgAutostart(Places places, std::vector<std::string> command)
      : places_(std::move(places)), command_(std::move(command)) {}

  // A launcher whose program is gone starts nothing and counts as off.
  bool isOn() override;

  // On: the user's launcher starts this program, if it is there; what else he wrote in it stays.
  // Off: it goes, unless one of the system's would take its place; then it says that it is hidden.
  Failure set(bool on) override;

 private:
  Text ownEntry() const;
  Text sharedEntry() const;  // "" when there is none

  Places places_;
  std::vector<std::string> command_;
};

// Where the environment says that configurations are.
XdgAutostart::Places xdgConfigFolders();

// A command line for the key Exec, quoted so that it is split into `command` again.
std::string execValue(const std::vector<std::string>& command);

// `entry` with `key` of its group [Desktop Entry] set to `value`; the rest stays as it is.
std::string withDesktopKey(std::string_view entry, std::string_view key, std::string_view value);
