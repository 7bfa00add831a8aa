// SPDX-License-Identifier: GPL-3.0-or-later
// What a barcode costs: its font string for each type, side by side with the encoder of libzint for
// the same text. Each has two ways. Ours writes into a text that is used again, as the barcode
// window and `tavrolloctl codebar --batch` do, or gives a new text. libzint is given a new symbol
// each time, as its own window does, or the same one, cleared; it also makes the rows of modules
// that our fonts hold.
#include <zint.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "barcode/ModcodeBarre.h"

namespace {

constexpr double kWanted = 20;  // times libzint, as an application uses it
constexpr int kRounds = 7;      // taken in turn; the best one counts, what disturbs makes slower

struct Row {
  const char* name;
  std::uint8_t type;
  TextView source;
  TextView addOn;
  int symbology;  // libzint's
  const char* text;
};

const Row kRows[] = {
    {"Code 39", ModcodeBarre::kCode39, u"TAVROLLO 2026/AB-12", u"", BARCODE_CODE39,
     "TAVROLLO 2026/AB-12"},
    {"EAN-13", ModcodeBarre::kEan13, u"978020137962", u"", BARCODE_EANX, "978020137962"},
    {"EAN-13 and 5", ModcodeBarre::kEan13, u"978020137962", u"51999", BARCODE_EANX,
     "978020137962+51999"},
    {"EAN-8", ModcodeBarre::kEan8, u"9638507", u"", BARCODE_EANX, "9638507"},
    {"EAN-8 and 2", ModcodeBarre::kEan8, u"9638507", u"12", BARCODE_EANX, "9638507+12"},
    {"2 of 5, key", ModcodeBarre::kInterleaved2of5, u"1234567890123456789", u"", BARCODE_C25INTER,
     "1234567890123456789"},
    {"Code 128", ModcodeBarre::kCode128, u"Tavrollo 12345678", u"", BARCODE_CODE128,
     "Tavrollo 12345678"},
    {"Code 128, text", ModcodeBarre::kCode128, u"Lycee Jules Ferry", u"", BARCODE_CODE128,
     "Lycee Jules Ferry"},
    {"Code 128, digits", ModcodeBarre::kCode128, u"12345678901234567890", u"", BARCODE_CODE128,
     "12345678901234567890"},
};

// What came of it: so that nothing can be left out.
struct Seen {
  bool failed = false;
  std::size_t size = 0;
};

// How often a second of processor time `work` can be done.
template <typename Work>
double timesASecond(const Work& work) {
  constexpr double kSeconds = 0.1;
  constexpr int kBetweenLooks = 1000;
  const std::clock_t begin = std::clock();
  long times = 0;
  double seconds = 0;
  while (seconds < kSeconds) {
    for (int i = 0; i < kBetweenLooks; ++i) work();
    times += kBetweenLooks;
    seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  }
  return static_cast<double>(times) / seconds;
}

void encodeWithZint(zint_symbol& symbol, const Row& row, Seen& seen) {
  symbol.symbology = row.symbology;
  if (row.symbology == BARCODE_C25INTER) symbol.option_2 = 1;  // a key
  const auto* text = reinterpret_cast<const unsigned char*>(row.text);
  seen.failed |= ZBarcode_Encode(&symbol, text, 0) >= ZINT_ERROR;
  seen.size += static_cast<std::size_t>(symbol.width);
}

bool measure(const Row& row) {
  zint_symbol* symbol = ZBarcode_Create();
  Text text;
  Seen seen;
  const auto look = [&seen](const Text& result) {
    seen.failed |= result.empty();
    seen.size += result.size();
  };
  double ours = 0;
  double oursAnew = 0;
  double zint = 0;
  double zintAnew = 0;
  for (int round = 0; round < kRounds; ++round) {
    ours = std::max(ours, timesASecond([&] {
                      ModcodeBarre::CodeBarInto(text, row.type, row.source, row.addOn, true);
                      look(text);
                    }));
    zintAnew = std::max(zintAnew, timesASecond([&] {
                          zint_symbol* made = ZBarcode_Create();
                          encodeWithZint(*made, row, seen);
                          ZBarcode_Delete(made);
                        }));
    oursAnew = std::max(oursAnew, timesASecond([&] {
                          look(ModcodeBarre::CodeBar(row.type, row.source, row.addOn, true));
                        }));
    zint = std::max(zint, timesASecond([&] {
                      ZBarcode_Clear(symbol);
                      encodeWithZint(*symbol, row, seen);
                    }));
  }
  ZBarcode_Delete(symbol);
  std::printf("%-18s %11.0f %11.0f %10.0f %10.0f %8.1f %8.1f %8.1f %8.1f%s\n", row.name, ours,
              oursAnew, zintAnew, zint, ours / zintAnew, ours / zint, oursAnew / zintAnew,
              oursAnew / zint, seen.failed || seen.size == 0 ? "  not encoded" : "");
  return !seen.failed && ours >= kWanted * zintAnew;
}

}  // namespace

int main() {
  std::printf("%-18s %23s %21s %17s %17s\n", "encoded a second", "tavrollo", "libzint", "times",
              "");
  std::printf("%-18s %11s %11s %10s %10s %8s %8s %8s %8s\n", "", "used again", "new text",
              "new symbol", "used again", "u / n", "u / u", "n / n", "n / u");
  bool fast = true;
  for (const Row& row : kRows) fast &= measure(row);
  return fast ? 0 : 1;
}
