// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>

#include "bridge/CommandActions.h"
#include "bridge/CookieStoreReader.h"
#include "bridge/TraceBuffer.h"
#include "config/Settings.h"

// Looks at every tick whether the browser wrote its cookie store, and has a new command carried
// out, once.
class CookieWatcher {
 public:
  // What the watcher needs of the program around it.
  class Host {
   public:
    virtual ~Host() = default;
    virtual void pumpEvents() = 0;
    virtual void enableTimerCookies(bool on) = 0;
    virtual void saveOffsetCookie() = 0;
    virtual void showNotice(const Text& message) = 0;      // and starts its motion
    virtual void valueHandled(const Text& lastField) = 0;  // told after each new value
  };

  CookieWatcher(const Settings& settings, CookieStoreReader& reader, CommandActions& actions,
                TraceBuffer& trace, Host& host)
      : settings_(settings), reader_(reader), actions_(actions), trace_(trace), host_(host) {}

  // Takes the store as it is now as seen, when the program starts.
  void noteStoreTime();

  // Takes the command that stands in the store as handled. When the store cannot be read now, that
  // is done with the first command that can; and so it is with each other store that the settings
  // name later.
  void primeLastCommand();

  // One tick of `TimerCookies`.
  void tick();

 private:
  void look(const Text& storeTime);
  void handle(const Text& value);
  void traceValue(const Text& value);
  void prepare(std::vector<Text>& fields) const;

  const Settings& settings_;
  CookieStoreReader& reader_;
  CommandActions& actions_;
  TraceBuffer& trace_;
  Host& host_;

  bool tickBusy_ = false;
  bool primed_ = true;
  std::optional<Text> primedStore_;
  Text lastStoreTime_;
  Text lastCommandCookie_;
};

// The modification times of a store and of its log as one text, to the nanosecond, with what else
// tells one state of the files from another; only equality counts.
Text storeTimeText(const StoreStamp& stamp);
