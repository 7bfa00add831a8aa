// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>

#include "bridge/TraceBuffer.h"
#include "platform/Questions.h"
#include "text/Utf.h"

// Nothing that a handler throws may cross the event loop.

// Runs the body of a handler of the user's. What it throws becomes the "Erreur dans …" box.
template <class Body>
void guarded(Questions& questions, TextView procedure, Body&& body) {
  try {
    body();
  } catch (const std::exception& error) {
    questions.ask(errorBox(procedure, fromUtf8(error.what())));
  }
}

// Runs work that nobody is waiting for. What it throws becomes a line of the trace.
template <class Body>
void inBackground(TraceBuffer& trace, Body&& body) {
  try {
    body();
  } catch (const std::exception& error) {
    trace.log(u"erreur " + fromUtf8(error.what()));
  }
}
