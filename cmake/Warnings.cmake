# SPDX-License-Identifier: GPL-3.0-or-later
# One target that carries the warnings; every target of ours links it.
add_library(tavrollo_warnings INTERFACE)
target_compile_options(tavrollo_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
# g++ 12 takes "literal" + string for an overlapping copy when it optimises (GCC bug 105651), and what
# it inlines from a precompiled header of the library for copies of impossible lengths. What is real
# of that kind meets the sanitizers.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(tavrollo_warnings INTERFACE
    -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
endif()
if(TAVROLLO_WERROR)
  target_compile_options(tavrollo_warnings INTERFACE -Werror)
endif()
