// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Relaunch.h"

#include "text/Paths.h"

namespace {

constexpr TextView kExecutableEnd = u".exe";

}  // namespace

ShellRequest relaunchRequest(const Text& executablePath) {
  const std::size_t cut = executablePath.rfind(nativeSeparator());
  const Text folder = cut == Text::npos ? Text() : executablePath.substr(0, cut + 1);
  const Text name = cut == Text::npos ? executablePath : executablePath.substr(cut + 1);
  const TextView ending = name.ends_with(kExecutableEnd) ? kExecutableEnd : TextView();
  return {.operation = {},
          .file = folder + u"reload" + Text(ending),
          .parameters = name + u"\t" + parameterWord(executablePath),
          .directory = folder};
}
