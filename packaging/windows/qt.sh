# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# Qt for Windows, from the distribution's source package: as old as the Qt of this system, whose
# tools (moc, rcc, uic) it is built with. Sourced by packaging/windows/build.
#
# It is built once and kept outside the source tree, in a folder named after the version and after
# everything that decides about the result. Each part that is finished leaves a mark there; what was
# interrupted goes on where it stopped.

qt_flags=(
  -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
  -DQT_HOST_PATH=/usr "-DQT_HOST_PATH_CMAKE_DIR=/usr/lib/$(uname -m)-linux-gnu/cmake"
  -DQT_QMAKE_TARGET_MKSPEC=win32-g++
  -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DFEATURE_pkg_config=OFF
  -DINPUT_opengl=no -DFEATURE_opengl=OFF -DFEATURE_vulkan=OFF -DFEATURE_icu=OFF
  -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_network=OFF -DFEATURE_xml=OFF
  -DFEATURE_concurrent=OFF -DFEATURE_testlib=ON -DFEATURE_zstd=OFF -DFEATURE_glib=OFF
  -DFEATURE_tabletevent=OFF -DFEATURE_androiddeployqt=OFF)
for qt_bundled in zlib png jpeg freetype harfbuzz pcre2 doubleconversion; do
  qt_flags+=("-DFEATURE_system_$qt_bundled=OFF")
done

# The version of a source package, by a package that it made and that is installed here.
qt_source_version() {
  dpkg-query -W -f '${source:Version}' "$1"
}

# The folder of this version with these flags.
qt_folder() {
  local toolchain=$1 version recipe
  version=$(qt_source_version qt6-base-dev)
  recipe=$(
    printf '%s\n' "${qt_flags[@]}" "$version"
    x86_64-w64-mingw32-g++-posix -dumpfullversion
    cat "$toolchain"
  )
  echo "${XDG_CACHE_HOME:-$HOME/.cache}/tavrollo/qt-windows/$version-$(sha256sum <<<"$recipe" | cut -c1-12)"
}

# qt_sources PACKAGE FOLDER: unpacks the source package that belongs to an installed one into FOLDER.
# With lists of its own: that of the system may well name no sources.
qt_sources() {
  local binary=$1 target=$2 package version apt=$qt/apt
  package=$(dpkg-query -W -f '${source:Package}' "$binary")
  version=$(qt_source_version "$binary")
  mkdir -p "$apt/sources" "$apt/lists/partial" "$qt/downloads"
  local file
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
    [ -f "$file" ] || continue
    sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' "$file" >"$apt/sources/$(basename "$file")"
  done
  local options=(-q -o "Dir::Etc::SourceList=$apt/sources/sources.list"
    -o "Dir::Etc::SourceParts=$apt/sources/" -o "Dir::State::Lists=$apt/lists"
    -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  # A source of others that has none is no reason to stop: whether this one comes is what counts.
  apt-get "${options[@]}" update || true
  (cd "$qt/downloads" && apt-get "${options[@]}" --download-only source "$package=$version") ||
    return 1
  rm -rf "$target"
  dpkg-source --no-check -x "$qt/downloads/${package}_${version#*:}.dsc" "$target"
}

qt_base_configure() {
  cmake -S "$qt/qtbase" -B "$qt/build-base" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$qt/mingw-w64.cmake" \
    -DCMAKE_INSTALL_PREFIX="$qt/installed" "${qt_launcher[@]}" "${qt_flags[@]}"
}

# once NAME COMMAND ...: a part of the work, unless it has been done.
qt_once() {
  local name=$1
  shift
  [ ! -e "$qt/done/$name" ] || return 0
  step "Qt: $name" "$@" || return 1
  touch "$qt/done/$name"
}

# Builds what is missing. Sets "qt" to the folder, where "installed" is what programs are built with.
build_qt() {
  local toolchain=$1
  qt=$(qt_folder "$toolchain")
  mkdir -p "$qt/done"
  exec 8>"$qt/lock"
  flock -n 8 || {
    echo "Waiting for another build of Qt in $qt"
    flock 8
  }
  qt_launcher=()
  [ -z "$(type -P ccache)" ] ||
    qt_launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  # Qt remembers where it stands; a newer time would have it configured anew.
  [ -e "$qt/mingw-w64.cmake" ] || cp "$toolchain" "$qt/mingw-w64.cmake"
  if [ ! -e "$qt/done/tidied" ]; then
    qt_once "sources" qt_sources qt6-base-dev "$qt/qtbase" &&
      qt_once "configured" qt_base_configure &&
      qt_once "compiled" cmake --build "$qt/build-base" &&
      qt_once "installed" cmake --install "$qt/build-base" --strip || return 1
    # A gigabyte that nobody needs any more.
    rm -rf "$qt/build-base" "$qt/qtbase" "$qt/apt" "$qt/downloads"
    touch "$qt/done/tidied"
  fi
  exec 8>&-
}
