// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/SqlitePage.h"

#include <algorithm>

#include "bridge/BigEndian.h"

namespace {

constexpr std::uint8_t kTableInterior = 5;
constexpr std::uint8_t kTableLeaf = 13;
constexpr std::size_t kFileHeaderSize = 100;  // page 1 begins with it
constexpr std::size_t kMostColumns = 2000;    // SQLite's own default limit
constexpr std::uint32_t kLeastUsableSize = 480;
constexpr std::uint64_t kMostPayload = 1 << 20;

std::uint8_t byteAt(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes[at]);
}

// How much of a payload stays in the leaf page (section 1.6, "Cell Payload Overflow Pages").
std::uint64_t localPayload(std::uint64_t payload, std::uint32_t usable) {
  const std::uint64_t most = usable - 35;
  if (payload <= most) return payload;
  const std::uint64_t least = (usable - 12) * 32 / 255 - 23;
  const std::uint64_t fitting = least + (payload - least) % (usable - 4);
  return fitting <= most ? fitting : least;
}

std::uint64_t serialLength(std::uint64_t type) {
  constexpr std::uint64_t kFixed[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
  return type < 10 ? kFixed[type] : (type - 12) / 2;
}

Column::Kind serialKind(std::uint64_t type) {
  if (type == 0) return Column::Kind::Null;
  if (type == 7) return Column::Kind::Real;
  if (type < 12) return Column::Kind::Integer;
  return type % 2 == 0 ? Column::Kind::Blob : Column::Kind::String;
}

}  // namespace

std::optional<Varint> readVarint(std::string_view bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    if (at + i >= bytes.size()) return std::nullopt;
    const std::uint8_t byte = byteAt(bytes, at + i);
    if (i == 8) return Varint{(value << 8) | byte, 9};
    value = (value << 7) | (byte & 0x7Fu);
    if (byte < 0x80) return Varint{value, i + 1};
  }
  return std::nullopt;
}

std::optional<SqlitePage> SqlitePage::read(const StoreImage& image, std::uint32_t number) {
  if (number == 0) return std::nullopt;
  SqlitePage page;
  page.number_ = number;
  page.bytes_.resize(image.pageSize());
  const std::uint64_t offset = (std::uint64_t{number} - 1) * image.pageSize();
  if (image.read(offset, {page.bytes_.data(), page.bytes_.size()})) return std::nullopt;

  const std::size_t header = number == 1 ? kFileHeaderSize : 0;
  const std::uint8_t type = byteAt(page.bytes_, header);
  if (type != kTableInterior && type != kTableLeaf) return std::nullopt;
  page.leaf_ = type == kTableLeaf;
  if (!page.leaf_) page.rightmostChild_ = bigEndian32(page.bytes_, header + 8);

  const std::size_t count = bigEndian16(page.bytes_, header + 3);
  const std::size_t pointers = header + (page.leaf_ ? 8 : 12);
  if (pointers + count * 2 > page.bytes_.size()) return std::nullopt;
  page.cells_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    page.cells_.push_back(bigEndian16(page.bytes_, pointers + i * 2));
  }
  return page;
}

std::optional<std::uint32_t> SqlitePage::childFor(std::int64_t rowId) const {
  if (leaf_) return std::nullopt;
  for (const std::uint32_t at : cells_) {
    if (at + 4 > bytes_.size()) return std::nullopt;
    const std::optional<Varint> key = readVarint(bytes_, at + 4);
    if (!key) return std::nullopt;
    if (rowId <= static_cast<std::int64_t>(key->value)) return bigEndian32(bytes_, at);
  }
  return rightmostChild_;
}

std::vector<std::uint32_t> SqlitePage::children() const {
  std::vector<std::uint32_t> pages;
  if (leaf_) return pages;
  for (const std::uint32_t at : cells_) {
    if (at + 4 <= bytes_.size()) pages.push_back(bigEndian32(bytes_, at));
  }
  pages.push_back(rightmostChild_);
  return pages;
}

