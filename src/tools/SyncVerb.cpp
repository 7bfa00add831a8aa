// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "sync/Execution.h"
#include "text/Utf.h"
#include "tools/FolderPair.h"
#include "tools/Verbs.h"

namespace {

constexpr std::string_view kUsage =
    "Usage : tavrolloctl sync SOURCE SAUVEGARDE [--direction SENS] [--dry-run] [--filter MOTIF]\n"
    "Copie ce que montre tavrolloctl compare et affiche les lignes copiées. Rien n'est supprimé.\n"
    "  --direction SENS   both (défaut), to-backup ou to-source\n"
    "  --dry-run          affiche ce qui serait copié et ne copie rien\n"
    "  --filter MOTIF     les fichiers dont le nom convient (* et ?) ; défaut : *.*\n"
    "Code de retour : 0 tout est copié, 1 des différences restent (--dry-run, --direction),\n"
    "2 quelque chose n'a pas pu être comparé ou copié.\n";

enum class Direction { Both, ToBackup, ToSource };

struct Request {
  std::vector<std::string> folders;
  Direction direction = Direction::Both;
  bool dryRun = false;
  Text pattern;
};

bool parseDirection(const std::string& word, Direction& direction) {
  if (word == "both") {
    direction = Direction::Both;
  } else if (word == "to-backup") {
    direction = Direction::ToBackup;
  } else if (word == "to-source") {
    direction = Direction::ToSource;
  } else {
    return false;
  }
  return true;
}

bool parseRequest(const std::vector<std::string>& arguments, Request& request) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool hasNext = i + 1 < arguments.size();
    if (argument == "--direction" && hasNext) {
      if (!parseDirection(arguments[++i], request.direction)) return false;
    } else if (argument == "--filter" && hasNext) {
      request.pattern = fromUtf8Lossless(arguments[++i]);
    } else if (argument == "--dry-run") {
      request.dryRun = true;
    } else if (!argument.empty() && !argument.starts_with('-')) {
      request.folders.push_back(argument);
    } else {
      return false;
    }
  }
  return request.folders.size() == 2;
}

bool isAskedFor(const DifferenceRow& row, Direction direction) {
  const bool toBackup =
      row.action == SyncAction::NewInSource || row.action == SyncAction::SourceNewer;
  switch (direction) {
    case Direction::ToBackup: return toBackup;
    case Direction::ToSource: return !toBackup;
    case Direction::Both: break;
  }
  return true;
}

// Nobody is there to be asked: what a box would say is in the trace too.
class NoQuestions : public Questions {
 public:
  Answer ask(const Box& box) override { return box.defaultAnswer; }
  std::optional<Text> chooseFile(const FileRequest&) override { return std::nullopt; }
  std::optional<Text> chooseNewFile(const SaveRequest&) override { return std::nullopt; }
};

// Copies the rows; those that were not copied are taken away from them.
bool copyRows(const FolderPair& pair, std::vector<DifferenceRow>& rows, std::ostream& err) {
  NoQuestions questions;
  SteadyProgress progress(err);
  const SyncReport report = executeRows(pair.source, pair.backup, rows, questions, progress);
  std::vector<bool> copied(rows.size(), true);
  for (const NotCopied& failed : report.notCopied) copied[failed.row] = false;
  std::vector<DifferenceRow> done;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (copied[i]) done.push_back(rows[i]);
  }
  rows = std::move(done);
  return report.notCopied.empty();
}

}  // namespace

int syncVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  if (asksForHelp(arguments)) {
    out << kUsage;
    return kDone;
  }
  Request request;
  if (!parseRequest(arguments, request)) {
    err << kUsage;
    return kFailed;
  }
  FolderPair pair;
  if (!compareFolders(request.folders[0], request.folders[1], request.pattern, err, pair)) {
    return kFailed;
  }
  std::vector<DifferenceRow> rows;
  std::copy_if(pair.table.rows.begin(), pair.table.rows.end(), std::back_inserter(rows),
               [&](const DifferenceRow& row) { return isAskedFor(row, request.direction); });
  const bool allAskedFor = rows.size() == pair.table.rows.size();

  const bool allCopied = request.dryRun || copyRows(pair, rows, err);
  for (const DifferenceRow& row : rows) writeRow(out, pair, row);
  if (!allCopied || pair.isPartlyUnknown()) return kFailed;
  const bool somethingLeft = !allAskedFor || (request.dryRun && !rows.empty());
  return somethingLeft ? kDifferent : kDone;
}
