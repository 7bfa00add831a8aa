// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/WebPage.h"

#include "platform/System.h"
#include "text/Paths.h"

ShellRequest webPageRequest(const Settings& settings, TextView name) {
  return {.operation = u"open",
          .file = nativePath(webApplicationRoot(settings.shortcutPath).append(name)),
          .directory = startInFolder(currentFolder(), nativeSeparator())};
}
