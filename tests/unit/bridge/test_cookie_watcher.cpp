// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieWatcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "text/Numbers.h"
#include "text/Utf.h"
#include "unit/bridge/RecordingShell.h"
#include "unit/bridge/StoreFolder.h"

namespace {

using Events = std::vector<Text>;

class RecordingHost : public CookieWatcher::Host {
 public:
  explicit RecordingHost(Events& events) : events_(events) {}

  void pumpEvents() override {
    events_.push_back(u"pump");
    if (onPump) onPump();
  }
  void enableTimerCookies(bool on) override { events_.push_back(on ? u"timer on" : u"timer off"); }
  void saveOffsetCookie() override { events_.push_back(u"save offset"); }
  void showNotice(const Text& message) override { events_.push_back(u"notice " + message); }
  void valueHandled(const Text& lastField) override { events_.push_back(u"handled " + lastField); }

  std::function<void()> onPump;

 private:
  Events& events_;
};

class CookieWatcherTest : public testing::Test {
 protected:
  CookieWatcherTest() {
    settings_.cookiesPath = folder_ / u"store";
    settings_.shortcutPath = u"/home/hélène/nav/res_css/js/shortQrCode.js";
    trace_.observe([this](const Text& message) { events_.push_back(u"trace " + message); });
    put("");
  }

  // Writes a store that holds this value (with its end marker) and is not young any more.
  void put(const std::string& value) {
    folder_.write(u"store", "xxTavr1CodeToExe" + value + "_e-o-v_" + std::string(++writes_, '.'));
    age(settings_.cookiesPath, std::chrono::seconds(writes_));
  }

  // One tick: what happened in it, in order.
  Events tick() {
    events_.clear();
    watcher_.tick();
    return events_;
  }

  // What the actions, the notice and the page get to see of a value.
  Events doneFor(const std::string& value) {
    put(value);
    Events done;
    for (const Text& event : tick()) {
      const bool frame = event == u"pump" || event.starts_with(u"timer") ||
                         event.starts_with(u"trace") || event == u"save offset";
      if (!frame) done.push_back(event);
    }
    EXPECT_EQ(events_.back(), u"timer on");
    return done;
  }

  StoreFolder folder_;
  std::size_t writes_ = 0;
  Settings settings_;
  TraceBuffer trace_;
  Events events_;
  int reads_ = 0;
  std::function<void()> onRead_;
  std::optional<std::int64_t> stopped_;  // the time at which the clock stands still
  CookieStoreReader reader_{trace_,
                            [this] {
                              ++reads_;
                              if (onRead_) onRead_();
                            },
                            [this] { return stopped_.value_or(systemClock()); }};
  RecordingShell shell_{events_};
  ShortcutTable shortcuts_;
  bool lockThrows_ = false;
  CommandActions actions_{
      {.shell = shell_,
       .shortcuts = shortcuts_,
       .recShortQrCode = [this] { events_.push_back(u"write table"); },
       .writePageKey = [this](const Text& key) { events_.push_back(u"key " + key); },
       .lockMenus =
           [this](bool lock) {
             if (lockThrows_) throw std::runtime_error("lock");
             events_.push_back(lock ? u"lock" : u"unlock");
           },
       .currentFolder = [] { return Text(u"/"); }}};
  RecordingHost host_{events_};
  CookieWatcher watcher_{settings_, reader_, actions_, trace_, host_};
};

}  // namespace

TEST_F(CookieWatcherTest, ANewCommandIsTracedCarriedOutAndAnnouncedInThisOrder) {
  put("NotePad_|_C:/\xC3\xA9.txt_|_k1_|_");
  EXPECT_EQ(
      tick(),
      (Events{u"pump", u"timer off", u"save offset",
              u"trace cookie trouvé :\r\nNotePad_|_C:/Ã©.txt_|_k1_|_",
              u"trace ----- en UTF 8 décode : --------", u"trace NotePad_|_C:/é.txt_|_k1_|_",
              u"trace --------------------------------", u"trace t(0)=NotePad",
              u"trace t(1)=C:/Ã©.txt", u"trace t(2)=k1", u"run notepad " + nativePath(u"C:/é.txt"),
              u"handled ", u"notice Lancement de NotePad", u"pump", u"timer on"}));
}

TEST_F(CookieWatcherTest, AnUnchangedStoreIsNeitherReadNorTraced) {
  put("ini_|_k_|_");
  tick();
  reads_ = 0;
  EXPECT_EQ(tick(), Events{u"pump"});
  EXPECT_EQ(reads_, 0);
}

