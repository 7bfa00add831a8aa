// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

// From now on what is pasted or dropped into a text box of `window` ends where its first line does.
// The toolkit by itself keeps a line end in the text and draws a blank for it. What the program
// sets stays as it is: a folder's name may have a line end in it. To be called before others listen
// to the boxes, so that they find the cut text in them; the boxes must be there already.
void cutPastedLines(QWidget& window);
