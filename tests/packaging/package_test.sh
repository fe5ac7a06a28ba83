#!/usr/bin/env bash
# Builds the Debian package (scripts/package.sh, release preset) and checks what a technician's
# machine would receive: every file in its place and nothing else, the links, the configuration
# file, the package's fields, the desktop entries, the manual pages' lint, lintian, and the
# installed programs finding their folder through the links.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
deb=$(bash "$root/scripts/package.sh") || { echo "package: the build failed" >&2; exit 1; }
version=$(sed -n 's/^project(Lumbra VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "FAIL: $*" >&2; ((failures++)); }

# Every file and link, with its mode; directories aside. The virtual devices' window comes with
# its own entry and icon when this tree builds it.
expected=(
    "-rwxr-xr-x ./usr/lib/lumbra/lumbra"
    "-rwxr-xr-x ./usr/lib/lumbra/lumbractl"
    "lrwxrwxrwx ./usr/lib/lumbra/Lumbra.par -> /etc/lumbra/Lumbra.par"
    "lrwxrwxrwx ./usr/bin/lumbra -> ../lib/lumbra/lumbra"
    "lrwxrwxrwx ./usr/bin/lumbractl -> ../lib/lumbra/lumbractl"
    "-rw-r--r-- ./etc/lumbra/Lumbra.par"
    "-rw-r--r-- ./usr/share/applications/lumbra.desktop"
    "-rw-r--r-- ./usr/share/icons/hicolor/scalable/apps/lumbra.svg"
    "-rw-r--r-- ./usr/share/man/man1/lumbra.1.gz"
    "-rw-r--r-- ./usr/share/man/man1/lumbractl.1.gz"
    "-rw-r--r-- ./usr/share/bash-completion/completions/lumbractl"
    "-rw-r--r-- ./usr/share/doc/lumbra/copyright"
    "-rw-r--r-- ./usr/share/doc/lumbra/changelog.gz"
)
if [[ -n $(find "$root/build/release" -name lumbra-simulador -type f -perm -u+x -print -quit) ]]; then
    expected+=(
        "-rwxr-xr-x ./usr/lib/lumbra/lumbra-simulador"
        "lrwxrwxrwx ./usr/bin/lumbra-simulador -> ../lib/lumbra/lumbra-simulador"
        "-rw-r--r-- ./usr/share/applications/lumbra-simulador.desktop"
        "-rw-r--r-- ./usr/share/icons/hicolor/scalable/apps/lumbra-simulador.svg"
        "-rw-r--r-- ./usr/share/man/man1/lumbra-simulador.1.gz"
    )
fi
got=$(dpkg-deb --contents "$deb" | awk '$1 !~ /^d/ { $2 = $3 = $4 = $5 = ""; print }' |
    tr -s ' ' | sort)
want=$(printf '%s\n' "${expected[@]}" | sort)
[[ $got == "$want" ]] || fail "contents differ (- expected, + in the package):
$(diff <(echo "$want") <(echo "$got") | grep '^[<>]' | sed 's/^</-/; s/^>/+/')"
owners=$(dpkg-deb --contents "$deb" | awk '{ print $2 }' | sort -u)
[[ $owners == "root/root" ]] || fail "files owned by $owners, not root/root"

# The configuration file, the fields, and a changelog that names this version.
dpkg-deb -x "$deb" "$work/root"
dpkg-deb -e "$deb" "$work/control"
[[ $(cat "$work/control/conffiles") == "/etc/lumbra/Lumbra.par" ]] ||
    fail "conffiles: $(cat "$work/control/conffiles")"
field() { dpkg-deb --field "$deb" "$1"; }
[[ $(field Version) == "$version" ]] || fail "Version $(field Version), project $version"
for lib in libc6 libstdc++6 libqt6core6 libqt6widgets6 libqt6serialport6; do
    [[ ", $(field Depends)," == *", $lib "* ]] || fail "Depends lacks $lib: $(field Depends)"
done
zcat "$work/root/usr/share/doc/lumbra/changelog.gz" | head -n1 | grep -q "^lumbra ($version) " ||
    fail "changelog's first entry is not $version"
cmp -s "$work/root/etc/lumbra/Lumbra.par" "$root/examples/Lumbra.par" || fail "Lumbra.par differs"

# Both entries, the virtual devices' one too when this tree does not install it yet.
for entry in "$work"/root/usr/share/applications/*.desktop "$root"/packaging/*.desktop; do
    out=$(desktop-file-validate "$entry" 2>&1) && [[ -z $out ]] || fail "$entry: $out"
done
# mandoc checks the section against the file's name: lumbra.1, not a temporary name.
for page in "$work"/root/usr/share/man/man1/*.1.gz; do
    name=$(basename "$page" .gz)
    zcat "$page" >"$work/$name"
    out=$(mandoc -T lint "$work/$name" 2>&1) || fail "mandoc $name: $out"
    out=$(groff -k -ww -z -man "$work/$name" 2>&1) && [[ -z $out ]] || fail "groff $name: $out"
done
bash -n "$work/root/usr/share/bash-completion/completions/lumbractl" || fail "completion syntax"

# The installed programs: reached through /usr/bin, they take /usr/lib/lumbra as their folder.
ctl=$work/root/usr/bin/lumbractl
[[ $("$ctl" --version) == "lumbractl $version" ]] || fail "lumbractl --version: $("$ctl" --version)"
"$ctl" listar >/dev/null 2>"$work/err"; status=$?
[[ $status -eq 3 ]] && grep -qF "$work/root/usr/lib/lumbra/Lumbra.par" "$work/err" ||
    fail "without -FP, lumbractl should look in its real folder (status $status): $(cat "$work/err")"
"$ctl" -FP "$work/root/etc/lumbra/Lumbra.par" listar | grep -q "^LIG"$'\t'"1"$'\t' ||
    fail "lumbractl listar on the installed sample"

# lintian: no error.
lintian --fail-on error --tag-display-limit 0 "$deb" >"$work/lintian" 2>&1 ||
    fail "lintian:
$(cat "$work/lintian")"

[[ $failures -eq 0 ]] && echo "package: $deb passed every check"
exit $((failures > 0))
