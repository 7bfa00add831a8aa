# SPDX-License-Identifier: GPL-3.0-or-later
# One target that carries the warnings; every target of ours links it.
add_library(tavrollo_warnings INTERFACE)
target_compile_options(tavrollo_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(TAVROLLO_WERROR)
  target_compile_options(tavrollo_warnings INTERFACE -Werror)
endif()
