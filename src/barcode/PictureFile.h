// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Questions.h"

// A barcode saved as a picture.

enum class PictureFormat { Png, Svg };

// By the ending of the file's name; anything but ".svg" is a PNG.
PictureFormat pictureFormat(TextView path);

// Where to, and as what.
SaveRequest pictureSaveRequest();
