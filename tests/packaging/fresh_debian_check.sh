#!/usr/bin/env bash
# Installs the package on a fresh Debian 12 made with debootstrap, the way a technician would
# (apt install ./lumbra_<version>_<arch>.deb and nothing else), then tries what they would:
# lumbractl --version, lumbractl listar on the default file from /etc/lumbra, man lumbractl, and
# the window started from its desktop entry on a virtual display.
#   tests/packaging/fresh_debian_check.sh DEB [ROOT_DIR]
# Needs root, debootstrap and the network to Debian's archive; CI does not run it. ROOT_DIR
# (default /tmp/lumbra-bookworm) is made once and reused.
set -euo pipefail
deb=$(realpath "$1")
target=${2:-/tmp/lumbra-bookworm}

[ -x "$target/usr/bin/apt-get" ] ||
    debootstrap --variant=minbase bookworm "$target" http://deb.debian.org/debian

mount -t proc proc "$target/proc" && mount --bind /dev "$target/dev" &&
    mount --bind /dev/pts "$target/dev/pts"
# A process of the chroot may still be closing when the script ends: detach then.
trap 'for m in dev/pts dev proc; do umount "$target/$m" || umount -l "$target/$m"; done' EXIT

inside() {
    chroot "$target" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
step() { printf '\n### %s\n' "$*"; }

cp "$deb" "$target/tmp/"
step "apt-get update; man-db, which every installation but minbase has"
inside apt-get update -q >/dev/null
inside apt-get install -y -q man-db >/dev/null
step "apt install ./$(basename "$deb")"
inside apt install -y "/tmp/$(basename "$deb")"

step "lumbractl --version; listar without -FP (/usr/lib/lumbra/Lumbra.par -> /etc/lumbra); man"
inside lumbractl --version
inside lumbractl listar
inside man -P cat lumbractl | head -n 20

step "the window from lumbra.desktop, on a virtual display"
inside apt-get install -y -q --no-install-recommends xvfb xauth x11-utils >/dev/null
exec_line=$(sed -n 's/^Exec=//p' "$target/usr/share/applications/lumbra.desktop")
inside xvfb-run -a sh -c "$exec_line & sleep 5
    xwininfo -root -tree | grep 'para POS'; found=\$?
    kill \$!; wait \$!; exit \$found"
echo "the window is up"
