// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/CookieTable.h"

#include <algorithm>
#include <vector>

#include "bridge/SchemaSql.h"

namespace {

constexpr std::size_t kMostSchemaPages = 1000;
constexpr int kMostLevels = 20;  // a b-tree of two-cell pages over 2^31 pages is not deeper

// The columns of the schema table: type, name, tbl_name, rootpage, sql.
enum SchemaColumn : std::size_t { kType, kName, kTableName, kRootPage, kSql, kSchemaColumns };

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

// Looks for the browser's table of cookies in the schema table, whose b-tree begins in page 1.
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
      const std::optional<SqliteRecord> record =
          readRecord(image_, *page, page->cell(c, *usable), *usable);
      std::optional<Schema> schema = record ? cookieSchema(*record) : std::nullopt;
      if (schema) return schema;
    }
  }
  return std::nullopt;
}

// What a row of the schema table says of the table of cookies; nothing when it is of another.
std::optional<CookieTable::Schema> CookieTable::cookieSchema(const SqliteRecord& record) {
  if (record.columns.size() < kSchemaColumns || record.text(kType) != "table") return std::nullopt;
  const std::string_view table = record.text(kName);
  if (table != "moz_cookies" && table != "cookies") return std::nullopt;

  const std::vector<std::string> names = columnNames(record.text(kSql));
  const auto name = indexOf(names, "name");
  const auto value = indexOf(names, "value");
  const auto host = indexOf(names, table == "cookies" ? "host_key" : "host");
  const Column& root = record.columns[kRootPage];
  if (!name || !value || !host || root.kind != Column::Kind::Integer) return std::nullopt;
  return Schema{static_cast<std::uint32_t>(unsignedOf(record.payload, root)), *name, *value, *host};
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
    const std::optional<SqliteRecord> record = readRecord(image_, *leaf, cell, *usable);
    if (!record) continue;
    std::optional<CookieRow> row =
        cookieRow(*record, *cell, inPage - cell->payloadAt, name, valueNeeded);
    if (!row || !leadsTo(image_, schema_->rootPage, cell->rowId, leaf->number())) continue;
    row->valueOffset += nameOffset - inPage + cell->payloadAt;
    return row;
  }
  return std::nullopt;
}

// The row when its name column begins at `nameAt` in the payload and is `name`, with its value's
// place in the payload.
std::optional<CookieRow> CookieTable::cookieRow(const SqliteRecord& record,
                                                const SqlitePage::Cell& cell, std::uint64_t nameAt,
                                                std::string_view name,
                                                std::uint64_t valueNeeded) const {
  const std::vector<Column>& columns = record.columns;
  const auto& [root, nameColumn, valueColumn, hostColumn] = *schema_;
  if (std::max({nameColumn, valueColumn, hostColumn}) >= columns.size()) return std::nullopt;
  if (columns[nameColumn].offset != nameAt || record.text(nameColumn) != name) return std::nullopt;
  if (columns[hostColumn].kind != Column::Kind::String) return std::nullopt;

  const Column& value = columns[valueColumn];
  const bool inOnePiece = value.offset + std::min(value.length, valueNeeded) <= cell.localSize;
  if (!inOnePiece) return std::nullopt;
  return CookieRow{std::string(record.text(hostColumn)), value.offset, value.length};
}
