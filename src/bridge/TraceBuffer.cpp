// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/TraceBuffer.h"

void TraceBuffer::log(TextView message) {
  message = message.substr(0, kMostCharacters);
  messages_.emplace_back(message);
  characters_ += message.size();
  while (messages_.size() > kMostMessages || characters_ > kMostCharacters) {
    characters_ -= messages_.front().size();
    messages_.pop_front();
  }
  const Text logged = messages_.back();
  for (const Observer& observer : observers_) observer(logged);
}

Text TraceBuffer::text() const {
  Text all;
  all.reserve(characters_ + messages_.size() * kCrLf.size());
  for (const Text& message : messages_) all.append(kCrLf).append(message);
  return all;
}
