#!/bin/bash
# run.sh CMAKE BUILD WORK: installs BUILD below WORK, moves it, and builds and runs consumers there by find_package and
# by pkg-config. Nothing but the installed files may be needed.
set -euo pipefail
cmake=$1 build=$2 work=$3
here=$(cd "$(dirname "$0")" && pwd)
warnings="-Wall -Wextra -Wpedantic -Werror"

rm -rf "$work"
mkdir -p "$work"
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/installed"
libdir=$(dirname "$(find "$work/installed" -name libzumcck4.so)")
[[ $(readlink "$libdir/libzumcck4.so") == libzumcck4.so.5.2 ]]
objdump -p "$libdir/libzumcck4.so.5.2" | grep -q 'SONAME *libzumcck4.so.5.2$'

echo "By find_package"
"$cmake" -S "$here/project" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/installed" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF \
  -DCMAKE_C_FLAGS="$warnings" -DCMAKE_CXX_FLAGS="$warnings"
"$cmake" --build "$work/build"
"$work/build/consumer_c"
"$work/build/consumer_cc"

echo "By pkg-config"
export PKG_CONFIG_LIBDIR=$libdir/pkgconfig
[[ $(pkg-config --modversion zumcc) == 5.2 ]]
"$CC" -std=c99 $warnings "$here/project/consumer.c" $(pkg-config --cflags --libs zumcc) -o "$work/consumer_c"
"$CXX" -std=c++17 $warnings "$here/project/consumer.cc" $(pkg-config --cflags --libs zumcc) -o "$work/consumer_cc"
export LD_LIBRARY_PATH=$libdir
"$work/consumer_c"
"$work/consumer_cc"
if objdump -p "$work"/consumer_c "$work"/consumer_cc "$work"/build/consumer_c* | grep -E 'NEEDED *lib(hwy|gomp|omp)'; then
  echo "A consumer was linked with what the library keeps to itself" >&2
  exit 1
fi
