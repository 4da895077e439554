#!/bin/bash
# run.sh CMAKE BUILD WORK: installs BUILD below WORK, moves it, and uses it there.
set -euo pipefail
cmake=$1 build=$2 work=$3
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"
"$cmake" --install "$build" --prefix "$work/first" >/dev/null
mv "$work/first" "$work/installed"
"$here/use.sh" "$cmake" "$work/installed" "$work/use"
