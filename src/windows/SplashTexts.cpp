// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/SplashTexts.h"

#include "text/Numbers.h"

Text versionText(const ProgramVersion& version) {
  return u"V" + numberText(version.major) + u"." + numberText(version.minor) + u"." +
         numberText(version.revision);
}

Text revisionDateText(std::time_t modified, const LocaleData& locale) {
  return u"rév " + dateText(modified, locale).substr(0, 10);
}
