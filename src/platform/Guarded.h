// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>

#include "platform/Questions.h"
#include "text/Utf.h"

// Runs the body of a handler of the user's. Nothing that it throws may cross the event loop: it
// becomes the "Erreur dans …" box.
template <class Body>
void guarded(Questions& questions, TextView procedure, Body&& body) {
  try {
    body();
  } catch (const std::exception& error) {
    questions.ask(errorBox(procedure, fromUtf8(error.what())));
  }
}
