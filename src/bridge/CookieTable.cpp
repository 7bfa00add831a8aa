// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieTable.h"

#include <algorithm>
#include <vector>

#include "bridge/SchemaSql.h"

namespace {

constexpr std::uint64_t kMostPayload = 1 << 20;
constexpr std::size_t kMostSchemaPages = 1000;
constexpr int kMostLevels = 20;  // a b-tree of two-cell pages over 2^31 pages is not deeper

// The columns of the schema table: type, name, tbl_name, rootpage, sql.
enum SchemaColumn : std::size_t { kType, kName, kTableName, kRootPage, kSql, kSchemaColumns };

// A row with its payload whole and its columns found.
struct Record {
  std::string payload;
  std::vector<Column> columns;

  std::string_view text(std::size_t column) const {
    if (column >= columns.size() || columns[column].kind != Column::Kind::String) return {};
    return std::string_view(payload).substr(static_cast<std::size_t>(columns[column].offset),
                                            static_cast<std::size_t>(columns[column].length));
  }
};

std::optional<Record> readRecord(const StoreImage& image, const SqlitePage& page,
                                 const SqlitePage::Cell& cell, std::uint32_t usable) {
  std::optional<std::string> payload = readPayload(image, page, cell, usable, kMostPayload);
  if (!payload) return std::nullopt;
  std::optional<std::vector<Column>> columns = readColumns(*payload);
  if (!columns) return std::nullopt;
  return Record{std::move(*payload), std::move(*columns)};
}

std::optional<std::size_t> indexOf(const std::vector<std::string>& names, std::string_view name) {
  const auto found = std::find(names.begin(), names.end(), name);
  if (found == names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - names.begin());
}

// True when the row is found in `page` by the way that a reader of the table takes: free pages and
// pages of other tables are not on it.
bool leadsTo(const StoreImage& image, std::uint32_t root, std::int64_t rowId, std::uint32_t page) {
  std::uint32_t number = root;
  for (int level = 0; level < kMostLevels; ++level) {
    if (number == page) return true;
    const std::optional<SqlitePage> interior = SqlitePage::read(image, number);
    if (!interior) return false;
    const std::optional<std::uint32_t> child = interior->childFor(rowId);
    if (!child) return false;
    number = *child;
  }
  return false;
}

bool contains(std::uint64_t from, std::uint64_t length, std::uint64_t place) {
  return place >= from && place - from < length;
}

}  // namespace

const std::optional<CookieTable::Schema>& CookieTable::schema() {
  if (!schemaRead_) schema_ = readSchema();
  schemaRead_ = true;
  return schema_;
}

std::optional<CookieTable::Schema> CookieTable::readSchema() const {
  const std::optional<std::uint32_t> usable = usablePageSize(image_);
  if (!usable) return std::nullopt;

  std::vector<std::uint32_t> pages = {1};
  for (std::size_t i = 0; i < pages.size() && i < kMostSchemaPages; ++i) {
    const std::optional<SqlitePage> page = SqlitePage::read(image_, pages[i]);
    if (!page) return std::nullopt;
    const std::vector<std::uint32_t> children = page->children();
    pages.insert(pages.end(), children.begin(), children.end());

    for (std::size_t c = 0; page->isLeaf() && c < page->cellCount(); ++c) {
      const std::optional<SqlitePage::Cell> cell = page->cell(c, *usable);
      if (!cell) continue;
      const std::optional<Record> record = readRecord(image_, *page, *cell, *usable);
      if (!record || record->columns.size() < kSchemaColumns) continue;
      if (record->text(kType) != "table") continue;
      const std::string_view table = record->text(kName);
      if (table != "moz_cookies" && table != "cookies") continue;

      const std::vector<std::string> names = columnNames(record->text(kSql));
      const auto name = indexOf(names, "name");
      const auto value = indexOf(names, "value");
      const auto host = indexOf(names, table == "cookies" ? "host_key" : "host");
      const Column& root = record->columns[kRootPage];
      if (!name || !value || !host || root.kind != Column::Kind::Integer) continue;
      return Schema{static_cast<std::uint32_t>(unsignedOf(record->payload, root)), *name, *value,
                    *host};
    }
  }
  return std::nullopt;
}

const std::optional<SqlitePage>& CookieTable::page(std::uint32_t number) {
  if (number != pageNumber_) page_ = SqlitePage::read(image_, number);
  pageNumber_ = number;
  return page_;
}

std::optional<CookieRow> CookieTable::rowNamedAt(std::uint64_t nameOffset, std::string_view name,
                                                 std::uint64_t valueNeeded) {
  const std::optional<std::uint32_t> usable = usablePageSize(image_);
  if (!usable || !schema()) return std::nullopt;
  const std::uint64_t number = nameOffset / image_.pageSize() + 1;
  if (number > UINT32_MAX) return std::nullopt;
  const std::optional<SqlitePage>& leaf = page(static_cast<std::uint32_t>(number));
  if (!leaf || !leaf->isLeaf()) return std::nullopt;

  const std::uint64_t inPage = nameOffset % image_.pageSize();
  for (std::size_t i = 0; i < leaf->cellCount(); ++i) {
    const std::optional<SqlitePage::Cell> cell = leaf->cell(i, *usable);
    if (!cell || !contains(cell->payloadAt, cell->localSize, inPage)) continue;

    const std::optional<Record> record = readRecord(image_, *leaf, *cell, *usable);
    if (!record) continue;
    const std::vector<Column>& columns = record->columns;
    const std::size_t last = std::max({schema_->nameColumn, schema_->valueColumn, schema_->hostColumn});
    if (last >= columns.size()) continue;
    const Column& nameColumn = columns[schema_->nameColumn];
    const Column& value = columns[schema_->valueColumn];
    if (cell->payloadAt + nameColumn.offset != inPage || record->text(schema_->nameColumn) != name) {
      continue;
    }
    if (columns[schema_->hostColumn].kind != Column::Kind::String) continue;
    if (value.offset + std::min(value.length, valueNeeded) > cell->localSize) continue;
    if (!leadsTo(image_, schema_->rootPage, cell->rowId, leaf->number())) continue;

    const std::uint64_t pageStart = nameOffset - inPage;
    return CookieRow{std::string(record->text(schema_->hostColumn)),
                     pageStart + cell->payloadAt + value.offset, value.length};
  }
  return std::nullopt;
}
