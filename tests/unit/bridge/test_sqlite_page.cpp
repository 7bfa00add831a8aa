// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/SqlitePage.h"

#include <gtest/gtest.h>

#include "unit/bridge/LogBytes.h"
#include "unit/bridge/StoreFolder.h"

namespace {

constexpr std::uint32_t kPage = 512;
constexpr char kLeaf = 13;
constexpr char kInterior = 5;

std::string number16(std::size_t number) {
  return {static_cast<char>(number >> 8), static_cast<char>(number & 0xFFu)};
}

std::string number32(std::uint32_t number) {
  std::string bytes;
  appendBigEndian(bytes, number);
  return bytes;
}

// A b-tree page with its cells one after the other behind their pointers.
std::string treePage(char type, const std::vector<std::string>& cells, std::uint32_t rightmost = 0,
                     std::size_t header = 0) {
  std::string bytes(header, 'H');
  bytes += type;
  bytes += number16(0) + number16(cells.size()) + number16(0) + '\0';
  if (type == kInterior) bytes += number32(rightmost);
  std::size_t at = bytes.size() + cells.size() * 2;
  for (const std::string& cell : cells) {
    bytes += number16(at);
    at += cell.size();
  }
  for (const std::string& cell : cells) bytes += cell;
  bytes.resize(kPage, '\0');
  return bytes;
}

// A database of page 1 (a leaf without cells) and `pages` from page 2 on.
class SqlitePageTest : public testing::Test {
 protected:
  void write(const std::vector<std::string>& pages, char reserved = 0) {
    std::string bytes = sqliteHeader(kPage);
    bytes[20] = reserved;
    bytes += treePage(kLeaf, {}, 0, 100).substr(100);
    for (const std::string& page : pages) bytes += page;
    ASSERT_FALSE(image_.open(folder_.write(u"store", bytes)));
  }

  StoreFolder folder_;
  StoreImage image_;
};

std::string interiorCell(std::uint32_t child, char key) { return number32(child) + key; }

}  // namespace

TEST(SqliteVarint, ReadsOneToNineBytes) {
  const struct {
    std::string bytes;
    std::uint64_t value;
    std::size_t length;
  } rows[] = {
      {std::string(1, '\0'), 0, 1},
      {"\x7F", 127, 1},
      {std::string("\x81\0", 2), 128, 2},
      {"\x81\x7Fxx", 255, 2},
      {"\xFF\x7F", 16383, 2},
      {std::string(8, '\xFF') + "\x7F", 0xFFFFFFFFFFFFFF7F, 9},
      {std::string(9, '\xFF'), UINT64_MAX, 9},
      {std::string(8, '\x80') + '\0', 0, 9},
  };
  for (const auto& row : rows) {
    const std::optional<Varint> varint = readVarint(row.bytes, 0);
    ASSERT_TRUE(varint);
    EXPECT_EQ(varint->value, row.value);
    EXPECT_EQ(varint->length, row.length);
    for (std::size_t cut = 0; cut < row.length; ++cut) {
      EXPECT_FALSE(readVarint(std::string_view(row.bytes).substr(0, cut), 0));
    }
  }
  EXPECT_EQ(readVarint("xx\x05", 2)->value, 5u);
  EXPECT_FALSE(readVarint("x", 1));
  EXPECT_FALSE(readVarint("x", 9));
}

TEST_F(SqlitePageTest, ReadsPagesOfTablesAndNoOthers) {
  write({treePage(kInterior, {interiorCell(9, 4)}, 8), treePage(2, {}), treePage(10, {}),
         treePage(0, {}), treePage(1, {}), std::string(100, 'x')});
  const std::optional<SqlitePage> first = SqlitePage::read(image_, 1);
  ASSERT_TRUE(first);
  EXPECT_TRUE(first->isLeaf());
  EXPECT_EQ(first->number(), 1u);
  EXPECT_EQ(first->cellCount(), 0u);
  const std::optional<SqlitePage> second = SqlitePage::read(image_, 2);
  ASSERT_TRUE(second);
  EXPECT_FALSE(second->isLeaf());
  for (const std::uint32_t number : {0u, 3u, 4u, 5u, 6u, 7u, 8u, UINT32_MAX}) {
    EXPECT_FALSE(SqlitePage::read(image_, number)) << number;
  }
}

