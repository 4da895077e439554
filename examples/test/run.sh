#!/bin/bash
# run.sh GALLERY WORK: the program on awkward pictures, and what it says of those that it cannot take.
set -euo pipefail
gallery=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"

# expect STATUS MESSAGE ARGUMENT...: the exit status, and a pattern in what is printed.
expect() {
  local status=0 output
  output=$("$gallery" "${@:3}" 2>&1) || status=$?
  if [[ $status -ne $1 || ! $output =~ $2 ]]; then
    echo "gallery ${*:3}: status $status, expected $1 and '$2'"
    echo "$output"
    exit 1
  fi
}

for picture in alpha-7x5.png gray-33x17.jpg; do
  expect 0 "$picture/index.html" "$here/$picture" "$work/$picture"
  images=$(grep -o 'img src="[^"]*"' "$work/$picture/index.html" | cut -d'"' -f2 | sort -u)
  [[ $(wc -w <<<"$images") -gt 20 ]]
  (cd "$work/$picture" && ls $images >/dev/null)
done

echo "not a picture" >"$work/text"
head -c 100 "$here/alpha-7x5.png" >"$work/cut.png"
head -c 100 "$here/gray-33x17.jpg" >"$work/header.jpg"
head -c 300 "$here/gray-33x17.jpg" >"$work/cut.jpg"
: >"$work/file"
expect 2 "usage: "
expect 2 "usage: " a b c
expect 1 "cannot read .*/missing.jpg: No such file" "$work/missing.jpg"
expect 1 "it is a directory" "$work"
expect 1 "neither a JPEG nor a PNG" "$work/text"
expect 1 "cannot read .*/cut.png: " "$work/cut.png" "$work/out"
expect 1 "cannot read .*/header.jpg: " "$work/header.jpg" "$work/out"
expect 0 "warning: Premature end" "$work/cut.jpg" "$work/out"
expect 1 "smaller than 2 by 2" "$here/row-9x1.png" "$work/out"
expect 1 "cannot make the folder" "$here/alpha-7x5.png" "$work/file/below"
