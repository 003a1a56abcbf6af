# shellcheck shell=bash
# Sourced, after need.sh, by the scripts that try something in a Debian as it comes. They need root, and
# a Debian mirror (MIRROR, unless it is the usual one).
# shellcheck disable=SC2154  # from need.sh

# Everything is mounted out of sight of the machine, so that nothing stays mounted whatever happens.
if [ -z "${IN_OWN_MOUNTS:-}" ]; then
    IN_OWN_MOUNTS=1 exec unshare --mount "$sources/scripts/$(basename "$0")" "$@"
fi

# fresh_debian SUITE: makes one in a folder, $root, that is removed at the end. It has an ordinary
# user, me, who may use sudo without a password, and no locale but those that every Debian has.
fresh_debian() {
    need debootstrap
    root=$(mktemp -d /var/tmp/fresh-debian.XXXXXX)
    trap 'umount -l "$root"/{dev,proc} 2>/dev/null; rm -rf --one-file-system "$root" "$root.log"' EXIT
    debootstrap --variant=minbase --include=sudo,ca-certificates "$1" "$root" \
        "${MIRROR:-http://deb.debian.org/debian}" >"$root.log" || { cat "$root.log" >&2 && exit 1; }
    chmod 755 "$root"
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    as_root useradd -m -s /bin/bash me
    chmod 755 "$root/home/me"
    echo 'me ALL=(ALL) NOPASSWD: ALL' >"$root/etc/sudoers.d/me"
}

as_root() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive \
        "$@" </dev/null
}

# as_user FOLDER COMMAND...: as the ordinary user, in a folder of hers. Tests interrupt programs, which
# those that are started in the background would ignore.
as_user() {
    chroot --userspec=me --groups=me "$root" env -i --default-signal=INT -C "$1" \
        PATH=/usr/bin:/bin HOME=/home/me "${@:2}" </dev/null
}

add_packages() {
    as_root apt-get install -yqq --no-install-recommends "$@" >/dev/null
}
