// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "text/Utf.h"
#include "unit/bridge/StoreFolder.h"

// An SQLite database, written by SQLite itself.
class Database {
 public:
  explicit Database(const Text& path) {
    EXPECT_EQ(sqlite3_open(toUtf8Lossless(path).c_str(), &handle_), SQLITE_OK);
  }
  ~Database() { close(); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  void close() {
    sqlite3_close(handle_);
    handle_ = nullptr;
  }

  void run(const std::string& sql) {
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK)
        << sql << ": " << (error ? error : "");
    sqlite3_free(error);
  }

  // The first column of the first row; "(none)" when there is no row.
  std::string ask(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sql;
    std::string answer = "(none)";
    if (sqlite3_step(statement) == SQLITE_ROW) {
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, 0));
      const void* const text = sqlite3_column_blob(statement, 0);
      answer = text ? std::string(static_cast<const char*>(text), size) : std::string();
    }
    sqlite3_finalize(statement);
    return answer;
  }

 private:
  sqlite3* handle_ = nullptr;
};

inline std::string quoted(const std::string& text) { return "'" + text + "'"; }

// What a page writes: the fields and the end marker.
inline std::string withMarker(const std::string& value) { return value + "_e-o-v_"; }

// The cookie store of a Firefox: its table, its page size, its log that is copied back every 16
// frames.
class FirefoxStore {
 public:
  explicit FirefoxStore(const Text& path, int pageSize = 32768) : path_(path), database_(path) {
    database_.run("PRAGMA page_size=" + std::to_string(pageSize));
    database_.run("PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=WAL; PRAGMA synchronous=OFF");
    database_.run("PRAGMA wal_autocheckpoint=16; PRAGMA secure_delete=ON");
    database_.run(
        "CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT NOT NULL DEFAULT '',"
        " name TEXT, value TEXT, host TEXT, path TEXT, expiry INTEGER, lastAccessed INTEGER,"
        " creationTime INTEGER, isSecure INTEGER, isHttpOnly INTEGER, inBrowserElement INTEGER"
        " DEFAULT 0, sameSite INTEGER DEFAULT 0, schemeMap INTEGER DEFAULT 0,"
        " isPartitionedAttributeSet INTEGER DEFAULT 0, updateTime INTEGER,"
        " CONSTRAINT moz_uniqueid UNIQUE (name, host, path, originAttributes))");
  }

  void set(const std::string& name, const std::string& value, const std::string& host,
           const std::string& path = "/nav") {
    database_.run(
        "INSERT OR REPLACE INTO moz_cookies (name, value, host, path, expiry, lastAccessed,"
        " creationTime, isSecure, isHttpOnly, schemeMap) VALUES (" +
        quoted(name) + "," + quoted(value) + "," + quoted(host) + "," + quoted(path) +
        ",1999999999,1760000000000000,1760000000000000,0,0,4)");
  }

  // The command of a page from the disk.
  void setCommand(const std::string& value, const std::string& host = "") {
    set("Tavr1CodeToExe", withMarker(value), host);
  }

  void setOthers(int count) {
    database_.run("BEGIN");
    for (int i = 0; i < count; ++i) {
      set("cookie" + std::to_string(i), std::string(20 + static_cast<std::size_t>(i % 150), 'v'),
          ".site" + std::to_string(i % 700) + ".example");
    }
    database_.run("COMMIT");
  }

  Database& database() { return database_; }
  const Text& path() const { return path_; }

 private:
  Text path_;
  Database database_;
};

// The cookie store of a Chromium: rollback journal, values encrypted.
class ChromiumStore {
 public:
  explicit ChromiumStore(const Text& path) : database_(path) {
    database_.run("PRAGMA page_size=4096; PRAGMA journal_mode=DELETE; PRAGMA synchronous=OFF");
    database_.run(
        "CREATE TABLE meta(key LONGVARCHAR NOT NULL UNIQUE PRIMARY KEY, value LONGVARCHAR);"
        "CREATE TABLE cookies(creation_utc INTEGER NOT NULL,host_key TEXT NOT NULL,"
        "top_frame_site_key TEXT NOT NULL,name TEXT NOT NULL,value TEXT NOT NULL,"
        "encrypted_value BLOB NOT NULL,path TEXT NOT NULL,expires_utc INTEGER NOT NULL,"
        "is_secure INTEGER NOT NULL,is_httponly INTEGER NOT NULL,last_access_utc INTEGER NOT NULL);"
        "CREATE UNIQUE INDEX cookies_unique_index ON cookies(host_key, top_frame_site_key, name,"
        " path)");
  }

  // `encrypted` in hexadecimal digits.
  void set(const std::string& name, const std::string& value, const std::string& encrypted,
           const std::string& host) {
    database_.run("INSERT OR REPLACE INTO cookies VALUES (13300000000000000," + quoted(host) +
                  ",''," + quoted(name) + "," + quoted(value) + ",x'" + encrypted +
                  "','/',13400000000000000,0,0,13300000000000000)");
  }

  Database& database() { return database_; }

 private:
  Database database_;
};
