// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The names of the columns that a CREATE TABLE statement declares, in order and in lower case;
// constraints of the table are no columns. Empty when the statement is not of that form.
std::vector<std::string> columnNames(std::string_view createTable);
