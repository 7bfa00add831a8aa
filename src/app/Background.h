// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>

#include "bridge/TraceBuffer.h"
#include "text/Utf.h"

// Runs work that nobody is waiting for. Nothing that it throws may cross the event loop: it becomes
// a line of the trace.
template <class Body>
void inBackground(TraceBuffer& trace, Body&& body) {
  try {
    body();
  } catch (const std::exception& error) {
    trace.log(u"erreur " + fromUtf8(error.what()));
  }
}
