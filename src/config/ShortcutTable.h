// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

#include "text/Text.h"

// One shortcut: a key that fits in a small QR code, and what it stands for.
struct Shortcut {
  Text key;  // nine decimal digits
  Text name;
  Text address;

  bool operator==(const Shortcut&) const = default;
};

// The shortcuts in memory, in the order of the file, and the number that the next key is made from.
// Rows count from 0. Observers are called after each change.
class ShortcutTable {
 public:
  using Observer = std::function<void()>;

  const std::vector<Shortcut>& rows() const { return rows_; }
  std::int32_t freeId() const { return freeId_; }

  // True once the table holds what a file held, or what is to become a new one. Before that it must
  // not be written: it would wipe the user's file.
  bool wasLoaded() const { return loaded_; }

  // The path of the file that the rows came from; "" before that.
  const Text& source() const { return source_; }
  void setSource(const Text& path) { source_ = path; }

  // Everything at once, as loaded.
  void load(std::int32_t freeId, std::vector<Shortcut> rows);

  // The number alone, as read from the table's file anew; it may go down. The rows stay, and a
  // table that was never loaded still counts as such.
  void setFreeId(std::int32_t freeId);

  // A key never given before: nine digits of FreeId, which then goes up by one (it stays at the
  // greatest 32-bit number).
  Text newKey();

  // Adds a row at the end from the first three of the tab-separated pieces: key, name, address.
  // A missing piece is empty.
  void addRow(TextView tabSeparated);

  // Both leave the table alone where there is no such row.
  void setRow(std::size_t row, Shortcut shortcut);
  void removeRow(std::size_t row);

  // Removes every row; FreeId stays.
  void clear();

  // Calls `observer` after each change, until unsubscribe is called with the number returned.
  int subscribe(Observer observer);
  void unsubscribe(int subscription);

 private:
  void announceChange() const;

  std::vector<Shortcut> rows_;
  std::int32_t freeId_ = 0;
  bool loaded_ = false;
  Text source_;
  std::map<int, Observer> observers_;
  int lastSubscription_ = 0;
};

// The row of a tab-separated text, as addRow reads it.
Shortcut shortcutFromTabs(TextView tabSeparated);
