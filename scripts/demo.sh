#!/usr/bin/env bash
# The main job, end to end: build tessel and the module if needed, import the bundled survey
# file as points through the module into GeoJSON, export the GeoJSON back to a text file,
# and say what happened. Output lands in build/demo/.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$root"
build="${TESSEL_BUILD_DIR:-build/release}"
out="build/demo"
sample="samples/survey-points.txt"

"$root/scripts/setup.sh"
if [ ! -f "$build/CMakeCache.txt" ]; then
  echo "demo: configuring $build" >&2
  cmake --preset release -B "$build" >/dev/null
fi
if ! cmake --build "$build" --target tessel -j2 >"$build/demo-build.log" 2>&1; then
  cat "$build/demo-build.log" >&2
  echo "demo: the build failed" >&2
  exit 1
fi
tessel="$build/bin/tessel"
mkdir -p "$out"

millis() { date +%s%3N; }
started=$(millis)

# name x y z code: the name names the point, x and y place it, z and code travel as values.
"$tessel" import points "$sample" \
  --column name --column x:real --column y:real --column z:real --column code \
  --bind name=ENTITY_NAME --bind x=NODE_COORDINATE_X --bind y=NODE_COORDINATE_Y \
  --bind z=HEIGHT --bind code=CODE \
  -o "$out/survey-points.geojson" 2>"$out/import.log"
imported=$(millis)

# Back to text: the same columns, blank-separated, under a '# ' header line.
"$tessel" export points "$out/survey-points.geojson" -o "$out/survey-points.txt" --if-exists overwrite \
  --comment '# ' --delimiter '\s' \
  --bind ENTITY_NAME=name --bind NODE_COORDINATE_X=x --bind NODE_COORDINATE_Y=y \
  --bind HEIGHT=z --bind CODE=code 2>"$out/export.log"
exported=$(millis)

summary=$(grep '^tessel: read ' "$out/import.log")
if [[ ! "$summary" =~ read\ ([0-9,]+)\ lines?\ .*imported\ ([0-9,]+)\ points?\ \(([0-9,]+)\ lines?\ skipped\) ]]; then
  cat "$out/import.log" "$out/export.log" >&2
  echo "demo: tessel gave no summary" >&2
  exit 1
fi
seconds() { printf '%d.%03d s' $(($1 / 1000)) $(($1 % 1000)); }

echo "Imported $sample through the VeltoXTessel module and exported it back to text:"
echo "  lines read        ${BASH_REMATCH[1]}"
echo "  points            ${BASH_REMATCH[2]}"
echo "  comments skipped  ${BASH_REMATCH[3]}"
echo "  time              $(seconds $((exported - started))) (import $(seconds $((imported - started))), export $(seconds $((exported - imported))))"
echo "  GeoJSON           $out/survey-points.geojson"
echo "  text              $out/survey-points.txt"
echo
echo "First lines of the text written back:"
head -n 4 "$out/survey-points.txt" | tr -d '\r' | sed 's/^/  /'