TEST_F(CookieWatcherTest, AChangedStoreWithTheSameCommandRunsAndTracesNothing) {
  put("ini_|_k_|_");
  tick();
  put("ini_|_k_|_");
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  EXPECT_EQ(doneFor("INI_|_k_|_"), (Events{u"key k", u"unlock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, TheLogsTimeCountsLikeTheStores) {
  put("ini_|_k_|_");
  tick();
  folder_.write(u"store-wal", "");
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
}

TEST_F(CookieWatcherTest, WhatStoodInTheStoreAtTheStartIsNotCarriedOut) {
  put("ini_|_k_|_");
  watcher_.noteStoreTime();
  EXPECT_EQ(tick(), Events{u"pump"});
  put("ini_|_k_|_");
  watcher_.primeLastCommand();
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  EXPECT_EQ(doneFor("ini_|_k2_|_"), (Events{u"key k2", u"unlock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, WhenTheStoreCannotBeReadAtTheStartItsFirstCommandIsStillALeftover) {
  removeFile(settings_.cookiesPath);
  watcher_.primeLastCommand();
  tick();
  put("ini_|_left over_|_");
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  EXPECT_EQ(doneFor("ini_|_new_|_"), (Events{u"key new", u"unlock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, AStoreWithoutACommandAtTheStartMakesTheFirstOneNew) {
  folder_.write(u"store", "no command here");
  watcher_.primeLastCommand();
  EXPECT_EQ(doneFor("ini_|_first_|_"), (Events{u"key first", u"unlock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, WhatStoodInAnotherStoreThatTheSettingsNameIsNotCarriedOut) {
  put("ini_|_k_|_");
  watcher_.primeLastCommand();
  settings_.cookiesPath = folder_ / u"other";
  folder_.write(u"other", "xxTavr1CodeToExeini_|_left over_|__e-o-v_");
  age(settings_.cookiesPath);
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  folder_.write(u"other", "xxTavr1CodeToExeini_|_new_|__e-o-v_x");
  age(settings_.cookiesPath);
  const Events events = tick();
  EXPECT_NE(std::find(events.begin(), events.end(), u"key new"), events.end());
}

TEST_F(CookieWatcherTest, AnEmptyValueIsTracedAndTheStoreLookedAtAgain) {
  const Events expected = {u"pump", u"timer off", u"trace CookieValue est nul", u"timer on"};
  EXPECT_EQ(tick(), expected);
  EXPECT_EQ(tick(), expected);
  removeFile(settings_.cookiesPath);
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"trace erreurFichier introuvable 53 - i=0",
                            u"trace CookieValue est nul", u"timer on"}));
  put("lzck_|_false_|_");
  EXPECT_EQ(tick().back(), u"timer on");
  EXPECT_EQ(tick(), Events{u"pump"});
}

TEST_F(CookieWatcherTest, AnEmptyValueDoesNotMakeTheLastCommandNew) {
  put("ini_|_k_|_");
  tick();
  put("");
  tick();
  put("ini_|_k_|_");
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
}

TEST_F(CookieWatcherTest, AYoungStoreIsLookedAtOnceMore) {
  put("ini_|_k_|_");
  const std::int64_t written = fileStamp(settings_.cookiesPath)->modified;
  stopped_ = written;
  tick();
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  stopped_ = written + 1'000'000'000;
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"}));
  EXPECT_EQ(tick(), Events{u"pump"});
}

TEST_F(CookieWatcherTest, ATickInsideATickDoesNothing) {
  host_.onPump = [this] { watcher_.tick(); };
  onRead_ = [this] { watcher_.tick(); };
  put("ini_|_k_|_");
  tick();
  EXPECT_EQ(std::count(events_.begin(), events_.end(), u"pump"), 2);
  EXPECT_EQ(std::count(events_.begin(), events_.end(), u"timer off"), 1);
  EXPECT_EQ(tick(), Events{u"pump"});
}

TEST_F(CookieWatcherTest, AnActionThatFailsLeavesTheTimerOnAndTheWatcherReady) {
  lockThrows_ = true;
  put("ini_|_k_|_");
  EXPECT_THROW(tick(), std::runtime_error);
  EXPECT_EQ(events_.back(), u"timer on");
  lockThrows_ = false;
  EXPECT_EQ(tick(), Events{u"pump"});
  put("ini_|_k_|_");
  EXPECT_EQ(tick(), (Events{u"pump", u"timer off", u"timer on"})) << "it counts as done";
  EXPECT_EQ(doneFor("lzck_|_x_|_"), (Events{u"lock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, ReadingThatFailsLeavesTheTimerOnAndTheWatcherReady) {
  put("ini_|_k_|_");
  onRead_ = [] { throw std::runtime_error("yield"); };
  EXPECT_THROW(tick(), std::runtime_error);
  EXPECT_EQ(events_, (Events{u"pump", u"timer off", u"timer on"}));
  onRead_ = {};
  host_.onPump = [] { throw std::runtime_error("pump"); };
  EXPECT_THROW(tick(), std::runtime_error);
  host_.onPump = {};
  EXPECT_EQ(doneFor("ini_|_k2_|_"), (Events{u"key k2", u"unlock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, ACommandThatWasNotReadIsLookedForAtTheNextTick) {
  put("ini_|_k_|_");
  onRead_ = [] { throw std::runtime_error("yield"); };
  EXPECT_THROW(tick(), std::runtime_error);
  onRead_ = {};
  const Events events = tick();
  EXPECT_NE(std::find(events.begin(), events.end(), u"unlock"), events.end());
}

TEST_F(CookieWatcherTest, ALeftoverThatWasNotReadAtFirstIsNotCarriedOut) {
  put("ini_|_old_|_");
  onRead_ = [] { throw std::runtime_error("yield"); };
  EXPECT_THROW(watcher_.primeLastCommand(), std::runtime_error);
  onRead_ = {};
  EXPECT_EQ(doneFor("ini_|_old_|_"), Events{});
  EXPECT_EQ(doneFor("lzck_|_x_|_"), (Events{u"lock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, TheLastFieldIsNotTraced) {
  put("runapp_|_../../user_datas/doc.pdf_|_");
  Events fields;
  for (const Text& event : tick()) {
    if (event.starts_with(u"trace t(")) fields.push_back(event);
  }
  EXPECT_EQ(fields, (Events{u"trace t(0)=runapp", u"trace t(1)=../../user_datas/doc.pdf"}));
}

TEST_F(CookieWatcherTest, TheCommandWordIsTakenInAnyCase) {
  EXPECT_EQ(doneFor("RUNAPP_|_x_|_y_|_"),
            (Events{u"open file=x parameters=y directory=/ maximised", u"handled ",
                    u"notice Lancement de l'application"}));
  EXPECT_EQ(doneFor("lZcK_|_FALSE_|_"), (Events{u"lock", u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, APathIntoTheUsersFolderIsPutUnderTheWebApplicationsRoot) {
  const struct {
    std::string field;
    Text path;
  } rows[] = {
      {"../../user_datas/a/b.pdf", u"/home/hélène/nav/user_datas/a/b.pdf"},
      {"../../user_datas/\xC3\xA9.pdf", u"/home/hélène/nav/user_datas/é.pdf"},
      {"../../user_datas/", u"/home/hélène/nav/user_datas/"},
      {"../../user_datas", u"../../user_datas"},
      {"../user_datas/x", u"../user_datas/x"},
      {"../../User_datas/x", u"../../User_datas/x"},
      {"x../../user_datas/x", u"x../../user_datas/x"},
      {"../../user_datas/../../user_datas/x", u"/home/hélène/nav/user_datas/../../user_datas/x"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(doneFor("notepad_|_" + row.field + "_|_").front(),
              u"run notepad " + nativePath(row.path));
  }
  // A byte that is no UTF-8 stays what it is.
  const Text folder = u"/h" + Text(1, char16_t{0xDCE9});
  settings_.shortcutPath = folder + u"/res_css/js/shortQrCode.js";
  EXPECT_EQ(doneFor("notepad_|_../../user_datas/\xC3\xA9_|_").front(),
            u"run notepad " + nativePath(folder + u"/user_datas/é"));
  // Without the script's folder in its path there is no root.
  settings_.shortcutPath = u"/home/shortQrCode.js";
  EXPECT_EQ(doneFor("notepad_|_../../user_datas/a_|_").front(),
            u"run notepad " + nativePath(u"user_datas/a"));
}

TEST_F(CookieWatcherTest, TheRunExampleGivesThreeFields) {
  EXPECT_EQ(doneFor("runapp_|_../../user_datas/doc.pdf_|_"),
            (Events{u"open file=" + nativePath(u"/home/hélène/nav/user_datas/doc.pdf") +
                        u" parameters= directory=/ maximised",
                    u"handled ", u"notice Lancement de l'application"}));
}

TEST_F(CookieWatcherTest, CreatelinkGetsItsFieldsUndecoded) {
  shortcuts_.load(42, {});
  EXPECT_EQ(doneFor("CreateLink_|_webhttp://x/\xC3\xA9_|_\xC3\x89t\xC3\xA9_|_"),
            (Events{u"write table", u"handled ", u"notice Raccourci Créé"}));
  EXPECT_EQ(shortcuts_.rows().back(), (Shortcut{u"000000042", u"Été", u"http://x/é"}));
  doneFor("createlink_|_../../user_datas/\xC3\xA9_|_n_|_");
  EXPECT_EQ(shortcuts_.rows().back().address, u"me/hélène/nav/user_datas/é");
}

TEST_F(CookieWatcherTest, EveryFieldThatAnActionTakesIsDecodedOnce) {
  EXPECT_EQ(doneFor("ini_|_\xC3\x83\xC2\xA9_|_").front(), u"key Ã©");
  EXPECT_EQ(doneFor("runapp_|_\xC3\xA9_|_\xC3\xA9_|_").front(),
            u"open file=é parameters=é directory=/ maximised");
  EXPECT_EQ(doneFor("ini_|_\xC3\xA9_|_\xC3\xA9"),
            (Events{u"key é", u"unlock", u"handled é", u"notice "}));
}

TEST_F(CookieWatcherTest, TooFewFieldsEndTheTickWithoutActionOrNotice) {
  for (const std::string value :
       {"ini", "runapp_|_x", "createlink_|_webx", "unknown", "_|", "a_|b"}) {
    const Events done = doneFor(value);
    ASSERT_EQ(done.size(), 1u) << value;
    EXPECT_TRUE(done.front().starts_with(u"handled ")) << value;
    EXPECT_EQ(events_[events_.size() - 2], done.front()) << "no more events are pumped";
  }
}

TEST_F(CookieWatcherTest, AnUnknownWordShowsAnEmptyNotice) {
  EXPECT_EQ(doneFor("calc_|_x_|_"), (Events{u"handled ", u"notice "}));
  EXPECT_EQ(doneFor("_|_"), (Events{u"handled ", u"notice "}));
}

TEST_F(CookieWatcherTest, TheNoticeIsShownWhenNotificationsAreOn) {
  const struct {
    std::int16_t notifications;
    bool shown;
  } rows[] = {{0, false}, {1, true}, {2, false}, {-1, false}};
  for (const auto& row : rows) {
    settings_.notifications = row.notifications;
    const Events done = doneFor("notepad_|_x" + std::to_string(row.notifications) + "_|_");
    EXPECT_EQ(done.back().starts_with(u"notice "), row.shown) << row.notifications;
    EXPECT_EQ(events_[events_.size() - 2], u"pump");
  }
}

TEST_F(CookieWatcherTest, TheStoresTimeTextTellsStatesApart) {
  const FileStamp stamp{.size = 1, .inode = 2, .modified = 1'760'000'000'123'456'789, .changed = 4};
  FileStamp later = stamp;
  ++later.modified;
  FileStamp larger = stamp;
  ++larger.size;
  FileStamp other = stamp;
  ++other.inode;
  const StoreStamp states[] = {{},          {stamp, {}},    {{}, stamp},  {stamp, stamp},
                               {later, {}}, {stamp, later}, {larger, {}}, {other, {}}};
  std::set<Text> texts;
  for (const StoreStamp& state : states) texts.insert(storeTimeText(state));
  EXPECT_EQ(texts.size(), std::size(states));
  EXPECT_EQ(texts.count(u"1"), 0u);
  EXPECT_EQ(storeTimeText({stamp, stamp}), storeTimeText({stamp, stamp}));
}

// Also run under strace, which counts what an idle tick asks of the system.
TEST_F(CookieWatcherTest, IdleTicksOpenNothing) {
  put("ini_|_k_|_");
  tick();
  const char* const wanted = std::getenv("TAVROLLO_IDLE_TICKS");
  const int ticks = wanted ? std::atoi(wanted) : 10;
  reads_ = 0;
  for (int i = 0; i < ticks; ++i) ASSERT_EQ(tick(), Events{u"pump"});
  EXPECT_EQ(reads_, 0);
}
