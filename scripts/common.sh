# Shared by ./qstm and ./run-tests: install what is missing, configure and
# build on first use. Source it; call qs_build BUILD_DIR [cmake options...].
set -euo pipefail
QS_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
QS_PACKAGES=(cmake make g++ libgtest-dev libbenchmark-dev libicu-dev tzdata)

qs_install_missing() {
  local missing=()
  for p in "${QS_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' ||
      missing+=("$p")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    echo "installing: ${missing[*]}" >&2
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    $sudo apt-get update -qq >&2
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >&2
  fi
}

qs_build() {
  local dir=$1
  shift
  qs_install_missing
  if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S "$QS_ROOT" -B "$dir" "$@" >&2
  fi
  cmake --build "$dir" -j"$(nproc)" >&2
}
