# Sourced by ./run, ./test and the scripts that build something.

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
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >/dev/null; then
        echo "apt-get could not install: ${missing[*]}" >&2
        exit 1
    fi
}

# Needed by every build.
build_packages=(ca-certificates cmake g++ ninja-build qtbase5-dev)

# build PRESET [TARGET...]: configures and builds; prints the log if that fails.
build() {
    local preset=$1 log
    shift
    log=build/$preset/build.log
    mkdir -p "build/$preset"
    if ! { cmake --preset "$preset" && cmake --build --preset "$preset" ${1:+--target "$@"}; } \
        >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
}
