#!/usr/bin/env bash
# windows_libraries.sh FOLDER : builds the libraries of the Windows program out of Debian's source
# packages, statically: SQLite, libical, and Google Test for the tests. Once; FOLDER keeps them.
set -eu
folder=$1
made=$folder/made-2
[ -f "$made" ] && exit 0
cd "$(dirname "$0")/.."
toolchain=$PWD/cmake/windows.cmake
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"

# Source packages come from where this system's packages come from, whether it lists them or not.
mkdir -p "$work/sources" "$work/lists/partial"
for list in /etc/apt/sources.list.d/*.sources; do
  [ -f "$list" ] || continue
  sed -E 's/^Types:.*/Types: deb-src/' "$list" >"$work/sources/$(basename "$list")"
done
if [ -f /etc/apt/sources.list ]; then
  sed -nE 's/^deb /deb-src /p' /etc/apt/sources.list >"$work/sources/main.list"
fi
apt=(apt-get -qq -o Dir::Etc::sourceparts="$work/sources" -o Dir::Etc::sourcelist=/dev/null
  -o Dir::State::lists="$work/lists" -o APT::Sandbox::User=)
source_of() {  # source_of PACKAGE : its original source in ./PACKAGE
  (cd "$work" && "${apt[@]}" source --download-only --tar-only "$1" >/dev/null &&
    rm -f "$1"_*.orig-www.tar.* && mkdir "$1" && tar -xf "$1"_*.orig.tar.* -C "$1" --strip-components=1)
}
logged() {
  "$@" >"$work/log" 2>&1 || { tail -n 40 "$work/log"; exit 1; }
}

logged "${apt[@]}" update
source_of sqlite3
source_of libical3

echo "Building SQLite, libical and Google Test for Windows"
(
  cd "$work/sqlite3"
  logged ./configure --disable-tcl
  logged make sqlite3.c
  # The program opens each connection on one thread; extensions have no place in a calendar.
  logged x86_64-w64-mingw32-gcc-posix -O2 -c sqlite3.c -o sqlite3.o -DSQLITE_THREADSAFE=1 \
    -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_DQS=0 -DSQLITE_OMIT_DEPRECATED -DSQLITE_OMIT_SHARED_CACHE \
    -DSQLITE_ENABLE_DBSTAT_VTAB -DSQLITE_ENABLE_DBPAGE_VTAB -DSQLITE_ENABLE_COLUMN_METADATA \
    -DSQLITE_SECURE_DELETE
  mkdir -p "$folder/include" "$folder/lib"
  x86_64-w64-mingw32-ar rcs "$folder/lib/libsqlite3.a" sqlite3.o
  cp sqlite3.h "$folder/include/"
)
cross=(-G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release
  -DCMAKE_INSTALL_PREFIX="$folder")
logged cmake -S "$work/libical3" -B "$work/build-ical" "${cross[@]}" -DSTATIC_ONLY=ON -DICAL_GLIB=OFF \
  -DICAL_BUILD_DOCS=OFF -DLIBICAL_BUILD_TESTING=OFF -DWITH_CXX_BINDINGS=OFF \
  -DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON -DCMAKE_DISABLE_FIND_PACKAGE_BDB=ON
logged cmake --build "$work/build-ical" -t install
logged cmake -S /usr/src/googletest -B "$work/build-gtest" "${cross[@]}" -DBUILD_GMOCK=OFF
logged cmake --build "$work/build-gtest" -t install
: >"$made"
