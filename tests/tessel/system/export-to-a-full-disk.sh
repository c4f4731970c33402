#!/usr/bin/env bash
# tessel export onto a real file system that fills up half-way (a 400 KB tmpfs in a mount
# namespace of its own): the user's file stays byte for byte as it was, a new file is not
# left behind, and tessel says why and exits 1. Skipped (77) where this process may not mount.
# Usage: export-to-a-full-disk.sh TESSEL
set -u
tessel=$1
if [ -z "${TESSEL_IN_NAMESPACE:-}" ]; then
  TESSEL_IN_NAMESPACE=1 exec unshare --mount --propagation private bash "$0" "$@" 2>&1 || exit 77
fi
work=$(mktemp -d)
trap 'umount "$work/full" 2>/dev/null; rm -rf "$work"' EXIT
cd "$work"
mkdir full
mount -t tmpfs -o size=400k tessel-full-disk full || exit 77
fail() { echo "FAILED: $*"; exit 1; }

awk 'BEGIN { for (i = 0; i < 20000; i++) printf "P%d %.3f %.3f %.3f CODE%d\n", i, 500000 + i / 7, 5800000 + i / 3, 300 + i % 97, i % 13 }' > survey.txt
"$tessel" -q import points survey.txt --column name --column x:real --column y:real --column z:real --column code \
  --bind name=ENTITY_NAME --bind x=NODE_COORDINATE_X --bind y=NODE_COORDINATE_Y --bind z=HEIGHT --bind code=CODE \
  -o points.geojson || fail "import"
binds=(--bind ENTITY_NAME=name --bind NODE_COORDINATE_X=x --bind NODE_COORDINATE_Y=y --bind HEIGHT=z --bind CODE=code)
printf 'old line\r\n' > full/out.txt
cp full/out.txt expected.txt

for answer in overwrite append; do
  "$tessel" -q export points points.geojson -o full/out.txt "${binds[@]}" --if-exists $answer 2> err.txt
  status=$?
  [ $status -eq 1 ] || fail "$answer: exit $status, expected 1"
  cmp -s full/out.txt expected.txt || fail "$answer: the existing file changed"
  grep -q "Cannot write the file full/out.txt: No space left on device" err.txt || fail "$answer: said $(cat err.txt)"
done
"$tessel" -q export points points.geojson -o full/new.txt "${binds[@]}" 2> err.txt
[ $? -eq 1 ] || fail "new file: expected exit 1"
[ "$(ls full)" = "out.txt" ] || fail "new file: left behind $(ls full)"

# With room, the same export is written whole: the failure was the disk's.
"$tessel" -q export points points.geojson -o out.txt "${binds[@]}" || fail "export with room"
[ "$(wc -l < out.txt)" -eq 20001 ] || fail "export with room wrote $(wc -l < out.txt) lines"
echo "passed"
