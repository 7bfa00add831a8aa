// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "config/ShortcutTable.h"
#include "platform/Shell.h"
#include "text/Text.h"

// Carries out the commands of the web application's pages.
//
//   command      field 1             field 2             what it does
//   notepad      file                                    opens it in the text editor
//   shellexe     document, program                       opens it with its program
//   runapp       program             parameters (bytes)  starts it with them
//   createlink   address (bytes)     name (bytes)        adds a shortcut, rewrites the table's file
//   ini          page key                                stores the key, unlocks the menus
//   lzck         "false", or else                        unlocks the menus, or locks them
class CommandActions {
 public:
  struct Surroundings {
    Shell& shell;
    ShortcutTable& shortcuts;
    std::function<void()> recShortQrCode;  // writes the shortcut table's file
    std::function<void(const Text& key)> writePageKey;
    std::function<void(bool lock)> lockMenus;
    std::function<Text()> currentFolder;
  };

  explicit CommandActions(Surroundings surroundings) : to_(std::move(surroundings)) {}

  // `fields`: the command word in lower case, then its arguments; those marked as bytes are still
  // byte text. The result is the message for the user, empty where there is none; nothing when a
  // field is missing.
  std::optional<Text> carryOut(const std::vector<Text>& fields);

 private:
  Text notepad(const Text& file);
  Text shellexe(const Text& file);
  Text runapp(const Text& file, const Text& parameters);
  Text createlink(const Text& target, const Text& name);
  Text ini(const Text& key);
  Text lzck(const Text& lock);
  void execute(const Text& file, const Text& parameters);

  Surroundings to_;
};
