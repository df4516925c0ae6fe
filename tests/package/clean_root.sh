#!/bin/bash
# Runs in a root that has nothing but apt, by scripts/package --test, beside the packages and a part of their sources.
#
# For each test of debian/tests: what it asks for is installed, first the archive's packages, then korm's; it runs; korm's are
# purged with all that came along with them. Then nothing may be left that wasn't there before.
set -euo pipefail
cd "$(dirname "$0")"
[[ -e only-in-a-clean-root ]] || { echo "clean_root.sh: this is no root to try packages in" >&2; exit 2; }

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

aptGet() {
    DEBIAN_FRONTEND=noninteractive apt-get --yes --quiet=2 --no-install-recommends -o Dpkg::Use-Pty=0 "$@" </dev/null
}

# All files, but for the notes, logs and caches of apt, dpkg and man.
contents() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /var/lib/apt -o -path /var/lib/dpkg \
        -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}

# Korm's packages are named by their files, since no archive has them.
declare -A files=([libkorm-dev]="libkorm7 libkorm-dev" [libkorm-doc]=libkorm-doc [python3-korm]="libkorm7 python3-korm")

# runTest NAME PACKAGE...
runTest() {
    local name=$1 package others=() ours=() purged=()
    shift
    for package; do
        if [[ -v files[$package] ]]; then read -ra purged <<<"${files[$package]}"; else others+=("$package"); fi
    done
    for package in "${purged[@]}"; do ours+=("$PWD/packages/$package"_*.deb); done

    echo "=== $name: $*"
    [[ ${#others[@]} -eq 0 ]] || aptGet install "${others[@]}"
    contents >before.txt
    aptGet install "${ours[@]}"
    rm -rf scratch
    mkdir scratch
    (cd sources && AUTOPKGTEST_TMP=$OLDPWD/scratch "debian/tests/$name") || fail "$name"
    aptGet purge --auto-remove "${purged[@]}"
    contents >after.txt
    diff before.txt after.txt || fail "$name: these files are left behind, or gone"
    if dpkg-query --show '*korm*' 2>/dev/null; then fail "$name: dpkg still knows of korm"; fi
}

aptGet update
awk '/^Tests:/ { name = $2 } /^Depends:/ { sub(/^Depends: /, ""); gsub(",", ""); print name, $0 }' sources/debian/tests/control >tests.txt
while read -ra test <&3; do runTest "${test[@]}"; done 3<tests.txt
echo "$(wc -l <tests.txt) tests passed, nothing is left behind"
