// SPDX-License-Identifier: GPL-3.0-or-later
#include "bridge/SchemaSql.h"

#include <gtest/gtest.h>

using Names = std::vector<std::string>;

TEST(SchemaSql, NamesTheColumnsInTheirOrder) {
  const struct {
    std::string_view sql;
    Names names;
  } rows[] = {
      {"CREATE TABLE t(a,b,c)", {"a", "b", "c"}},
      {"CREATE TABLE t (Name TEXT, VALUE TEXT NOT NULL)", {"name", "value"}},
      {"CREATE TABLE \"a(b,c\" (x)", {"x"}},
      {"CREATE TABLE [a(b] (x)", {"x"}},
      {"CREATE TABLE t(\"n,1\" TEXT, 'p)q' TEXT, `b``` INT, [c(d] INT)",
       {"n,1", "p)q", "b", "c(d"}},
      {"CREATE TABLE t(a DECIMAL(10, 2), b TEXT DEFAULT 'x,y)', c CHECK (c IN (1, 2)))",
       {"a", "b", "c"}},
      {"CREATE TABLE t(\r\n\ta INT,\n\tb INT\n)", {"a", "b"}},
      {"CREATE TABLE t(a(3), b)", {"a", "b"}},
      {"CREATE TABLE t(a INT) WITHOUT ROWID", {"a"}},
  };
  for (const auto& row : rows) EXPECT_EQ(columnNames(row.sql), row.names) << row.sql;
}

TEST(SchemaSql, ConstraintsOfTheTableAreNoColumns) {
  for (const std::string_view constraint :
       {"CONSTRAINT u UNIQUE (a, b)", "PRIMARY KEY (a)", "unique(a)", "CHECK (a > 0)",
        "FOREIGN KEY (a) REFERENCES o(p), UNIQUE (b)"}) {
    const std::string sql = "CREATE TABLE t(a, b, " + std::string(constraint) + ")";
    EXPECT_EQ(columnNames(sql), (Names{"a", "b"})) << sql;
  }
}

TEST(SchemaSql, WhatIsNoSuchStatementHasNoColumns) {
  for (const std::string_view sql :
       {"", "CREATE TABLE t", "CREATE TABLE t(a, b", "CREATE TABLE t AS", "CREATE TABLE t(\"a, b)",
        ")", "'", "CREATE TABLE t(a'b)"}) {
    EXPECT_EQ(columnNames(sql), Names{}) << sql;
  }
}
