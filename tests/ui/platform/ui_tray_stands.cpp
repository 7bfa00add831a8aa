// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Installed.h"
#include "ui/Trayer.h"
#include "ui/UiMain.h"

// Asked without the toolkit, as the command line does.
TEST(TrayStands, IsTrueWhileATrayIsThereAndFalseWithoutOne) {
  EXPECT_EQ(trayStands(), std::optional(false));
  {
    const Trayer trayer;
    EXPECT_TRUE(waitUntil([] { return trayStands() == std::optional(true); }));
  }
  EXPECT_TRUE(waitUntil([] { return trayStands() == std::optional(false); }));
}