std::optional<SqlitePage::Cell> SqlitePage::cell(std::size_t index,
                                                 std::uint32_t usableSize) const {
  const std::size_t at = cells_[index];
  const std::optional<Varint> size = readVarint(bytes_, at);
  if (!size) return std::nullopt;
  const std::optional<Varint> rowId = readVarint(bytes_, at + size->length);
  if (!rowId) return std::nullopt;

  Cell cell;
  cell.rowId = static_cast<std::int64_t>(rowId->value);
  cell.payloadAt = at + size->length + rowId->length;
  cell.payloadSize = size->value;
  cell.localSize = static_cast<std::size_t>(localPayload(size->value, usableSize));
  const std::size_t end = cell.payloadAt + cell.localSize;
  if (cell.localSize == cell.payloadSize) {
    return end <= bytes_.size() ? std::optional(cell) : std::nullopt;
  }
  if (end + 4 > bytes_.size()) return std::nullopt;
  cell.overflowPage = bigEndian32(bytes_, end);
  return cell;
}

std::optional<std::uint32_t> usablePageSize(const StoreImage& image) {
  char reserved = 0;
  if (image.read(20, {&reserved, 1})) return std::nullopt;
  const std::uint32_t usable = image.pageSize() - static_cast<std::uint8_t>(reserved);
  if (usable < kLeastUsableSize) return std::nullopt;
  return usable;
}

std::optional<std::string> readPayload(const StoreImage& image, const SqlitePage& page,
                                       const SqlitePage::Cell& cell, std::uint32_t usableSize,
                                       std::uint64_t most) {
  if (cell.payloadSize > most) return std::nullopt;
  std::string payload(page.bytes().substr(cell.payloadAt, cell.localSize));
  std::string overflow(usableSize, '\0');
  // Each page brings bytes, so the chain ends with the payload even when it runs in a circle.
  for (std::uint32_t next = cell.overflowPage; payload.size() < cell.payloadSize;) {
    if (next == 0) return std::nullopt;
    const std::uint64_t offset = (std::uint64_t{next} - 1) * image.pageSize();
    if (image.read(offset, {overflow.data(), overflow.size()})) return std::nullopt;
    next = bigEndian32(overflow, 0);
    const std::size_t missing = static_cast<std::size_t>(cell.payloadSize) - payload.size();
    payload.append(overflow, 4, std::min<std::size_t>(missing, usableSize - 4));
  }
  return payload;
}

std::optional<std::vector<Column>> readColumns(std::string_view payload) {
  const std::optional<Varint> headerSize = readVarint(payload, 0);
  if (!headerSize || headerSize->value > payload.size()) return std::nullopt;
  const std::string_view header = payload.substr(0, static_cast<std::size_t>(headerSize->value));

  std::vector<Column> columns;
  std::uint64_t offset = header.size();
  for (std::size_t at = headerSize->length; at < header.size();) {
    const std::optional<Varint> type = readVarint(header, at);
    if (!type || type->value == 10 || type->value == 11) return std::nullopt;
    const std::uint64_t length = serialLength(type->value);
    if (length > payload.size() - offset || columns.size() == kMostColumns) return std::nullopt;
    columns.push_back({serialKind(type->value), offset, length});
    offset += length;
    at += type->length;
  }
  return columns;
}

std::uint64_t unsignedOf(std::string_view payload, const Column& column) {
  std::uint64_t value = 0;
  for (std::uint64_t i = 0; i < column.length; ++i) {
    value = (value << 8) | byteAt(payload, static_cast<std::size_t>(column.offset + i));
  }
  return value;
}

std::string_view SqliteRecord::text(std::size_t column) const {
  if (column >= columns.size() || columns[column].kind != Column::Kind::String) return {};
  return std::string_view(payload).substr(static_cast<std::size_t>(columns[column].offset),
                                          static_cast<std::size_t>(columns[column].length));
}

std::optional<SqliteRecord> readRecord(const StoreImage& image, const SqlitePage& page,
                                       const std::optional<SqlitePage::Cell>& cell,
                                       std::uint32_t usableSize) {
  if (!cell) return std::nullopt;
  std::optional<std::string> payload = readPayload(image, page, *cell, usableSize, kMostPayload);
  if (!payload) return std::nullopt;
  std::optional<std::vector<Column>> columns = readColumns(*payload);
  if (!columns) return std::nullopt;
  return SqliteRecord{std::move(*payload), std::move(*columns)};
}
