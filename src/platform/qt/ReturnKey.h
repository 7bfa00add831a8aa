// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// From now on the Return key presses the button of `window` that has the focus, as the space bar
// does. The toolkit by itself does nothing then, or presses the dialog's default button instead.
// The buttons must be there already.
void pressWithReturn(QWidget& window);
