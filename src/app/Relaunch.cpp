// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Relaunch.h"

#include "text/Paths.h"

namespace {

constexpr TextView kExecutableEnd = u".exe";

}  // namespace

ShellRequest relaunchRequest(const Text& executablePath) {
  const Text folder = folderOf(executablePath) + nativeSeparator();
  const Text name = nameOf(executablePath);
  const TextView ending = name.ends_with(kExecutableEnd) ? kExecutableEnd : TextView();
  return {.operation = {},
          .file = folder + u"reload" + Text(ending),
          .parameters = name + u"\t" + parameterWord(executablePath),
          .directory = folder};
}
