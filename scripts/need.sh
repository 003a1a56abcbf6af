# shellcheck shell=bash
# Sourced by ./run, ./test and the scripts that build something.

# Where builds go, a folder for each preset: build/ in the checkout, unless TINTWELL_BUILD_DIR names
# another place.
sources=$(CDPATH='' cd -- "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
builds=$(cd "$sources" && realpath -m -- "${TINTWELL_BUILD_DIR:-build}")
compiler= # that of the preset

# Needed by every build.
# shellcheck disable=SC2034  # used by those who source this
build_packages=(ca-certificates cmake g++ ninja-build qtbase5-dev)

# need PACKAGE...: installs those of the Debian packages that are missing; prints nothing if there
# are none.
need() {
    local missing=() package
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        command -v cmake >/dev/null && command -v ninja >/dev/null && return
        echo "apt-get is missing. Please install the equivalents of these Debian packages: $*" >&2
        exit 1
    fi
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return
    fi
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "These packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
        exit 1
    fi
    echo "Installing ${missing[*]}"
    if ! apt_get update; then
        # One broken or expired repository is enough for that.
        echo "$apt_errors" >&2
        echo "Not all package lists could be renewed; going on with those that there are."
    fi
    if ! apt_get install -y --no-install-recommends "${missing[@]}"; then
        echo "$apt_errors" >&2
        echo "apt-get could not install: ${missing[*]}" >&2
        exit 1
    fi
}

# apt-get as root, which waits while another package manager is at work. Leaves its messages in
# $apt_errors.
apt_get() {
    local as_root=() end=$((SECONDS + 600)) told=
    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
    fi
    while true; do
        # apt-get itself waits for dpkg's lock only, not for those of lists and archives.
        if apt_errors=$("${as_root[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -o DPkg::Lock::Timeout=5 "$@" 2>&1 >/dev/null); then
            return 0
        fi
        if [[ $apt_errors != *"Could not get lock"* ]] || [ $SECONDS -ge $end ]; then
            return 1
        fi
        if [ -z "$told" ]; then
            echo "Another package manager is at work; waiting for it ..."
            told=yes
        fi
        sleep 5
    done
}

# build PRESET [TARGET...]: configures and builds in $builds/PRESET, with $compiler if that is set; prints
# the log if that fails.
build() {
    local preset=$1 folder=$builds/$1 log=$builds/$1/build.log
    shift
    if ! { mkdir -p "$folder" && touch "$log" && [ -f "$log" ]; } 2>/dev/null; then
        echo "$log cannot be written by $(id -un). Set TINTWELL_BUILD_DIR to a folder for builds," \
            "or give $builds to this user." >&2
        exit 1
    fi
    # The open log is also the lock.
    if configure_and_build "$@" 9>>"$log"; then
        return
    fi
    cat "$log" >&2
    exit 1
}

configure_and_build() {
    local locked=0
    if command -v flock >/dev/null; then
        flock --nonblock --conflict-exit-code 75 9 || locked=$?
    fi
    if [ $locked -eq 75 ]; then
        echo "Another build is at work in $folder; waiting for it ..." >&2
        flock 9
    fi
    : >"$log"
    forget_what_differs "$folder" || return 1
    (cd "$sources" && cmake --preset "$preset" -B "$folder" \
        ${compiler:+-D "CMAKE_CXX_COMPILER=$compiler"}) >&9 2>&1 &&
        cmake --build "$folder" ${1:+--target "$@"} >&9 2>&1
}

# CMake refuses a folder that was configured for another one, as after a move or a copy of the checkout,
# and loses the preset's settings in one for another compiler. False if another project is built there.
forget_what_differs() {
    local cache=$1/CMakeCache.txt
    if [ ! -f "$cache" ]; then
        return
    fi
    if ! grep -q "^project($(cached CMAKE_PROJECT_NAME)\>" "$sources/CMakeLists.txt"; then
        echo "$1 belongs to another project." >"$log"
        return 1
    fi
    if [ "$(cached CMAKE_HOME_DIRECTORY)" -ef "$sources" ] &&
        [ "$(cached CMAKE_CACHEFILE_DIR)" -ef "$1" ] &&
        [[ "$(cached CMAKE_CXX_COMPILER)" = *"$compiler" ]]; then
        return
    fi
    echo "$1 was built elsewhere, or with another compiler; starting over ..." >&2
    rm -rf "$cache" "$1/CMakeFiles"
}

# The value of a variable in $cache.
cached() {
    sed -n "s/^$1:[A-Z]*=//p" "$cache"
}

# step COMMAND...: says what is done, and how long it took.
step() {
    local start=$SECONDS
    echo "$* ..."
    "$@" # which ends the script if it fails
    echo "$*: $((SECONDS - start)) s"
}