TEST_F(SqlitePageTest, MorePointersThanFitAreNoPage) {
  std::string fits = treePage(kLeaf, {});
  fits.replace(3, 2, number16((kPage - 8) / 2));
  std::string tooMany = treePage(kLeaf, {});
  tooMany.replace(3, 2, number16((kPage - 8) / 2 + 1));
  write({fits, tooMany});
  EXPECT_TRUE(SqlitePage::read(image_, 2));
  EXPECT_FALSE(SqlitePage::read(image_, 3));
}

TEST_F(SqlitePageTest, AnInteriorPageLeadsToTheChildOfARow) {
  write(
      {treePage(kInterior, {interiorCell(10, 5), interiorCell(11, 20)}, 12), treePage(kLeaf, {})});
  const SqlitePage page = *SqlitePage::read(image_, 2);
  EXPECT_EQ(page.children(), (std::vector<std::uint32_t>{10, 11, 12}));
  const struct {
    std::int64_t rowId;
    std::uint32_t child;
  } rows[] = {{-3, 10}, {4, 10}, {5, 10}, {6, 11}, {20, 11}, {21, 12}, {INT64_MAX, 12}};
  for (const auto& row : rows) EXPECT_EQ(page.childFor(row.rowId), row.child);

  const SqlitePage leaf = *SqlitePage::read(image_, 3);
  EXPECT_EQ(leaf.childFor(5), std::nullopt);
  EXPECT_TRUE(leaf.children().empty());
}

TEST_F(SqlitePageTest, AnInteriorCellOutsideThePageLeadsNowhere) {
  for (const std::size_t at : {kPage - 4u, kPage - 3u, 65535u}) {
    std::string bytes = treePage(kInterior, {interiorCell(10, 5)}, 12);
    bytes.replace(12, 2, number16(at));
    write({bytes});
    EXPECT_EQ(SqlitePage::read(image_, 2)->childFor(1), std::nullopt) << at;
  }
}

TEST_F(SqlitePageTest, ACellTellsItsRowAndWhereItsPayloadLies) {
  write({treePage(kLeaf, {"\x03\x07xyz", std::string("\x02\x81\0ab", 5)})});
  const SqlitePage page = *SqlitePage::read(image_, 2);
  const std::optional<SqlitePage::Cell> first = page.cell(0, kPage);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->rowId, 7);
  EXPECT_EQ(first->payloadSize, 3u);
  EXPECT_EQ(first->overflowPage, 0u);
  EXPECT_EQ(page.bytes().substr(first->payloadAt, first->localSize), "xyz");
  const std::optional<SqlitePage::Cell> second = page.cell(1, kPage);
  ASSERT_TRUE(second);
  EXPECT_EQ(second->rowId, 128);
  EXPECT_EQ(page.bytes().substr(second->payloadAt, second->localSize), "ab");
}

TEST_F(SqlitePageTest, ACellThatLeavesThePageIsNone) {
  const struct {
    std::size_t at;
    std::string bytes;
    bool reads;
  } rows[] = {
      {kPage - 4,
       "\x02\x07"
       "ab",
       true},
      {kPage - 4,
       "\x03\x07"
       "ab",
       false},
      {kPage - 1, "\x02", false},
      {kPage - 2, std::string("\x81\x80", 2), false},
      {kPage, "", false},
      {65535, "", false},
  };
  for (const auto& row : rows) {
    std::string bytes = treePage(kLeaf, {""});
    bytes.replace(8, 2, number16(row.at));
    if (!row.bytes.empty()) bytes.replace(row.at, row.bytes.size(), row.bytes);
    write({bytes});
    EXPECT_EQ(SqlitePage::read(image_, 2)->cell(0, kPage).has_value(), row.reads) << row.at;
  }
}

TEST_F(SqlitePageTest, ALargePayloadGoesOnInOverflowPages) {
  // 477 bytes are the most that stay in a page of 512; of 478 bytes only 39 do.
  const std::string head("\x83\x5D\x01", 3);  // 477 bytes, row 1
  const std::string headOver("\x83\x5E\x01", 3);
  write({treePage(kLeaf, {head + std::string(477, 'a')}),
         treePage(kLeaf, {headOver + std::string(39, 'a') + number32(4)}),
         number32(0) + std::string(508, 'b')});
  const SqlitePage whole = *SqlitePage::read(image_, 2);
  const SqlitePage::Cell all = *whole.cell(0, kPage);
  EXPECT_EQ(all.localSize, 477u);
  EXPECT_EQ(readPayload(image_, whole, all, kPage, 477), std::string(477, 'a'));
  EXPECT_EQ(readPayload(image_, whole, all, kPage, 476), std::nullopt);

  const SqlitePage cut = *SqlitePage::read(image_, 3);
  const SqlitePage::Cell part = *cut.cell(0, kPage);
  EXPECT_EQ(part.localSize, 39u);
  EXPECT_EQ(part.overflowPage, 4u);
  EXPECT_EQ(readPayload(image_, cut, part, kPage, 1000),
            std::string(39, 'a') + std::string(439, 'b'));
}

