#!/usr/bin/env bash
# Builds the libFuzzer targets with clang and runs each for a while:
#   scripts/fuzz.sh [seconds per target, default 60]
# Each target starts from its seed corpus (fuzz/<area>/corpus/<target>, when present) and
# works in a scratch copy, so the checked-in corpus is never changed.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

seconds=${1:-60}
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
shopt -s nullglob
for target in build/fuzz/bin/fuzz[_-]*; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus="$work/$name"
  mkdir -p "$corpus"
  for seeds in fuzz/*/corpus/"$name"; do cp -r "$seeds"/. "$corpus"/; done
  echo "fuzz: $name for ${seconds}s"
  "$target" -max_total_time="$seconds" -print_final_stats=0 "$corpus" 2>"$work/$name.log" || {
    tail -n 60 "$work/$name.log"; echo "fuzz: $name FAILED"; exit 1; }
  grep -E '^(#[0-9]+ +DONE|Done)' "$work/$name.log" | tail -n 1 || true
done
