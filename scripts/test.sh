#!/usr/bin/env bash
# Builds and runs every test: scripts/test.sh [preset]   (default | sanitize)
# Installs what is missing first (scripts/setup.sh). TESSEL_WERROR=ON turns warnings into errors.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

preset=${1:-default}
cmake --preset "$preset" -DTESSEL_WERROR="${TESSEL_WERROR:-OFF}" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)"
ctest --preset "$preset" -j "$(nproc)" --timeout 600
