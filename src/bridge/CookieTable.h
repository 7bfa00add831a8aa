// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bridge/SqlitePage.h"
#include "bridge/StoreImage.h"

// A row of the browser's table of cookies, as far as the bridge cares.
struct CookieRow {
  std::string host;               // "" for a page from the disk
  std::uint64_t valueOffset = 0;  // in the image, from 0
  std::uint64_t valueLength = 0;  // in bytes
};

// Tells whether a place in a store image is the name of a live cookie. An SQLite file repeats names
// in its indexes, keeps old rows in free space, and holds whatever a web site puts into its own
// cookies: all of these must be told apart from a real row before a command is believed.
// Whatever does not read as the format demands is no row (SQLite file format, sections 1.6 and 2).
class CookieTable {
 public:
  // `image` must be an SQLite image and outlive the table. Nothing is read until the first
  // question.
  explicit CookieTable(const StoreImage& image) : image_(image) {}

  // The live row whose name column is exactly `name` and begins at `nameOffset` (from 0), with its
  // value at least for the first `valueNeeded` bytes in one piece; nothing when there is none.
  std::optional<CookieRow> rowNamedAt(std::uint64_t nameOffset, std::string_view name,
                                      std::uint64_t valueNeeded);

 private:
  struct Schema {
    std::uint32_t rootPage = 0;
    std::size_t nameColumn = 0;
    std::size_t valueColumn = 0;
    std::size_t hostColumn = 0;
  };
  const std::optional<Schema>& schema();
  std::optional<Schema> readSchema() const;
  static std::optional<Schema> cookieSchema(const SqliteRecord& record);
  std::optional<CookieRow> cookieRow(const SqliteRecord& record, const SqlitePage::Cell& cell,
                                     std::uint64_t nameAt, std::string_view name,
                                     std::uint64_t valueNeeded) const;
  const std::optional<SqlitePage>& page(std::uint32_t number);

  const StoreImage& image_;
  bool schemaRead_ = false;
  std::optional<Schema> schema_;
  std::uint32_t pageNumber_ = 0;    // of page_, also when that page is none of a table
  std::optional<SqlitePage> page_;  // the last one: a page may hold the name hundreds of times
};
