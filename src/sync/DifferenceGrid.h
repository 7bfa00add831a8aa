// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "sync/Comparison.h"
#include "text/LocaleData.h"

// The table of differences as it is shown: texts are made when a row comes into view.

struct GridColumn {
  TextView header;
  int width;  // twips
};

inline constexpr std::array<GridColumn, 8> kGridColumns = {{
    {u".", 2},
    {u"Fichers Source Tavrollo (user_datas)", 4600},
    {u"Date", 1640},
    {u"Poids", 900},
    {u"", 520},
    {u"Fichiers de la sauvegarde (USB...)", 4600},
    {u"Date", 1640},
    {u"Poids", 900},
}};

inline constexpr int kSourceColumn = 1;
inline constexpr int kPictureColumn = 4;
inline constexpr int kBackupColumn = 5;
inline constexpr TextView kPictureHeader = u"Sens de la copie";  // is heard, not seen
inline constexpr int kNoColumn = -1;

struct GridRow {
  std::array<Text, 8> cells;   // the first one is the action's code
  Text picture;                // the arrow's name
  Text pictureInWords;         // what the arrow says
  int emphasised = kNoColumn;  // the path that the copy will overwrite
};

GridRow gridRow(const Listing& source, const Listing& backup, const DifferenceRow& row,
                const LocaleData& locale);

// Day and time of day, in local time.
Text dateTimeText(std::int64_t seconds, const LocaleData& locale);

// The synchronisation has its own way to write a file's size.
namespace synchro {

// `size` in bytes as a short text: "1024 o", "1,00 Ko", "1,00 Mo", "1,00 Go".
Text TailleDuFichier(std::uint64_t size, const LocaleData& locale);

}  // namespace synchro
