# SPDX-License-Identifier: GPL-3.0-or-later
# The program as a file of Windows: its name there, no console, an icon, and what the file's
# properties show. A manifest it has none on purpose: one that says what it was made for would
# change the version that the system tells it.
set(TAVROLLO_WINDOWS_ICON "" CACHE FILEPATH "The program's icon (.ico); packaging/windows/build makes it")
if(NOT TAVROLLO_WINDOWS_ICON)
  message(FATAL_ERROR "Without an icon: TAVROLLO_WINDOWS_ICON is empty (see packaging/windows/build)")
endif()
set(resources ${PROJECT_BINARY_DIR}/generated/tavrollo.rc)
configure_file(windows/tavrollo.rc.in ${resources} @ONLY)
set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${TAVROLLO_WINDOWS_ICON})
target_sources(tavrollo PRIVATE ${resources})
set_target_properties(tavrollo PROPERTIES OUTPUT_NAME Tavrollo WIN32_EXECUTABLE ON)
