// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "sync/Execution.h"
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

struct Wishes {
  Direction direction = Direction::Both;
  bool dryRun = false;
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

bool takeOption(const std::vector<std::string>& arguments, std::size_t& at, Wishes& wishes) {
  if (arguments[at] == "--dry-run") {
    wishes.dryRun = true;
    return true;
  }
  const bool hasNext = at + 1 < arguments.size();
  return arguments[at] == "--direction" && hasNext &&
         parseDirection(arguments[++at], wishes.direction);
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
  std::optional<Text> chooseFolder(const FolderRequest&) override { return std::nullopt; }
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

int copyAsWished(const FolderPair& pair, const Wishes& wishes, std::ostream& out,
                 std::ostream& err) {
  std::vector<DifferenceRow> rows;
  std::copy_if(pair.table.rows.begin(), pair.table.rows.end(), std::back_inserter(rows),
               [&](const DifferenceRow& row) { return isAskedFor(row, wishes.direction); });
  const bool allAskedFor = rows.size() == pair.table.rows.size();

  const bool allCopied = wishes.dryRun || copyRows(pair, rows, err);
  for (const DifferenceRow& row : rows) writeRow(out, pair, row);
  if (!allCopied || pair.isPartlyUnknown()) return kFailed;
  const bool somethingLeft = !allAskedFor || (wishes.dryRun && !rows.empty());
  return somethingLeft ? kDifferent : kDone;
}

}  // namespace

int syncVerb(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  Wishes wishes;
  const FolderVerb verb{
      .usage = kUsage,
      .takeOption = [&](const auto& words,
                        std::size_t& at) { return takeOption(words, at, wishes); },
      .work = [&](const FolderPair& pair) { return copyAsWished(pair, wishes, out, err); }};
  return runFolderVerb(verb, arguments, out, err);
}
