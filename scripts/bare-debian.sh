# A bare Debian 12 in a temporary folder, to try things on that a stranger's machine must be enough for. Sourced by
# scripts/check-fresh and scripts/check-deb, never run; needs root. Afterwards $root is the folder, and this repository
# can be read at /repository inside.

[ "$(id -u)" = 0 ] || fail "This needs root."
command -v debootstrap >/dev/null || { apt-get -qq update && apt-get -qq install -y debootstrap >&2; }

root=$(mktemp -d "${TMPDIR:-/tmp}/debian-XXXXXX")
cleanup() {
    local each
    for each in proc sys dev/pts dev repository .; do umount -l "$root/$each" 2>/dev/null || true; done
    rm -rf --one-file-system "$root" "$root.log"
}
trap cleanup EXIT

# How this machine reaches its packages, not what it has of them.
reach() {
    local source
    rm -f "$root/etc/apt/sources.list"
    for source in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
        [ ! -s "$source" ] || cp "$source" "$root$source"
    done
    grep -lsE '^Acquire' /etc/apt/apt.conf.d/* | xargs -r cp -t "$root/etc/apt/apt.conf.d" || true
    cp -L /etc/resolv.conf /etc/hosts "$root/etc/"
    cp -rL /etc/ssl/certs "$root/etc/ssl/" 2>/dev/null || true
    if command -v npm >/dev/null; then
        printf 'registry=%s\n' "$(npm config get registry 2>/dev/null)" >"$root/root/.npmrc"
    fi
}

# make_debian PACKAGE…: with these packages from the start.
make_debian() {
    local mirror packages
    packages=$(IFS=,; printf '%s' "$*")
    mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 'Suite: oldstable' 2>/dev/null |
        grep -m1 -E '/debian/?$' ||
        apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | grep -m1 -E '/debian/?$')
    debootstrap --variant=minbase --include="$packages" bookworm "$root" "$mirror" >"$root.log" 2>&1 ||
        { tail -n 20 "$root.log" >&2; fail "debootstrap failed"; }
    reach
    # Inside, the root has to be a mount of its own for tests that mount.
    mount --bind "$root" "$root"
    mount -t proc proc "$root/proc"
    mount --rbind /sys "$root/sys"
    mount --rbind /dev "$root/dev"
    mkdir "$root/repository"
    mount --bind -o ro "$top" "$root/repository"
}

# Runs a script inside, with nothing of our environment but the way to the network.
inside() {
    chroot "$root" /usr/bin/env -i HOME=/root TERM=dumb PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        ${http_proxy:+http_proxy="$http_proxy"} ${https_proxy:+https_proxy="$https_proxy"} \
        ${no_proxy:+no_proxy="$no_proxy"} bash -c "$1"
}
