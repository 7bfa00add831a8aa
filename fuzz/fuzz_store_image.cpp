// SPDX-License-Identifier: GPL-3.0-or-later
// A browser's cookie store with its write-ahead log: two bytes with the store's length, the store,
// the log. The log is read as it stands and once more with its checksums made right, so that the
// pages behind them are reached.
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <fstream>

#include "Demand.h"
#include "bridge/BigEndian.h"
#include "bridge/CookieStoreReader.h"
#include "text/Paths.h"

namespace {

// A folder in memory, gone with the process.
class Scratch {
 public:
  Scratch() : path_("/dev/shm/tavrollo-fuzz-" + std::to_string(::getpid())) {
    std::filesystem::create_directories(path_);
  }
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  Text store() const { return fromPath(path_ / "store"); }

  void write(std::string_view store, std::string_view log) const {
    writeFile("store", store);
    writeFile("store-wal", log);
  }

 private:
  void writeFile(const char* name, std::string_view bytes) const {
    std::ofstream file(path_ / name, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  std::filesystem::path path_;
};

void putBigEndian(std::string& bytes, std::size_t at, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(number >> (24 - 8 * i));
}

// The running checksum of a log, as its writer makes it.
struct Sums {
  bool bigEndian;
  std::uint32_t first = 0;
  std::uint32_t second = 0;

  void add(std::string_view bytes) {
    const auto word = bigEndian ? bigEndian32 : littleEndian32;
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
      first += word(bytes, at) + second;
      second += word(bytes, at + 4) + first;
    }
  }
  void put(std::string& bytes, std::size_t at) const {
    putBigEndian(bytes, at, first);
    putBigEndian(bytes, at + 4, second);
  }
};

std::string withRightChecksums(std::string_view store, std::string log) {
  if (log.size() < 32 || store.size() < 18) return log;
  const std::uint32_t stored = bigEndian16(store, 16);
  const std::size_t pageSize = stored == 1 ? 65536 : stored;
  if (pageSize < 512) return log;
  putBigEndian(log, 0, 0x377F0682u | (bigEndian32(log, 0) & 1u));
  putBigEndian(log, 4, 3007000);
  putBigEndian(log, 8, static_cast<std::uint32_t>(pageSize));
  Sums sums{(bigEndian32(log, 0) & 1u) != 0};
  sums.add(std::string_view(log).substr(0, 24));
  sums.put(log, 24);
  for (std::size_t at = 32; at + 24 + pageSize <= log.size(); at += 24 + pageSize) {
    log.replace(at + 8, 8, log, 16, 8);
    sums.add(std::string_view(log).substr(at, 8));
    sums.add(std::string_view(log).substr(at + 24, pageSize));
    sums.put(log, at + 16);
  }
  return log;
}

void readAndJudge(const Scratch& scratch, std::string_view store, std::string_view log) {
  scratch.write(store, log);
  const std::optional<StoreReading> reading =
      readStore(scratch.store(), 0, AllowedHosts("nav.example"), std::nullopt, {});
  demand(reading.has_value(), "a store that nobody writes is read");
  StoreImage image;
  demand(!image.open(scratch.store()), "a store that was read is read again");

  const ScanResult& scan = reading->scan;
  demand(scan.hasHost == (image.isSqlite() && scan.outcome == ScanResult::Outcome::Found),
         "a command has a host when the store is a database");
  if (scan.outcome != ScanResult::Outcome::Found) {
    demand(scan.value.empty(), "without a command there is no value");
    return;
  }
  demand(!scan.hasHost || AllowedHosts("nav.example").allows(scan.host), "its host is allowed");
  demand(scan.value.size() <= kMostValueBytes, "a value has at most 256 bytes");
  demand(scan.position >= kFirstPosition &&
             static_cast<std::uint64_t>(scan.position) - 1 + kCookieName.size() <= image.size(),
         "the name lies in the image");
  std::string name(kCookieName.size(), '\0');
  demand(!image.read(static_cast<std::uint64_t>(scan.position) - 1, {name.data(), name.size()}) &&
             name == kCookieName,
         "the name stands at its position");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Scratch scratch;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (bytes.size() < 2) return 0;
  const std::string_view store = bytes.substr(2, bigEndian16(bytes, 0));
  const std::string_view log = bytes.substr(2 + store.size());
  readAndJudge(scratch, store, log);
  if (!log.empty()) readAndJudge(scratch, store, withRightChecksums(store, std::string(log)));
  return 0;
}
