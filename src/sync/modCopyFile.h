// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "platform/Failure.h"
#include "platform/Questions.h"

// Copies one file with its time and permissions, so that the destination is the old file or the new
// one, whole, whatever happens. With `failIfExists` other than 0, only where nothing stands.
// Missing folders are made; a box tells of one that cannot be. True when the file was copied; else
// `why` (when given) is set.
bool CopierFichier(const Text& source, const Text& destination, std::int16_t failIfExists,
                   Questions& questions, Failure* why = nullptr);
