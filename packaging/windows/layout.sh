# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash
# What of the build goes to the user, and in what form. Sourced by packaging/windows/build.

# The program's folder as the user gets it.
lay_out() {
  local built=$1 qt=$2 target=$3 gcc library plugin
  local libraries=()
  gcc=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)")
  for library in Core Gui PrintSupport Widgets; do
    libraries+=("$qt/bin/Qt6$library.dll")
  done
  libraries+=("$gcc/libstdc++-6.dll" "$gcc/libgcc_s_seh-1.dll"
    /usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll)

  rm -rf "$target" && mkdir -p "$target/fonts" "$target/translations" || return 1
  cp "$built/Tavrollo.exe" "$built/reload.exe" "$built/tavrolloctl.exe" "${libraries[@]}" \
    "$target/" || return 1
  for plugin in platforms/qwindows styles/qwindowsvistastyle; do
    mkdir -p "$target/$(dirname "$plugin")" &&
      cp "$qt/plugins/$plugin.dll" "$target/$plugin.dll" || return 1
  done
  find "$target" -name '*.exe' -exec x86_64-w64-mingw32-strip {} + || return 1
  # The toolkit's own words, and where it finds them.
  cp /usr/share/qt6/translations/qtbase_fr.qm "$target/translations/" || return 1
  printf '[Paths]\r\nPrefix=.\r\n' >"$target/qt.conf" || return 1
  cp "$built"/fonts/*.ttf fonts/LICENSE "$target/fonts/" || return 1
  cp -r "$built/template" "$target/template" || return 1
  sed 's/$/\r/' LICENSE >"$target/LICENSE.txt" || return 1
  sed 's/$/\r/' packaging/windows/LISEZ-MOI.txt >"$target/LISEZ-MOI.txt" || return 1
  every_library_is_there "$target"
}

# What a program or library of the folder loads is in the folder, or Windows brings it.
every_library_is_there() {
  local folder=$1 file name missing=0 from_windows=/usr/x86_64-w64-mingw32/lib
  while IFS= read -r file; do
    while IFS= read -r name; do
      [ ! -e "$folder/$name" ] || continue
      [[ $name != api-ms-win-* ]] || continue  # names that stand for parts of the system
      # For each library of the system the compiler has one to link with.
      [ ! -e "$from_windows/lib$(tr '[:upper:]' '[:lower:]' <<<"${name%.*}").a" ] || continue
      echo "$(basename "$file") needs $name, which is not there" >&2
      missing=1
    done < <(x86_64-w64-mingw32-objdump -p "$file" | sed -n 's/^\s*DLL Name: //p')
  done < <(find "$folder" -name '*.exe' -o -name '*.dll')
  return "$missing"
}

# With an empty nav/, by which the program takes the folder that it stands in for its own, and which
# it fills at its first start. So a newer archive can be unpacked over an older one.
pack_portable() {
  local layout=$1 archive=$2 stage status=0
  stage=$(mktemp -d) || return 1
  rm -f "$archive"
  {
    cp -r "$layout" "$stage/Tavrollo" && mkdir "$stage/Tavrollo/nav" &&
      (cd "$stage" && cmake -E tar cf "$archive" --format=zip Tavrollo)
  } || status=$?
  rm -rf "$stage"
  return "$status"
}

# The commands that take away what lay_out laid out, file by file: the user may have put his own
# beside it.
# shellcheck disable=SC2016  # $INSTDIR is the installer's own
removal_commands() {
  local layout=$1
  (cd "$layout" && find . -type f -printf '%P\n' | sort) |
    sed -e 's|/|\\|g' -e 's|.*|Delete "$INSTDIR\\&"|' || return 1
  (cd "$layout" && find . -mindepth 1 -depth -type d -printf '%P\n') |
    sed -e 's|/|\\|g' -e 's|.*|RMDir "$INSTDIR\\&"|'
}

pack_installer() {
  local layout=$1 icon=$2 output=$3 version=$4 publisher=$5
  removal_commands "$layout" >"$output.removal.nsh" || return 1
  makensis -NOCD -WX -INPUTCHARSET UTF8 "-DVERSION=$version" "-DPUBLISHER=$publisher" \
    "-DLAYOUT=$layout" "-DFILES=$output.removal.nsh" "-DICON=$icon" "-DOUTPUT=$output" \
    packaging/windows/tavrollo.nsi
}
