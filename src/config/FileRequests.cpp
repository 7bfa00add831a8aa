// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/FileRequests.h"

#include "text/Paths.h"

FileRequest cookieFileRequest(std::int16_t browser, const Text& startFolder) {
  constexpr std::int16_t kFirefox = 0;
  const TextView title = browser == kFirefox
                             ? u"Cookies  FireFox : Cherchez dans ****.default le fichier "
                               u"cookies.sqlite"
                             : u"Cookies  G-Chrome : Cherchez le fichier cookies (sans extension)";
  return {.title = Text(title),
          .filterLabel = u"Cookies ",
          .pattern = u"*cookies*.*",
          .startFolder = startFolder};
}

FileRequest shortcutFileRequest(const Text& programFolder) {
  return {.title = u"Recherche du fichier  shortQrCode.js",
          .filterLabel = u"shortQrCode.js ",
          .pattern = u"*shortQrCode*.js",
          .startFolder = programFolder + nativePath(u"\\nav\\res_css\\js")};
}
