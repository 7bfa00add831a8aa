// SPDX-License-Identifier: GPL-3.0-or-later
#include "sync/DifferenceGrid.h"

#include <ctime>

#include "text/Numbers.h"

namespace {

constexpr std::uint64_t kKilo = 1024;
constexpr std::uint64_t kMega = 1024 * kKilo;
constexpr std::uint64_t kGiga = 1024 * kMega;

Text inUnits(std::uint64_t size, std::uint64_t unit, TextView name, const LocaleData& locale) {
  return groupedNumberText(static_cast<double>(size) / static_cast<double>(unit), locale)
      .append(name);
}

TextView pictureFor(SyncAction action) {
  switch (action) {
    case SyncAction::NewInSource: return u"flecheDn";
    case SyncAction::SourceNewer: return u"flecheD";
    case SyncAction::NewInBackup: return u"flecheGn";
    case SyncAction::BackupNewer: return u"flecheG";
  }
  return {};
}

TextView wordsFor(SyncAction action) {
  switch (action) {
    case SyncAction::NewInSource: return u"Nouveau, à copier vers la sauvegarde";
    case SyncAction::SourceNewer: return u"Plus récent, à copier vers la sauvegarde";
    case SyncAction::NewInBackup: return u"Nouveau, à copier depuis la sauvegarde";
    case SyncAction::BackupNewer: return u"Plus récent, à copier depuis la sauvegarde";
  }
  return {};
}

int overwrittenColumn(SyncAction action) {
  switch (action) {
    case SyncAction::SourceNewer: return kBackupColumn;
    case SyncAction::BackupNewer: return kSourceColumn;
    default: return kNoColumn;
  }
}

void fillSide(GridRow& row, int column, const Listing& listing, std::uint32_t file,
              const LocaleData& locale) {
  if (file == kNoFile) return;
  const auto first = static_cast<std::size_t>(column);
  const FileState& state = listing.files[file].state;
  row.cells[first] = nativeText(listing.path(file));
  row.cells[first + 1] = dateTimeText(state.modified, locale);
  row.cells[first + 2] = synchro::TailleDuFichier(state.size, locale);
}

}  // namespace

GridRow gridRow(const Listing& source, const Listing& backup, const DifferenceRow& row,
                const LocaleData& locale) {
  GridRow shown{.cells = {},
                .picture = Text(pictureFor(row.action)),
                .pictureInWords = Text(wordsFor(row.action)),
                .emphasised = overwrittenColumn(row.action)};
  shown.cells[0] = numberText(static_cast<std::int64_t>(row.action));
  fillSide(shown, kSourceColumn, source, row.source, locale);
  fillSide(shown, kBackupColumn, backup, row.backup, locale);
  return shown;
}

Text dateTimeText(std::int64_t seconds, const LocaleData& locale) {
  LocaleData withTime = locale;
  withTime.dateFormat += " %H:%M:%S";
  return dateText(static_cast<std::time_t>(seconds), withTime);
}

namespace synchro {

Text TailleDuFichier(std::uint64_t size, const LocaleData& locale) {
  if (size > kGiga) return inUnits(size, kGiga, u" Go", locale);
  if (size > kMega) return inUnits(size, kMega, u" Mo", locale);
  if (size <= kKilo) return numberText(static_cast<std::int64_t>(size)) + u" o";
  return inUnits(size, kKilo, u" Ko", locale);
}

}  // namespace synchro
