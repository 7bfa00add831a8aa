// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/StoreScan.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "bridge/CookieTable.h"
#include "text/Numbers.h"
#include "text/Utf.h"

namespace {

constexpr std::size_t kPiece = 256 * 1024;  // stays in the processor's cache while it is searched

class Scan {
 public:
  Scan(const StoreImage& image, const AllowedHosts& hosts, const std::function<void()>& yield)
      : image_(image), hosts_(hosts), yield_(yield), table_(image), buffer_(kPiece, '\0') {}

  ScanResult run(std::int32_t offset) {
    const auto size = static_cast<std::int64_t>(image_.size());
    if (size > std::numeric_limits<std::int32_t>::max()) return failed(failures::overflow(), 0);

    std::int64_t start = offset < kFirstPosition || offset > size ? kFirstPosition : offset;
    start = std::max(start - kBackWindow, kFirstPosition);
    if (searchFrom(start, size)) return std::move(result_);
    // The second pass covers the whole image; from `start` on it would find what the first found.
    const std::int64_t overlap = static_cast<std::int64_t>(kCookieName.size()) - 1;
    if (start > kFirstPosition) searchFrom(kFirstPosition, std::min(start - 1 + overlap, size));
    return std::move(result_);
  }

 private:
  // Searches positions `from` to `last`. True when the scan is over: found, or failed.
  bool searchFrom(std::int64_t from, std::int64_t last) {
    const std::size_t carry = kCookieName.size() - 1;
    std::size_t kept = 0;  // bytes of the piece before, in front of the new ones
    for (std::int64_t at = from; at <= last;) {
      if (yield_) yield_();
      const auto left = static_cast<std::size_t>(last - at + 1);
      const std::size_t length = std::min(left, buffer_.size() - kept);
      if (Failure failure =
              image_.read(static_cast<std::uint64_t>(at - 1), {buffer_.data() + kept, length})) {
        result_ = failed(failure, at);
        return true;
      }
      const std::int64_t pieceStart = at - static_cast<std::int64_t>(kept);
      if (searchPiece({buffer_.data(), kept + length}, pieceStart)) return true;

      at += static_cast<std::int64_t>(length);
      const std::size_t filled = kept + length;
      kept = std::min(carry, filled);
      buffer_.replace(0, kept, buffer_, filled - kept, kept);
    }
    return false;
  }

  bool searchPiece(std::string_view piece, std::int64_t pieceStart) {
    for (std::size_t hit = 0; (hit = findCookieName(piece, hit)) != std::string_view::npos; ++hit) {
      if (tryHit(pieceStart + static_cast<std::int64_t>(hit))) return true;
    }
    return false;
  }

  // True when the hit ends the scan: its value was read, or reading failed.
  bool tryHit(std::int64_t position) {
    const auto nameOffset = static_cast<std::uint64_t>(position - 1);
    if (!image_.isSqlite()) return takeValue(position, nameOffset + kCookieName.size());

    const std::optional<CookieRow> row =
        table_.rowNamedAt(nameOffset, kCookieName, kMostValueBytes + kEndMarker.size() - 1);
    if (!row) return false;
    if (!hosts_.allows(row->host)) {
      std::vector<std::string>& refused = result_.refusedHosts;
      if (std::find(refused.begin(), refused.end(), row->host) == refused.end()) {
        refused.push_back(row->host);
      }
      return false;
    }
    result_.hasHost = true;
    result_.host = row->host;
    if (row->valueLength == 0) return found(position, {});  // an encrypted row
    return takeValue(position, row->valueOffset);
  }

  bool takeValue(std::int64_t position, std::uint64_t valueOffset) {
    const std::uint64_t left = image_.size() - valueOffset;
    std::string bytes(std::min<std::uint64_t>(left, kMostValueBytes + kEndMarker.size() - 1), '\0');
    if (Failure failure = image_.read(valueOffset, {bytes.data(), bytes.size()})) {
      result_ = failed(failure, position);
      return true;
    }
    const std::size_t end = bytes.find(kEndMarker);
    if (end < kMostValueBytes) return found(position, bytes.substr(0, end));
    if (bytes.size() < kMostValueBytes || needsMore(bytes)) {
      result_ = failed(failures::pastEndOfFile(), position);
      return true;
    }
    return found(position, bytes.substr(0, kMostValueBytes));
  }

  // An underscore asks for the six bytes behind it, to see whether it begins the end marker.
  static bool needsMore(std::string_view bytes) {
    const std::size_t underscore = bytes.substr(0, kMostValueBytes).rfind('_');
    return underscore != std::string_view::npos && underscore + kEndMarker.size() > bytes.size();
  }

  bool found(std::int64_t position, std::string value) {
    result_.outcome = ScanResult::Outcome::Found;
    result_.position = position;
    result_.value = std::move(value);
    return true;
  }

  ScanResult failed(Failure failure, std::int64_t position) {
    ScanResult result;
    result.outcome = ScanResult::Outcome::Failed;
    result.position = position;
    result.failure = std::move(failure);
    result.refusedHosts = std::move(result_.refusedHosts);
    return result;
  }

  const StoreImage& image_;
  const AllowedHosts& hosts_;
  const std::function<void()>& yield_;
  CookieTable table_;
  std::string buffer_;
  ScanResult result_;
};

}  // namespace

ScanResult scanStore(const StoreImage& image, std::int32_t offset, const AllowedHosts& hosts,
                     const std::function<void()>& yield) {
  return Scan(image, hosts, yield).run(offset);
}

Text refusedHostLine(std::string_view host) { return u"cookie refusé, hôte : " + fromUtf8(host); }

Text scanErrorLine(const Failure& failure, std::int64_t position) {
  Text line = u"erreur" + failure.description + u" ";
  line += numberText(static_cast<std::int64_t>(failure.number));
  return line + u" - i=" + numberText(position);
}
