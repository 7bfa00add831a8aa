// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieWatcher.h"

#include "text/CaseFold.h"
#include "text/EncodeDecodeUtf8.h"
#include "text/Numbers.h"
#include "text/Paths.h"
#include "text/Split.h"

namespace {

constexpr TextView kLookAgain = u"1";  // no store's time reads so
constexpr TextView kUserDataPrefix = u"../../user_datas/";
constexpr std::size_t kUpToRoot = 6;  // "../../"
constexpr std::int16_t kNoticesShown = 1;

Text stampText(const std::optional<FileStamp>& stamp) {
  if (!stamp) return u"-";
  return numberText(stamp->modified) + u" " + numberText(static_cast<std::int64_t>(stamp->size)) +
         u" " + numberText(static_cast<std::int64_t>(stamp->inode));
}

// Sets a flag for as long as it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

// Keeps the timer off for as long as it lives: no way out of a tick may leave it off.
class TimerOff {
 public:
  explicit TimerOff(CookieWatcher::Host& host) : host_(host) { host_.enableTimerCookies(false); }
  ~TimerOff() { host_.enableTimerCookies(true); }
  TimerOff(const TimerOff&) = delete;
  TimerOff& operator=(const TimerOff&) = delete;

 private:
  CookieWatcher::Host& host_;
};

}  // namespace

Text storeTimeText(const StoreStamp& stamp) {
  return stampText(stamp.store) + u" / " + stampText(stamp.log);
}

void CookieWatcher::noteStoreTime() {
  lastStoreTime_ = storeTimeText(storeStamp(settings_.cookiesPath));
}

void CookieWatcher::primeLastCommand() {
  primedStore_ = settings_.cookiesPath;
  primed_ = false;  // also when reading fails halfway
  lastCommandCookie_ = reader_.Extract(settings_.cookiesPath);
  primed_ = reader_.readTheStore();
}

void CookieWatcher::tick() {
  if (tickBusy_) return;
  const Raised busy(tickBusy_);
  host_.pumpEvents();

  const Text storeTime = storeTimeText(storeStamp(settings_.cookiesPath));
  if (storeTime == lastStoreTime_) return;
  const TimerOff off(host_);
  lastStoreTime_ = Text(kLookAgain);  // until it was looked at: a failure must not hide a command
  look(storeTime);
}

void CookieWatcher::look(const Text& storeTime) {
  if (primedStore_ && *primedStore_ != settings_.cookiesPath) {
    primedStore_ = settings_.cookiesPath;
    primed_ = false;
  }
  const Text value = reader_.Extract(settings_.cookiesPath);
  if (!primed_ && reader_.readTheStore()) {
    primed_ = true;
    lastCommandCookie_ = value;
  }
  if (value.empty()) {
    trace_.log(u"CookieValue est nul");
    return;
  }
  if (reader_.sawSettledStore()) lastStoreTime_ = storeTime;
  if (value != lastCommandCookie_) handle(value);
}

void CookieWatcher::handle(const Text& value) {
  host_.saveOffsetCookie();
  lastCommandCookie_ = value;
  traceValue(value);

  std::vector<Text> fields = split(value, kFieldSeparator);
  for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
    trace_.log(u"t(" + numberText(static_cast<std::int64_t>(i)) + u")=" + fields[i]);
  }
  const Text lastField = EncodeDecodeUtf8::decode(fields.back());
  prepare(fields);
  const std::optional<Text> message = actions_.carryOut(fields);
  host_.valueHandled(lastField);
  if (!message) return;

  if (settings_.notifications == kNoticesShown) host_.showNotice(*message);
  host_.pumpEvents();
}

void CookieWatcher::traceValue(const Text& value) {
  trace_.log(Text(u"cookie trouvé :").append(kCrLf).append(value));
  trace_.log(u"----- en UTF 8 décode : --------");
  trace_.log(EncodeDecodeUtf8::decode(value));
  trace_.log(u"--------------------------------");
}

// Makes the fields ready for the actions: the word in lower case, a path into the user's folder
// under the web application's root, the first argument decoded (createlink decodes its own).
void CookieWatcher::prepare(std::vector<Text>& fields) const {
  fields[0] = toLower(fields[0]);
  if (fields.size() < 2) return;

  Text& argument = fields[1];
  const bool decodesItself = fields[0] == u"createlink";
  const bool belowRoot = argument.starts_with(kUserDataPrefix);
  if (belowRoot) argument.erase(0, kUpToRoot);
  if (!decodesItself) argument = EncodeDecodeUtf8::decode(argument);
  if (!belowRoot) return;

  // The root is real text: as byte text its accents survive the decoding that is still to come.
  const Text root = webApplicationRoot(settings_.shortcutPath);
  argument.insert(0, decodesItself ? EncodeDecodeUtf8::encode(root) : root);
}
