// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bridge/StoreImage.h"

// Just enough of the SQLite file format (sections 1.6 "B-tree Pages" and 2.1 "Record Format") to
// find one row of one table. Every number is checked before it is used: the bytes are a stranger's.

// A varint and its length in bytes.
struct Varint {
  std::uint64_t value;
  std::size_t length;
};
std::optional<Varint> readVarint(std::string_view bytes, std::size_t at);

// One page of a table's b-tree.
class SqlitePage {
 public:
  // Pages are numbered from 1. Nothing for a page that does not read or is not of a table.
  static std::optional<SqlitePage> read(const StoreImage& image, std::uint32_t number);

  std::uint32_t number() const { return number_; }
  bool isLeaf() const { return leaf_; }
  std::size_t cellCount() const { return cells_.size(); }
  std::string_view bytes() const { return bytes_; }

  // Interior page: the child in which the row is, if anywhere. Leaf page: nothing.
  std::optional<std::uint32_t> childFor(std::int64_t rowId) const;

  // Interior page: its children from left to right.
  std::vector<std::uint32_t> children() const;

  // Leaf page: a row. Nothing for one whose numbers are wrong.
  struct Cell {
    std::int64_t rowId = 0;
    std::size_t payloadAt = 0;       // where in the page the payload begins
    std::size_t localSize = 0;       // bytes of it in this page
    std::uint64_t payloadSize = 0;   // bytes of it in all
    std::uint32_t overflowPage = 0;  // where the rest begins, 0 when there is none
  };
  std::optional<Cell> cell(std::size_t index, std::uint32_t usableSize) const;

 private:
  std::uint32_t number_ = 0;
  bool leaf_ = false;
  std::uint32_t rightmostChild_ = 0;
  std::string bytes_;
  std::vector<std::uint32_t> cells_;  // where each begins
};

// Bytes of a page that hold data: its size less what the header reserves for extensions.
std::optional<std::uint32_t> usablePageSize(const StoreImage& image);

// The whole payload of a cell with its overflow pages. Nothing when the chain is broken, or longer
// than `most` bytes.
std::optional<std::string> readPayload(const StoreImage& image, const SqlitePage& page,
                                       const SqlitePage::Cell& cell, std::uint32_t usableSize,
                                       std::uint64_t most);

// A column of a record: its place in the payload.
struct Column {
  enum class Kind { Null, Integer, Real, Blob, String };
  Kind kind = Kind::Null;
  std::uint64_t offset = 0;
  std::uint64_t length = 0;
};

// The columns of a record; nothing when header and payload do not fit each other.
std::optional<std::vector<Column>> readColumns(std::string_view payload);

// The value of an unsigned integer column: page numbers are the only ones that are asked for.
std::uint64_t unsignedOf(std::string_view payload, const Column& column);

// A row with its payload whole and its columns found.
struct SqliteRecord {
  std::string payload;
  std::vector<Column> columns;

  // The bytes of a text column; empty when there is no such column, or when it holds no text.
  std::string_view text(std::size_t column) const;
};

// Reads the row that `cell` tells of. Nothing for a cell or a record that does not read, or one of
// more than a megabyte.
std::optional<SqliteRecord> readRecord(const StoreImage& image, const SqlitePage& page,
                                       const std::optional<SqlitePage::Cell>& cell,
                                       std::uint32_t usableSize);
