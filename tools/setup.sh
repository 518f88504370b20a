# Sourced by ./run and ./test: what has to be installed before the build, and how it is built.
# Expects $root (the checkout) and defines need_packages, build_preset.

BUILD_PACKAGES="g++ cmake ninja-build ccache pkgconf qt6-base-dev libjpeg62-turbo-dev libpng-dev libtiff-dev zlib1g-dev nlohmann-json3-dev
  fonts-dejavu-core fonts-liberation2 qt6-tools-dev libqt6sql6-sqlite
  libnetcdf-dev ferret-datasets gmt-gshhg-low gmt-gshhg-high"
TEST_PACKAGES="libgtest-dev"
BENCH_PACKAGES="libbenchmark-dev"

mkdir -p "$root/build"
log=$root/build/setup.log
# A clone in another folder shares the compiler cache.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

say() { printf '%s\n' "$*" >&2; }

# Installs what is missing of the named Debian packages; on other systems they are expected to be there.
need_packages() {
  command -v dpkg-query >/dev/null || return 0
  local missing sudo=
  missing=$(for p in "$@"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$p" 2>/dev/null | grep -qx installed || echo "$p"
  done)
  [ -z "$missing" ] && return 0
  missing=$(echo $missing)
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || {
      say "Please install as root: apt-get install --no-install-recommends $missing"
      return 1
    }
    sudo=sudo
  fi
  say "Installing: $missing"
  local get="$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends"
  $get $missing >"$log" 2>&1 ||
    { $sudo apt-get update -q >>"$log" 2>&1 && $get $missing >>"$log" 2>&1; } ||
    { tail -5 "$log" >&2; return 1; }
}

# Configures (once) and builds one preset; prints only what went wrong.
build_preset() (
  cd "$root" || exit 1
  exec 9>"build/.lock-$1"
  flock 9
  local output="build/$1.log"
  # A checkout that was moved or copied takes no build along.
  if [ -f "build/$1/CMakeCache.txt" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "build/$1/CMakeCache.txt"; then
    rm -rf "build/$1"
  fi
  if [ ! -f "build/$1/build.ninja" ]; then
    say "Configuring $1 ..."
    cmake --preset "$1" >"$output" 2>&1 || { rm -f "build/$1/build.ninja"; tail -20 "$output" >&2; exit 1; }
  fi
  if ! ninja -C "build/$1" -n 2>/dev/null | grep -q 'no work to do'; then say "Building $1 ..."; fi
  cmake --build --preset "$1" >"$output" 2>&1 || {
    grep -E 'error|FAILED|Error' "$output" | head -20 >&2
    say "The build failed; the whole story is in $output."
    exit 1
  }
)
