// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Autostart.h"
#include "text/Text.h"

// The command lines that the system runs when the user logs on. Its own switches (the task
// manager's list) leave the command there and note beside it that it is off.
class RegistryAutostart : public Autostart {
 public:
  // Keys below HKEY_CURRENT_USER.
  struct Places {
    Text commands = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    Text switches = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run";
  };

  // `command` is the command line whose first word is `executable`.
  RegistryAutostart(Places places, Text executable, Text command)
      : places_(std::move(places)),
        executable_(std::move(executable)),
        command_(std::move(command)) {}

  // A command whose program is gone starts nothing and counts as off.
  bool isOn() override;

  // On: the command starts this program, and nothing says that it is off. Off: both are gone.
  Failure set(bool on) override;

 private:
  bool isSwitchedOff() const;

  Places places_;
  Text executable_;
  Text command_;
};
