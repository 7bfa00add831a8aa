// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <optional>

#include "platform/Desktop.h"
#include "platform/ProgramFolder.h"
#include "platform/System.h"
#include "setup/SelfCheck.h"
#include "text/Paths.h"
#include "text/Utf.h"
#include "tools/Verbs.h"

namespace {

constexpr std::string_view kUsage =
    "Usage : tavrolloctl doctor [--program-folder DOSSIER]\n"
    "Vérifie l'installation : une ligne par point, « bien », « à revoir » ou « inconnu », ce qui est\n"
    "vérifié, ce qui a été trouvé et, s'il le faut, ce qu'il faut faire, séparés par des tabulations.\n"
    "  --program-folder DOSSIER   le dossier du programme ; par défaut, celui de Tavrollo s'il est\n"
    "                             lancé, sinon celui qu'il prendrait\n"
    "Code de retour : 0 tout va bien, 1 quelque chose est à revoir, 2 arguments non valables.\n";

struct Request {
  std::optional<Text> programFolder;
};

std::optional<Request> parseRequest(const std::vector<std::string>& arguments) {
  if (arguments.empty()) return Request{};
  if (arguments.size() != 2 || arguments[0] != "--program-folder" || arguments[1].empty()) {
    return std::nullopt;
  }
  return Request{.programFolder = fromUtf8Lossless(arguments[1])};
}

Text programFolderOf(const Request& request, const Text& executables) {
  const std::optional<RunningInstance> running = runningInstance();
  if (!request.programFolder && running && !running->programFolder.empty()) {
    return running->programFolder;
  }
  return chooseProgramFolder(request.programFolder, executables, homeFolder());
}

std::string_view verdictWord(Verdict verdict) {
  switch (verdict) {
    case Verdict::Well: return "bien";
    case Verdict::Mend: return "à revoir";
    case Verdict::Unknown: break;
  }
  return "inconnu";
}

// A name may hold what would end the field or the line.
std::string field(const Text& text) {
  std::string bytes = toUtf8Lossless(text);
  std::replace_if(
      bytes.begin(), bytes.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
  return bytes;
}

}  // namespace

int doctorVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << kUsage;
    return kDone;
  }
  const std::optional<Request> request = parseRequest(arguments);
  if (!request) {
    err << kUsage;
    return kFailed;
  }
  const Text executables = folderOf(executablePath());
  const std::unique_ptr<DefaultBrowser> browser = makeDefaultBrowser();
  const std::vector<Finding> found =
      findings(gatherFacts(programFolderOf(*request, executables), templateFolder(executables),
                           systemLocale(), *browser));
  for (const Finding& finding : found) {
    out << verdictWord(finding.verdict) << '\t' << field(finding.subject) << '\t'
        << field(finding.detail);
    if (!finding.mend.empty()) out << '\t' << field(finding.mend);
    out << '\n';
  }
  const bool somethingToMend = std::any_of(found.begin(), found.end(), [](const Finding& finding) {
    return finding.verdict == Verdict::Mend;
  });
  return somethingToMend ? kDifferent : kDone;
}
