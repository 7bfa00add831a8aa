// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/Paths.h"

#include <algorithm>
#include <type_traits>

#include "text/Split.h"
#include "text/Utf.h"

namespace {

using NativeString = std::filesystem::path::string_type;

template <class String>
String nativeFrom(TextView text) {
  if constexpr (std::is_same_v<String, std::string>) {
    return toUtf8Lossless(text);
  } else {
    return String(text.begin(), text.end());
  }
}

template <class String>
Text textFrom(const String& native) {
  if constexpr (std::is_same_v<String, std::string>) {
    return fromUtf8Lossless(native);
  } else {
    return Text(native.begin(), native.end());
  }
}

}  // namespace

std::filesystem::path toPath(TextView text) { return {nativeFrom<NativeString>(text)}; }

Text fromPath(const std::filesystem::path& path) { return textFrom<NativeString>(path.native()); }

Text withSeparator(TextView path, char16_t separator) {
  const char16_t other = separator == u'/' ? u'\\' : u'/';
  return replaceAll(Text(path), other, separator);
}

char16_t nativeSeparator() {
  return static_cast<char16_t>(std::filesystem::path::preferred_separator);
}

Text nativePath(TextView path) { return withSeparator(path, nativeSeparator()); }

Text folderOf(const Text& path) {
  const std::size_t cut = path.rfind(nativeSeparator());
  return cut == Text::npos ? Text() : path.substr(0, cut);
}

Text nameOf(const Text& path) {
  const std::size_t cut = path.rfind(nativeSeparator());
  return cut == Text::npos ? path : path.substr(cut + 1);
}

Text webApplicationRoot(TextView shortcutPath) {
  const std::size_t cut =
      std::min(shortcutPath.find(u"res_css\\js"), shortcutPath.find(u"res_css/js"));
  return cut == TextView::npos ? Text() : Text(shortcutPath.substr(0, cut));
}

Text startInFolder(TextView currentFolder, char16_t separator) {
  return separator == u'/' ? Text(u"/") : Text(currentFolder.substr(0, 3));
}
