#!/bin/bash
# use.sh CMAKE PREFIX WORK: builds and runs consumers of the library installed at PREFIX, by find_package and by
# pkg-config. Nothing but the installed files may be needed, but for a static library what it is built on.
set -euo pipefail
cmake=$1 prefix=$2 work=$3
here=$(cd "$(dirname "$0")" && pwd)
warnings="-Wall -Wextra -Wpedantic -Werror"
libdir=$(dirname "$(find "$prefix" -name 'libzumcck4.so' -o -name 'libzumcck4.a')")
mkdir -p "$work"
if [[ -e $libdir/libzumcck4.so ]]; then
  [[ $(readlink "$libdir/libzumcck4.so") == libzumcck4.so.5.2 ]]
  objdump -p "$libdir/libzumcck4.so.5.2" | grep -q 'SONAME *libzumcck4.so.5.2$'
fi

echo "By find_package"
"$cmake" -S "$here/project" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF \
  -DCMAKE_C_FLAGS="$warnings" -DCMAKE_CXX_FLAGS="$warnings"
"$cmake" --build "$work/build"
"$work/build/consumer_c"
"$work/build/consumer_cc"

echo "By pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
[[ $(pkg-config --modversion zumcc) == 5.2 ]]
"${CC:-cc}" -std=c99 $warnings "$here/project/consumer.c" $(pkg-config --cflags --libs zumcc) -o "$work/consumer_c"
"${CXX:-c++}" -std=c++17 $warnings "$here/project/consumer.cc" $(pkg-config --cflags --libs zumcc) -o "$work/consumer_cc"
export LD_LIBRARY_PATH=$libdir
"$work/consumer_c"
"$work/consumer_cc"
if [[ -e $libdir/libzumcck4.so ]] &&
  objdump -p "$work"/consumer_c "$work"/consumer_cc "$work"/build/consumer_c* | grep -E 'NEEDED *lib(hwy|gomp|omp)'; then
  echo "A consumer was linked with what the library keeps to itself" >&2
  exit 1
fi
