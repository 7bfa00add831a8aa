// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ctime>

#include "text/LocaleData.h"
#include "text/Text.h"

struct ProgramVersion {
  int major = 0;
  int minor = 0;
  int revision = 0;
};

// "V" and the version's three numbers: V1.4.67.
Text versionText(const ProgramVersion& version);

// "rév " and the first ten characters of the day the program file was last written.
Text revisionDateText(std::time_t modified, const LocaleData& locale);
