# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2034
# What Tavrollo needs from the system, for Debian and its relatives. Sourced by ./run, ./test and
# packaging/windows/build.
#
# A name with "|" lists what the same package is called on other releases: the first that is
# installed, else the first that apt knows, is taken.

building_packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev 'qt6-svg-dev|libqt6svg6-dev' libxcb1-dev
  python3-fonttools)

running_packages=(
  qt6-qpa-plugins qt6-translations-l10n 'libqt6svg6|libqt6svg6t64' xdg-utils file)

# A desktop on a machine without a screen, and a browser that can be driven on it.
demonstration_packages=(
  python3-minimal python3 'firefox-esr|firefox' xvfb openbox trayer dbus xdotool imagemagick
  x11-utils fonts-dejavu-core)

testing_packages=(
  libgtest-dev libgmock-dev libsqlite3-dev xauth strace dbus-daemon x11-utils nodejs
  python3-pil zbar-tools 'libzxing-dev|libzxingcore-dev' poppler-utils fontconfig
  dosfstools exfatprogs exfat-fuse btrfs-progs xfsprogs desktop-file-utils appstream man-db lintian
  at-spi2-core python3-gi gir1.2-glib-2.0
  clang lld 'libclang-rt-dev|libclang-rt-14-dev')

# The program for Windows, cross-compiled and run under Wine.
windows_packages=(g++-mingw-w64-x86-64-posix googletest wine64 wine)

# Its windows too, with a Qt that is built from the distribution's sources, and an installer.
windows_program_packages=(
  "${windows_packages[@]}" dpkg-dev qt6-base-dev qt6-base-dev-tools
  qt6-translations-l10n nsis)

full_testing_packages=(clang-tidy clang-format user-mode-linux kmod)

# The programs that bench/desktop_peers.py measures beside this one.
comparing_packages=(copyq keepassxc zint-qt)

# Asks the package database once: a question for each package would cost seconds.
declare -A installed_packages=()
read_installed_packages() {
  local name status
  installed_packages=()
  while read -r name status; do
    [ "$status" != installed ] || installed_packages[$name]=1
  done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n')
}

package_is_installed() {
  [ -n "${installed_packages[$1]:-}" ]
}

# The name that this system has for a package and its other names ("a|b").
package_name_here() {
  local names name
  IFS='|' read -r -a names <<<"$1"
  for name in "${names[@]}"; do
    if package_is_installed "$name"; then
      echo "$name"
      return
    fi
  done
  for name in "${names[@]}"; do
    if apt-cache show --no-all-versions "$name" >/dev/null 2>&1; then
      echo "$name"
      return
    fi
  done
  echo "${names[0]}"
}

missing_packages() {
  local wanted name
  for wanted in "$@"; do
    name=$(package_name_here "$wanted")
    package_is_installed "$name" || echo "$name"
  done
}

# Runs a command as the administrator; fails when there is no way to be that.
as_administrator() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    return 1
  fi
}

# Installs those of the named packages that are missing. Ends the script with 1 when that fails.
install_missing_packages() {
  local missing
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This system has no apt. Install what these packages hold, then build by hand with cmake:" >&2
    echo "  $*" >&2
    exit 1
  fi
  read_installed_packages
  mapfile -t missing < <(missing_packages "$@")
  [ "${#missing[@]}" -gt 0 ] || return 0

  echo "Installing: ${missing[*]}"
  # A third-party source that does not answer is no reason to stop: what counts is whether the
  # packages can be had, and the installation says that.
  as_administrator apt-get -q -o DPkg::Lock::Timeout=300 update </dev/null ||
    echo "apt-get update did not reach every source; going on with what is known." >&2
  # The lists may be new: names are chosen again.
  mapfile -t missing < <(missing_packages "$@")
  as_administrator env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 \
    install --no-install-recommends "${missing[@]}" </dev/null || {
    echo "These packages could not be installed (administrator's rights or network missing?):" >&2
    echo "  ${missing[*]}" >&2
    exit 1
  }
}
