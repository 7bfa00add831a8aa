// SPDX-License-Identifier: GPL-3.0-or-later
#include "tray/IconAnimation.h"

IconAnimation::Step IconAnimation::tick() {
  const Step step{frame_, frame_ != 0};
  ++frame_;
  if (frame_ == 5) frame_ = 1;
  if (frame_ == 9) frame_ = 5;
  return step;
}
