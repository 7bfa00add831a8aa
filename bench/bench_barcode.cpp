// SPDX-License-Identifier: GPL-3.0-or-later
// What a barcode costs: its font string for each type.
#include <benchmark/benchmark.h>

#include "barcode/ModcodeBarre.h"

namespace {

void encode(benchmark::State& state) {
  constexpr TextView kSources[] = {u"TAVROLLO 2026/AB-12", u"978020137962", u"9638507",
                                   u"12345678901234567890", u"Tavrollo 12345678"};
  const auto type = static_cast<std::uint8_t>(state.range(0));
  const TextView source = kSources[type - 1];
  for (auto _ : state) {
    Text result = ModcodeBarre::CodeBar(type, source, u"51999", true);
    if (result.empty()) return state.SkipWithError("not encoded");
    benchmark::DoNotOptimize(result);
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(encode)->ArgName("type")->DenseRange(1, 5);

}  // namespace

BENCHMARK_MAIN();
