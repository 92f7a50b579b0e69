# Sourced by ./run and ./test: installs the Debian packages that are missing.
# install_missing PACKAGE... : quick when all are there; asks apt-get (as root or with sudo) else.

install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local sudo=""
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "These packages are missing: ${missing[*]}. Install them as root, or install sudo." >&2
      return 1
    }
    sudo=sudo
  fi
  echo "Installing: ${missing[*]}"
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq &&
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      "${missing[@]}" >/dev/null || {
    echo "The packages could not be installed: ${missing[*]}" >&2
    return 1
  }
}

build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev libsqlite3-dev libical-dev
  tzdata fonts-dejavu-core fonts-dejavu-extra)
test_packages=(ccache python3 libgtest-dev libbenchmark-dev clang-format xvfb xauth dpkg-dev file
  lintian lld desktop-file-utils appstream man-db)
# The program for Windows: its compiler, what its libraries are made with, what it runs in, is driven
# by and is packed with.
windows_packages=(g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix python3 tcl make wine wine64
  fonts-wine xdotool imagemagick x11-utils nsis zip)

# configure PRESET [CMAKE OPTION...]: once; the build files keep themselves up to date after that.
configure() {
  local preset=$1 launcher=()
  shift
  [ -f "build/$preset/build.ninja" ] && return 0
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  cmake --preset "$preset" "${launcher[@]}" "$@" >"/tmp/orvello-configure.$$" 2>&1 || {
    cat "/tmp/orvello-configure.$$"
    rm -f "/tmp/orvello-configure.$$"
    return 1
  }
  rm -f "/tmp/orvello-configure.$$"
}