TEST_F(SqlitePageTest, ABrokenChainOfOverflowPagesIsNoPayload) {
  const std::string head("\xBF\x7F\x01", 3);  // 8191 bytes, row 1
  const std::uint64_t fitting = 39 + (8191 - 39) % 508;
  const std::size_t local = fitting <= 477 ? fitting : 39;
  for (const std::uint32_t next : {0u, 99u, UINT32_MAX}) {
    write({treePage(kLeaf, {head + std::string(local, 'a') + number32(3)}),
           number32(next) + std::string(508, 'b')});
    const SqlitePage page = *SqlitePage::read(image_, 2);
    EXPECT_EQ(readPayload(image_, page, *page.cell(0, kPage), kPage, 10'000), std::nullopt);
  }
  // A circle ends with the payload.
  write({treePage(kLeaf, {head + std::string(local, 'a') + number32(3)}),
         number32(3) + std::string(508, 'b')});
  const SqlitePage page = *SqlitePage::read(image_, 2);
  EXPECT_EQ(readPayload(image_, page, *page.cell(0, kPage), kPage, 10'000)->size(), 8191u);
}

TEST_F(SqlitePageTest, TheUsableSizeLeavesOutWhatTheHeaderReserves) {
  const struct {
    int reserved;
    std::optional<std::uint32_t> usable;
  } rows[] = {{0, 512}, {12, 500}, {32, 480}, {33, std::nullopt}, {255, std::nullopt}};
  for (const auto& row : rows) {
    write({}, static_cast<char>(row.reserved));
    EXPECT_EQ(usablePageSize(image_), row.usable);
  }
}

TEST(SqliteRecord, ReadsItsColumns) {
  // Header of 9: null, one byte, eight bytes, real, 0, 1, a blob of 2, text of 3.
  const std::string header = "\x09" + std::string("\0\1\6\7\x08\x09\x10\x13", 8);
  const std::string body = "A"
                           "BBBBBBBB"
                           "CCCCCCCC"
                           "DD"
                           "EEE";
  const std::optional<std::vector<Column>> columns = readColumns(header + body);
  ASSERT_TRUE(columns);
  using Kind = Column::Kind;
  const struct {
    Kind kind;
    std::uint64_t offset;
    std::uint64_t length;
  } rows[] = {{Kind::Null, 9, 0},  {Kind::Integer, 9, 1},  {Kind::Integer, 10, 8},
              {Kind::Real, 18, 8}, {Kind::Integer, 26, 0}, {Kind::Integer, 26, 0},
              {Kind::Blob, 26, 2}, {Kind::String, 28, 3}};
  ASSERT_EQ(columns->size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ((*columns)[i].kind, rows[i].kind) << i;
    EXPECT_EQ((*columns)[i].offset, rows[i].offset) << i;
    EXPECT_EQ((*columns)[i].length, rows[i].length) << i;
  }
}

TEST(SqliteRecord, WhatDoesNotFitItsPayloadIsNoRecord) {
  for (const std::string& payload :
       {std::string(), std::string("\x03\x01", 2), std::string("\x02\x01", 2),
        std::string("\x02\x0A"), std::string("\x02\x0B"), std::string("\x02\x81"),
        std::string("\x02\x13xx"), "\x0A" + std::string(9, '\xFF') + "xxxx"}) {
    EXPECT_EQ(readColumns(payload).has_value(), false) << payload.size();
  }
  EXPECT_EQ(readColumns(std::string("\x01"))->size(), 0u);
}

TEST(SqliteRecord, AtMostTwoThousandColumns) {
  EXPECT_TRUE(readColumns("\x8F\x52" + std::string(2000, '\0')));
  EXPECT_FALSE(readColumns("\x8F\x53" + std::string(2001, '\0')));
}

TEST(SqliteRecord, UnsignedNumbersHaveTheirHighestByteFirst) {
  const std::string payload = "\x01\x02\x03\xFF";
  EXPECT_EQ(unsignedOf(payload, {Column::Kind::Integer, 0, 2}), 0x0102u);
  EXPECT_EQ(unsignedOf(payload, {Column::Kind::Integer, 0, 4}), 0x010203FFu);
  EXPECT_EQ(unsignedOf(payload, {Column::Kind::Integer, 1, 0}), 0u);
}
