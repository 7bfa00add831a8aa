// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/Text.h"

// What went wrong, as a value; number 0 is success. The numbers are the classic run-time errors
// that the trace has always shown (53 file not found, 62 past the end of the file, 70 denied …).
struct Failure {
  int number = 0;
  Text description;  // one French phrase for the user, without a full stop

  explicit operator bool() const { return number != 0; }
  bool operator==(const Failure&) const = default;
};

namespace failures {
Failure invalidCall();           // 5
Failure overflow();              // 6
Failure noSuchIndex();           // 9
Failure typeMismatch();          // 13
Failure pastEndOfFile();         // 62
Failure notRegularFile();        // 75
Failure changingFile();          // 70: the file changed under every attempt to read it
Failure changedSinceCompared();  // 70: it is no longer what a decision was made about
}  // namespace failures

// The failure for a value of errno; 0 is success.
Failure failureFromErrno(int error);

// The same failure, its phrase naming what it was about: "Fichier introuvable : xdg-open".
inline Failure about(Failure failure, TextView what) {
  failure.description.append(u" : ").append(what);
  return failure;
}
