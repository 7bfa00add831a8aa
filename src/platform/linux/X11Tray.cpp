// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/X11Tray.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct Freed {
  void operator()(void* reply) const { std::free(reply); }
};
struct Disconnected {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

}  // namespace

std::optional<bool> x11TrayStands() {
  int screen = 0;
  const std::unique_ptr<xcb_connection_t, Disconnected> screens(xcb_connect(nullptr, &screen));
  if (xcb_connection_has_error(screens.get()) != 0) return false;

  const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);
  const std::unique_ptr<xcb_intern_atom_reply_t, Freed> selection(xcb_intern_atom_reply(
      screens.get(),
      xcb_intern_atom(screens.get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
      nullptr));
  if (!selection) return false;
  const std::unique_ptr<xcb_get_selection_owner_reply_t, Freed> owner(xcb_get_selection_owner_reply(
      screens.get(), xcb_get_selection_owner(screens.get(), selection->atom), nullptr));
  return owner && owner->owner != XCB_WINDOW_NONE;
}
