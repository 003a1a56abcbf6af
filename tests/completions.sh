#!/usr/bin/env bash
# Completes words of the command line by the completion for bash, FILE.
set -euo pipefail
. "$1"

# Expects the completions of the last word, which the shell splits at equals signs.
expect() {
    local expected=$1
    shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _tintwell_cli
    if [ "${COMPREPLY[*]}" != "$expected" ]; then
        echo "$*: found ${COMPREPLY[*]}, expected $expected" >&2
        exit 1
    fi
}

expect 'spi1d spi3d' tintwell-cli convert --to = s
expect mga tintwell-cli convert --to m
expect '' tintwell-cli convert --to 3d
expect 3dl tintwell-cli convert --from = 3d
