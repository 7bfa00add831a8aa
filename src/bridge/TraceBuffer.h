// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "text/Text.h"

// The trace of a whole run, in memory: what the debug monitor shows. When it grows past its cap the
// oldest messages go.
class TraceBuffer {
 public:
  static constexpr std::size_t kMostMessages = 20'000;
  static constexpr std::size_t kMostCharacters = 2'000'000;

  using Observer = std::function<void(const Text& message)>;

  // Appends a line break and `message`. One message may hold several lines.
  void log(TextView message);

  // Every message after a CR LF, so the text begins with an empty line.
  Text text() const;

  const std::deque<Text>& messages() const { return messages_; }

  // Calls `observer` with each message logged from now on, for the life of the trace.
  void observe(Observer observer) { observers_.push_back(std::move(observer)); }

 private:
  std::deque<Text> messages_;
  std::size_t characters_ = 0;
  std::vector<Observer> observers_;
};
