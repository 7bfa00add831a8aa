// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/Verbs.h"

#include "platform/Files.h"
#include "text/Utf.h"

namespace {

// Options begin with a hyphen; a file so named is given as ./-name.
bool isOneFile(const std::vector<std::string>& arguments) {
  return arguments.size() == 1 && !arguments[0].empty() && !arguments[0].starts_with('-');
}

}  // namespace

bool asksForHelp(const std::vector<std::string>& arguments) {
  return arguments.size() == 1 && arguments[0] == "--help";
}

bool readArgumentFile(const std::vector<std::string>& arguments, std::string_view usage,
                      std::ostream& out, std::ostream& err, std::string& bytes, int& status) {
  if (asksForHelp(arguments)) {
    out << usage;
    status = kDone;
    return false;
  }
  status = kFailed;
  if (!isOneFile(arguments)) {
    err << usage;
    return false;
  }
  const Failure failure = readFile(fromUtf8Lossless(arguments[0]), bytes);
  if (!failure) return true;
  err << "Le fichier " << arguments[0]
      << " ne peut pas être lu : " << toUtf8Lossless(failure.description) << ".\n";
  return false;
}
