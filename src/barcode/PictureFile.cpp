// SPDX-License-Identifier: GPL-3.0-or-later
#include "barcode/PictureFile.h"

#include "text/CaseFold.h"

PictureFormat pictureFormat(TextView path) {
  return toLower(path).ends_with(u".svg") ? PictureFormat::Svg : PictureFormat::Png;
}

SaveRequest pictureSaveRequest() {
  return {.title = u"Tavrollo : Enregistrer le code barre",
          .kinds = {{u"Image PNG", u"png"}, {u"Dessin SVG", u"svg"}},
          .name = u"code barre"};
}
