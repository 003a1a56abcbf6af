#!/usr/bin/env bash
# Whether ./run of the checkout SOURCES does what it should where something is in its way: with its own
# scripts, a small project in place of the programs, and a package manager that is only feigned.
set -euo pipefail
sources=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/Mein Ordner für Tabellen/scripts" "$work/bin"
cd "$work/Mein Ordner für Tabellen"
unset DISPLAY WAYLAND_DISPLAY WAYLAND_SOCKET QT_QPA_PLATFORM TINTWELL_BUILD_DIR
export LC_ALL=C PATH=$work/bin:$PATH WORK=$work

cp "$sources/run" .
cp "$sources/scripts/need.sh" scripts
cat >CMakePresets.json <<'END'
{"version": 2, "configurePresets": [{"name": "release", "generator": "Ninja", "binaryDir": "build"}]}
END
cat >CMakeLists.txt <<'END'
cmake_minimum_required(VERSION 3.18)
project(Small LANGUAGES NONE)
configure_file(cli.sh cli/tintwell-cli COPYONLY)
configure_file(window.sh app/tintwell COPYONLY)
# Fails if two are at work.
add_custom_target(tintwell-cli mkdir busy COMMAND sleep 0.3 COMMAND rmdir busy)
add_custom_target(tintwell)
END
cat >cli.sh <<'END'
#!/bin/sh
echo "ran $1"
END
cat >window.sh <<'END'
#!/bin/sh
exit "${WINDOW:-0}"
END
cat >"$work/bin/dpkg-query" <<'END'
#!/bin/sh
grep -qx -e "$3" "$WORK/missing" || echo installed
END
cat >"$work/bin/apt-get" <<'END'
#!/bin/sh
echo "$*" >>"$WORK/calls"
case "$*" in
*update)
    errors=$(cat "$WORK/update")
    mv "$WORK/update.next" "$WORK/update" 2>/dev/null
    [ -z "$errors" ] || { echo "$errors" >&2; exit 100; }
    ;;
*) [ -e "$WORK/installs" ] || { echo 'E: Unable to locate it' >&2; exit 100; } ;;
esac
END
cat >"$work/bin/sudo" <<'END'
#!/bin/sh
exec "$@"
END
chmod +x cli.sh window.sh "$work"/bin/*
touch "$work"/{missing,update,installs}

# expect STATUS TEXT WHAT...: what ./run, told to compare, ends with; TEXT is part of what it prints.
expect() {
    local status=0 text
    text=$(./run "${@:4}" 2>&1) || status=$?
    if [ "$status" -ne "$1" ] || [[ $text != *"$2"* ]]; then
        printf '%s: status %s, expected %s with "%s":\n%s\n' "$3" "$status" "$1" "$2" "$text" >&2
        exit 1
    fi
    printed=$text
}

expect 0 'ran compare' 'a new checkout' compare
touch build/release/kept
mv "$PWD" "$work/moved"
cd "$work/moved"
expect 0 'ran compare' 'a moved checkout' compare
[ -e build/release/kept ] || { echo 'starting over removes what it did not make' >&2 && exit 1; }
./run compare >/dev/null 2>&1 &
expect 0 'ran compare' 'two at a time' compare
wait $! || { echo 'the first of two at a time failed' >&2 && exit 1; }

expect 0 'ran convert' 'no display'
WINDOW=1 DISPLAY=:dead expect 1 'ran convert' 'a dead display'

cd /
TINTWELL_BUILD_DIR="$work/else where" "$work/moved/run" compare >/dev/null 2>&1
[ -x "$work/else where/release/cli/tintwell-cli" ] || { echo 'TINTWELL_BUILD_DIR is ignored' >&2 && exit 1; }
cd "$work/moved"

rm build/release/build.log
mkdir build/release/build.log
expect 1 'TINTWELL_BUILD_DIR' 'a folder that cannot be written' compare
[[ $printed != *ran* ]] || { echo 'an old program runs' >&2 && exit 1; }
rmdir build/release/build.log

echo ninja-build >"$work/missing"
echo 'E: The repository has no Release file' >"$work/update"
expect 0 'ran compare' 'a broken repository' compare
grep -q 'DPkg::Lock::Timeout=.* install -y .*ninja-build' "$work/calls"
echo 'E: Could not get lock /var/lib/apt/lists/lock' >"$work/update"
touch "$work/update.next"
printf '#!/bin/sh\n' >"$work/bin/sleep"
chmod +x "$work/bin/sleep"
expect 0 'waiting for it' 'another package manager' compare
rm "$work/installs"
expect 1 'Unable to locate it' 'a package that cannot be installed' compare
