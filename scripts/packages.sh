#!/bin/bash
# Installs the Debian packages of the groups named, if any is missing:
#
#   scripts/packages.sh build demo
set -euo pipefail

declare -A groups=(
  [build]="cmake ninja-build g++ pkg-config libhwy-dev"
  [demo]="libturbojpeg0-dev libpng-dev"
  [photo]="palapeli-data"
  [test]="libgtest-dev"
  [fuzz]="clang-14 libclang-rt-14-dev libomp-14-dev"
  [package]="dpkg-dev file"
  [docs]="doxygen"
  [format]="clang-format-14"
  [bench]="libbenchmark-dev python3"
  [i386]="g++-i686-linux-gnu libhwy-dev:i386 libgomp1:i386 libgtest-dev:i386"
  [arm64]="g++-aarch64-linux-gnu libhwy-dev:arm64 libgomp1:arm64 libgtest-dev:arm64 qemu-user"
  [peers]="libyuv-dev libswscale-dev libopencv-core-dev libopencv-imgproc-dev libzimg-dev libleptonica-dev"
)

missing=()
for group in "$@"; do
  for package in ${groups[$group]:?"no such group: $group"}; do
    # Of a package that is there for several architectures, the one that is meant; some are for all of them.
    [[ $package == *:* ]] && architecture=${package#*:} || architecture=$(dpkg --print-architecture)
    dpkg-query -W -f='${db:Status-Status} ${Architecture}\n' "$package" 2>/dev/null |
      grep -Eqx "installed ($architecture|all)" || missing+=("$package")
  done
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

if ! command -v apt-get >/dev/null; then
  echo "This system has no apt-get. Install what Debian calls ${missing[*]}, then use cmake (see README.md)." >&2
  exit 1
fi
root=()
if [[ $(id -u) -ne 0 ]]; then
  if ! command -v sudo >/dev/null; then
    echo "Packages are missing. As root: apt-get install ${missing[*]}" >&2
    exit 1
  fi
  root=(sudo)
fi
echo "Installing ${missing[*]}"
for package in "${missing[@]}"; do
  [[ $package != *:* ]] || "${root[@]}" dpkg --add-architecture "${package#*:}"
done
"${root[@]}" apt-get update -q || echo "The lists of packages could not be updated; trying with those at hand." >&2
"${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" </dev/null
