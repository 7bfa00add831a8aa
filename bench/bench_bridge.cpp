// SPDX-License-Identifier: GPL-3.0-or-later
// What a look at the browser's cookie store costs.
#include <benchmark/benchmark.h>

#include <random>

#include "bridge/CookieStoreReader.h"
#include "bridge/CookieWatcher.h"
#include "unit/bridge/BrowserStore.h"
#include "unit/bridge/RecordingShell.h"

namespace {

constexpr std::size_t kSize = 64 * 1024 * 1024;

// Bytes without the name: of one kind each.
enum Content : std::int64_t { kZeros, kRandom, kText, kNameLike };

std::string contentOf(std::int64_t kind) {
  std::mt19937 random(1);
  std::string bytes(kSize, '\0');
  constexpr std::string_view kLetters =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+/=_";
  constexpr std::string_view kLike = "Tavr1CodeTo";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (kind == kRandom) bytes[i] = static_cast<char>(random());
    if (kind == kText) bytes[i] = kLetters[random() % kLetters.size()];
    if (kind == kNameLike) bytes[i] = kLike[i % kLike.size()];
  }
  return bytes;
}

void findTheNameInMemory(benchmark::State& state) {
  const std::string bytes = contentOf(state.range(0));
  for (auto _ : state) {
    if (findCookieName(bytes, 0) != std::string::npos) return state.SkipWithError("found");
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kSize));
}
BENCHMARK(findTheNameInMemory)
    ->ArgName("content")
    ->DenseRange(kZeros, kNameLike)
    ->Unit(benchmark::kMillisecond);

void findTheNameInAFile(benchmark::State& state) {
  const StoreFolder folder;
  const Text path = folder.write(u"store", contentOf(state.range(0)));
  StoreImage image;
  if (image.open(path)) return state.SkipWithError("no store");
  for (auto _ : state) {
    const ScanResult scan = scanStore(image, 0, {}, {});
    if (scan.outcome != ScanResult::Outcome::NotFound) return state.SkipWithError("found");
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kSize));
}
BENCHMARK(findTheNameInAFile)
    ->ArgName("content")
    ->DenseRange(kZeros, kNameLike)
    ->Unit(benchmark::kMillisecond);

// A store of about 1 MiB with a command in its log, where nothing of the last place is known.
void readTheCommand(benchmark::State& state) {
  const StoreFolder folder;
  FirefoxStore store(folder / u"cookies.sqlite");
  store.setOthers(3000);
  store.setCommand("runapp_|_../../user_datas/doc.pdf_|_");
  TraceBuffer trace;
  CookieStoreReader reader(trace, {});
  for (auto _ : state) {
    reader.setCookieOffset(state.range(0) == 0 ? 0 : reader.cookieOffset());
    if (reader.Extract(store.path()).empty()) return state.SkipWithError("no command");
  }
}
BENCHMARK(readTheCommand)->ArgName("nearby")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// The worst that a web site can do: as many cookies as it may have, full of our cookie's name.
void readPastAHostileSite(benchmark::State& state) {
  const StoreFolder folder;
  FirefoxStore store(folder / u"cookies.sqlite");
  std::string value;
  while (value.size() < 4000) value += kCookieName;
  for (int i = 0; i < 180; ++i) store.set("evil" + std::to_string(i), value, "evil.example");
  store.setOthers(3000);
  store.setCommand("ini_|_k_|_");
  TraceBuffer trace;
  CookieStoreReader reader(trace, {});
  for (auto _ : state) {
    reader.setCookieOffset(0);
    if (reader.Extract(store.path()).empty()) return state.SkipWithError("no command");
  }
}
BENCHMARK(readPastAHostileSite)->Unit(benchmark::kMillisecond);

class QuietHost : public CookieWatcher::Host {
 public:
  void pumpEvents() override {}
  void enableTimerCookies(bool) override {}
  void saveOffsetCookie() override {}
  void showNotice(const Text&) override {}
  void valueHandled(const Text&) override {}
};

void idleTick(benchmark::State& state) {
  const StoreFolder folder;
  FirefoxStore store(folder / u"cookies.sqlite");
  store.setCommand("ini_|_k_|_");
  age(store.path());
  age(folder / u"cookies.sqlite-wal");
  Settings settings;
  settings.cookiesPath = store.path();
  TraceBuffer trace;
  CookieStoreReader reader(trace, {});
  std::vector<Text> done;
  RecordingShell shell(done);
  ShortcutTable shortcuts;
  CommandActions actions({.shell = shell,
                          .shortcuts = shortcuts,
                          .recShortQrCode = [] {},
                          .writePageKey = [](const Text&) {},
                          .lockMenus = [](bool) {},
                          .currentFolder = [] { return Text(); }});
  QuietHost host;
  CookieWatcher watcher(settings, reader, actions, trace, host);
  watcher.tick();
  for (auto _ : state) watcher.tick();
}
BENCHMARK(idleTick)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
