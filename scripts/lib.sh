# What scripts/demo, scripts/test and .ci/run share. Sourced, not run.

# With ccache installed, one clone uses what another has compiled.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros

# Debian packages that a build needs, each with a file that shows it is there.
zvi_packages=(
  g++:/usr/bin/g++
  cmake:/usr/bin/cmake
  ninja-build:/usr/bin/ninja
  libgtest-dev:/usr/include/gtest/gtest.h
  libmpfr-dev:/usr/include/mpfr.h
  libcli11-dev:/usr/include/CLI/CLI.hpp
  nlohmann-json3-dev:/usr/include/nlohmann/json.hpp
  libedit-dev:/usr/include/histedit.h
)

# need_tools [PACKAGE:FILE...]: installs the packages above, and those given, whose file is missing.
# With nothing missing apt is not touched.
need_tools() {
  local entry missing=()
  for entry in "${zvi_packages[@]}" "$@"; do
    [ -e "${entry#*:}" ] || missing+=("${entry%%:*}")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Missing: ${missing[*]}. Install them as root, then run this again." >&2; return 1; }
    as_root=(sudo)
  fi
  echo "Installing with apt-get${as_root:+ through sudo}: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build_preset PRESET [TARGET...]: configures and builds a preset quietly unless something is wrong.
build_preset() {
  local preset=$1
  shift
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
