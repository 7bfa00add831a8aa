// SPDX-License-Identifier: GPL-3.0-or-later
// The program's logic without its windows, for scripts, diagnosis and measurement.
#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>
#include <iterator>

#include "platform/Console.h"
#include "platform/Version.h"
#include "tools/Verbs.h"

namespace {

struct Verb {
  std::string_view name;
  std::string_view purpose;
  int (*run)(const std::vector<std::string>&, std::ostream&, std::ostream&);
};

constexpr Verb kVerbs[] = {
    {"cookie", "la commande que contient une base de cookies", cookieVerb},
    {"config", "les réglages d'un fichier config.cfg", configVerb},
    {"shortcuts", "les raccourcis d'un fichier shortQrCode.js", shortcutsVerb},
    {"codebar", "les caractères d'un code barre, pour sa police", codebarVerb},
    {"compare", "ce qui distingue deux dossiers", compareVerb},
    {"sync", "copier ce qui distingue deux dossiers", syncVerb},
    {"doctor", "ce qui va et ce qui ne va pas dans l'installation", doctorVerb},
};

void writeUsage(std::ostream& out) {
  constexpr std::size_t kColumn = 12;
  out << "Usage : tavrolloctl VERBE [ARGUMENTS]\n"
         "        tavrolloctl VERBE --help\n"
         "        tavrolloctl --help | --version\n"
         "\n"
         "Verbes :\n";
  for (const Verb& verb : kVerbs) {
    out << "  " << verb.name << std::string(kColumn - std::min(kColumn, verb.name.size()), ' ')
        << verb.purpose << '\n';
  }
}

int run(const std::vector<std::string>& arguments) {
  if (asksForHelp(arguments)) {
    writeUsage(std::cout);
    return kDone;
  }
  if (arguments.size() == 1 && arguments[0] == "--version") {
    std::cout << "tavrolloctl " << kVersionText << '\n';
    return kDone;
  }
  const Verb* const verb = std::find_if(
      std::begin(kVerbs), std::end(kVerbs),
      [&arguments](const Verb& v) { return !arguments.empty() && v.name == arguments[0]; });
  if (verb == std::end(kVerbs)) {
    writeUsage(std::cerr);
    return kFailed;
  }
  return verb->run({arguments.begin() + 1, arguments.end()}, std::cout, std::cerr);
}

// What the system still holds back may fail too: a full disk shows only now.
int afterWriting(int status) {
  if (std::cout.flush()) return status;
  std::cerr << "Le résultat n'a pas pu être écrit sur la sortie standard.\n";
  return kFailed;
}

// A reader that went away is a failed write like any other, not the end of the process.
void ignoreClosedPipes() {
#ifdef SIGPIPE
  std::signal(SIGPIPE, SIG_IGN);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  ignoreClosedPipes();
  const ConsoleStreams streams;
  std::ios::sync_with_stdio(false);
  try {
    return afterWriting(run(commandArguments(argc, argv)));
  } catch (const std::exception& error) {
    std::cerr << "Erreur inattendue : " << error.what() << ".\n";
    return kFailed;
  }
}
