#!/bin/bash
# check-packages.sh FOLDER: what the Debian packages in FOLDER hold, and that programs can be built with them. They are
# unpacked, not installed.
#
#   check-packages.sh --install FOLDER   as root, on a clean system: installed, used, and removed again
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
install=false
if [[ $1 == --install ]]; then
  install=true
  shift
fi
folder=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
runtime=$(echo "$folder"/libzumcck4-5.2_*.deb) development=$(echo "$folder"/libzumcc-dev_*.deb)
for package in "$runtime" "$development"; do
  dpkg-deb -I "$package" | grep -E '^ (Package|Version|Depends):'
done

if $install; then
  apt-get install -y -q --no-install-recommends "$(realpath "$runtime")" "$(realpath "$development")" cmake g++ pkg-config
  root=/
else
  root=$work/root
  dpkg-deb -x "$runtime" "$root"
  dpkg-deb -x "$development" "$root"
fi
library=$(find "$root/usr/lib" -name libzumcck4.so.5.2)
exported=$(nm -D --defined-only "$library" | awk '{ sub(/@.*/, "", $3); print $3 }' | sort)
expected=$( (sed -n 's/^ZUM_FUNCTION(\(.*\))$/\1/p' "$here/src/functions.def"
  printf '%s\n' i_free i_malloc threads_omp_of_n_zum) | sort)
diff <(echo "$expected") <(echo "$exported")
echo "$(wc -l <<<"$exported") symbols, as listed"
"$here/tests/consumer/use.sh" cmake "$root/usr" "$work/use" >"$work/log" || {
  cat "$work/log"
  exit 1
}
echo "Used by find_package and by pkg-config"
! $install || apt-get remove -y -q libzumcc-dev libzumcck4-5.2
