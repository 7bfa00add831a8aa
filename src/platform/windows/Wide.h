// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "text/Text.h"

// Text as Windows has it: the same units, in another type.

inline std::wstring wide(TextView text) { return {text.begin(), text.end()}; }
inline Text fromWide(std::wstring_view text) { return {text.begin(), text.end()}; }

// `path` from its root, in the form that has no limit of length. "" for a path that names nothing:
// an empty one, or one with a NUL, which would else name another file.
std::wstring longPath(TextView path);

// A path that came out of longPath, as people and programs know it.
std::wstring plainPath(std::wstring path);

// What is called `name` in `folder`.
std::wstring below(const std::wstring& folder, std::wstring_view name);
