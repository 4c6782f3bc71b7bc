# Sourced by ./run and ./test: brings a Debian 12 machine to where the program can be built, and builds it.
# shellcheck shell=bash

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# What happens to be set in the caller's shell must not change what is built.
unset CC CXX CFLAGS CXXFLAGS CPPFLAGS LDFLAGS CPATH LIBRARY_PATH LD_LIBRARY_PATH DESTDIR
unset CMAKE_GENERATOR CMAKE_BUILD_TYPE CMAKE_PREFIX_PATH CMAKE_TOOLCHAIN_FILE PKG_CONFIG_PATH PKG_CONFIG_LIBDIR
unset QT_PLUGIN_PATH
# Resources carry the time of their files, by which no two builds would be the same.
export QT_RCC_SOURCE_DATE_OVERRIDE=1
export PATH="$PATH:/usr/local/sbin:/usr/sbin:/sbin"

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

missing_packages() {
    local wanted
    wanted=$(sed -e 's/#.*//' "$root/scripts/packages.txt" | xargs)
    # shellcheck disable=SC2086
    comm -23 <(printf '%s\n' $wanted | LC_ALL=C sort -u) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^installed //p' | LC_ALL=C sort -u)
}

install_packages() {
    local as_root=(env DEBIAN_FRONTEND=noninteractive)
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "These packages are missing, and there is no sudo to install them with." \
            "Please have an administrator install: $*"
        as_root=(sudo "${as_root[@]}")
    fi
    echo "Installing what is missing (this may take some minutes): $*"
    # A source of the machine's that cannot be reached need not be one that we install from: the installation decides.
    "${as_root[@]}" apt-get -qq -o DPkg::Lock::Timeout=300 update || true
    "${as_root[@]}" apt-get -qq -o DPkg::Lock::Timeout=300 install --no-install-recommends --yes "$@" ||
        fail "Could not install these packages, which Folvane needs: $*"
}

ensure_packages() {
    command -v dpkg-query >/dev/null || fail "Folvane is built on Debian 12; this system has no dpkg."
    local missing
    missing=$(missing_packages)
    # shellcheck disable=SC2086
    [ -z "$missing" ] || install_packages $missing
}

# build PRESET [TARGET]: configures when that was not done yet (or the presets changed) and builds.
# Two commands that run at the same time take turns, because they share the folder.
build() {
    local preset=$1 target=${2:-all}
    local folder="$root/build/$preset"
    mkdir -p "$folder"
    (
        flock 9
        cd "$root"
        [ "$folder/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset"
        cmake --build "$folder" --target "$target"
    ) 9>"$folder/.lock"
}
