// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/ShortcutTable.h"

#include <limits>
#include <utility>

#include "text/Numbers.h"
#include "text/Split.h"

Shortcut shortcutFromTabs(TextView tabSeparated) {
  std::vector<Text> pieces = split(tabSeparated, u"\t");
  pieces.resize(3);
  return {std::move(pieces[0]), std::move(pieces[1]), std::move(pieces[2])};
}

void ShortcutTable::load(std::int32_t freeId, std::vector<Shortcut> rows) {
  freeId_ = freeId;
  rows_ = std::move(rows);
  loaded_ = true;
  announceChange();
}

void ShortcutTable::setFreeId(std::int32_t freeId) {
  if (freeId == freeId_) return;
  freeId_ = freeId;
  announceChange();
}

Text ShortcutTable::newKey() {
  Text key = nineDigits(freeId_);
  if (freeId_ < std::numeric_limits<std::int32_t>::max()) ++freeId_;
  announceChange();
  return key;
}

void ShortcutTable::addRow(TextView tabSeparated) {
  rows_.push_back(shortcutFromTabs(tabSeparated));
  announceChange();
}

void ShortcutTable::setRow(std::size_t row, Shortcut shortcut) {
  if (row >= rows_.size()) return;
  rows_[row] = std::move(shortcut);
  announceChange();
}

void ShortcutTable::removeRow(std::size_t row) {
  if (row >= rows_.size()) return;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  announceChange();
}

void ShortcutTable::clear() {
  rows_.clear();
  announceChange();
}

int ShortcutTable::subscribe(Observer observer) {
  observers_.emplace(++lastSubscription_, std::move(observer));
  return lastSubscription_;
}

void ShortcutTable::unsubscribe(int subscription) { observers_.erase(subscription); }

void ShortcutTable::announceChange() const {
  // A copy: an observer may unsubscribe itself while it is called.
  const std::map<int, Observer> observers = observers_;
  for (const auto& [subscription, observer] : observers) observer();
}
