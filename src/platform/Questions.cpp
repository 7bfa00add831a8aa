// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Questions.h"

Box errorBox(TextView handler, TextView description) {
  Text text = u"Erreur dans ";
  text.append(handler).append(kCrLf).append(description);
  return {.title = u"Tavrollo", .text = text, .icon = BoxIcon::Exclamation};
}
