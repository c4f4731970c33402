#!/usr/bin/env bash
# tessel.exe shows the module's dialogs on a desktop as the CAD application does. Under Wine on
# the display named by DISPLAY (a virtual one: scripts/test-windows.sh runs the tests labelled
# gui on one), each dialog is answered with real keys through xdotool and what tessel then did
# is checked. Exits 77 (skipped) without a display, xdotool or Wine.
# Usage: dialogs-under-wine.sh TESSEL_EXE SAMPLES_FOLDER
set -uo pipefail
tessel=$1
samples=$2

if [ -z "${DISPLAY:-}" ]; then echo "no display: skipped"; exit 77; fi
if ! command -v xdotool >/dev/null || ! command -v wine >/dev/null; then echo "xdotool or wine missing: skipped"; exit 77; fi
if ! xdotool getmouselocation >/dev/null 2>&1; then echo "the display $DISPLAY does not answer: skipped"; exit 77; fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
cp "$samples/survey-points.txt" .
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

# answer TITLE KEY... -- ARGUMENT...: runs tessel with the arguments, waits for its window titled
# TITLE and gives it the keys (a word "type:TEXT" types the text); returns tessel's exit status.
answer() {
  local title=$1 keys=() window pid
  shift
  while [ "$1" != "--" ]; do keys+=("$1"); shift; done
  shift
  timeout 120 wine "$tessel" "$@" >stdout.txt 2>stderr.txt </dev/null &
  pid=$!
  window=$(timeout 60 xdotool search --sync --onlyvisible --name "^$title\$" 2>/dev/null | head -1)
  if [ -z "$window" ]; then
    echo "tessel $* showed no window titled '$title'; it wrote: $(cat stdout.txt stderr.txt)"
    for w in $(xdotool search --name . 2>/dev/null); do echo "  window $w: $(xdotool getwindowname "$w")"; done
    kill "$pid" 2>/dev/null
    wait "$pid"
    return 255
  fi
  # Real key events (XTEST) to the focused window: keys sent to the window alone (--window)
  # can leave Wine believing that a key is still down once the window has closed on its
  # press, and the next dialog then receives it.
  xdotool windowfocus --sync "$window"
  for key in "${keys[@]}"; do
    case $key in
      type:*) xdotool type "${key#type:}" ;;
      *) xdotool key "$key" ;;
    esac
  done
  wait "$pid"
}

# The export settings: a file typed in, Enter takes OK and the configuration is written; Esc
# writes nothing.
answer "Text file export settings" 'type:C:\survey\points.txt' Return -- configure export -o export.xml
status=$?
[ "$status" -eq 0 ] || fail "configure export, Enter: exit status $status"
grep -qF 'txtFile="C:\survey\points.txt"' export.xml 2>/dev/null || fail "configure export, Enter: $(cat export.xml 2>&1)"
answer "Text file export settings" Escape -- configure export -o cancelled.xml
status=$?
[ "$status" -eq 1 ] || fail "configure export, Esc: exit status $status"
[ ! -e cancelled.xml ] || fail "configure export, Esc: a configuration was written"

# The import wizard on a file: Enter moves on there, so OK is reached from the keyboard as the
# last but one control of the tab order; Esc writes nothing.
answer "Text file import" shift+Tab shift+Tab space -- configure import survey-points.txt -o import.xml
status=$?
[ "$status" -eq 0 ] || fail "configure import, OK: exit status $status"
grep -q 'txtFile="[^"]*survey-points.txt".*<col ' import.xml 2>/dev/null || fail "configure import, OK: $(cat import.xml 2>&1)"
answer "Text file import" Escape -- configure import survey-points.txt -o cancelled.xml
status=$?
[ "$status" -eq 1 ] || fail "configure import, Esc: exit status $status"
[ ! -e cancelled.xml ] || fail "configure import, Esc: a configuration was written"

# The question before an existing file is touched: Overwrite (Alt+O) replaces it, Esc leaves it.
wine "$tessel" import points survey-points.txt --column name --column x:real --column y:real --column z:real \
  --column code --bind name=ENTITY_NAME --bind x=NODE_COORDINATE_X --bind y=NODE_COORDINATE_Y \
  --bind z=HEIGHT --bind code=CODE -o points.jsonl </dev/null >/dev/null 2>&1 || fail "import points: $?"
echo "kept" >out.txt
answer "File exists" Escape -- export points points.jsonl -o out.txt
status=$?
[ "$status" -ne 0 ] || fail "export over an existing file, Esc: exit status 0"
[ "$(cat out.txt)" = "kept" ] || fail "export over an existing file, Esc: the file changed"
answer "File exists" alt+o -- export points points.jsonl -o out.txt
status=$?
[ "$status" -eq 0 ] || fail "export over an existing file, Overwrite: exit status $status"
grep -q "ST1" out.txt || fail "export over an existing file, Overwrite: $(head -c 300 out.txt)"

[ "$failures" -eq 0 ] || exit 1
echo "tessel.exe answered every dialog"
