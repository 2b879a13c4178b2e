# Bare Debian systems, made by debootstrap from apt's mirror. Other scripts source this after packages.sh.
# Systems stay in build/systems, so that the next run is quick. Things are mounted there only while a command runs.

systems=$PWD/build/systems

# cannot_run REASON: exits with 77, which means neither passed nor failed.
cannot_run() { echo "${0##*/}: cannot run: $*" >&2; exit 77; }

need_systems() {
    [ "$(id -u)" -eq 0 ] || cannot_run "a system of its own takes root"
    unshare --mount --pid --fork true 2>/dev/null || cannot_run "mounts are not allowed here"
    (install_packages debootstrap) >&2 || cannot_run "there is no debootstrap"
}

this_release() { (. /etc/os-release && echo "$VERSION_CODENAME"); }

# make_system RELEASE FOLDER: makes a bare system with the apt sources of this one.
make_system() {
    local release=$1 folder=$2 bare=$systems/$1.tar log=$systems/$1.log sources mirror
    mkdir -p "$systems"
    if [ ! -e "$bare" ]; then
        sources=$(apt-get indextargets --format '$(SITE) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
            sed "s/ $(this_release)/ $release/" | sort -u)
        mirror=$(awk -v release="$release" '$2 == release && $3 == "main" { print $1; exit }' <<<"$sources")
        [ -n "$mirror" ] || cannot_run "apt has no mirror of $(this_release) here"
        echo "Making a bare $release" >&2
        rm -rf --one-file-system "$bare.new"
        debootstrap --variant=minbase "$release" "$bare.new" "$mirror" >"$log" 2>&1 ||
            { tail "$log" >&2; cannot_run "the mirror gives no $release"; }
        sed 's/^/deb /' <<<"$sources" >"$bare.new/etc/apt/sources.list"
        tar -C "$bare.new" -cf "$bare.part" . && mv "$bare.part" "$bare"
        rm -rf --one-file-system "$bare.new"
    fi
    mkdir -p "$folder"
    tar -C "$folder" -xpf "$bare"
}

# in_system FOLDER COMMAND…: runs the command there as root, without this system's variables. Uses pivot_root, because extensions
# cannot be confined wholly in a chroot. All mounts and processes end with it.
in_system() {
    local folder=$1; shift
    cp /etc/resolv.conf "$folder/etc/"
    unshare --mount --pid --ipc --fork --kill-child sh -euc '
        mount --bind "$1" "$1" && cd "$1" && shift
        mount -t proc proc proc && mount --rbind /dev dev && mount --rbind /sys sys
        for folder in run tmp; do mount -t tmpfs -o mode=1777 own $folder; done
        pivot_root . mnt && umount -l /mnt
        cd / && exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root DEBIAN_FRONTEND=noninteractive "$@"' sh "$folder" "$@"
}

# as_builder FOLDER COMMAND: runs a line of bash in the sources there, as an ordinary user.
as_builder() {
    in_system "$1" setpriv --reuid=builder --regid=builder --init-groups \
        env HOME=/home/builder FOLIOVAULT_WERROR="${FOLIOVAULT_WERROR:-}" bash -euc "cd ~/sources && $2"
}

# build_system FOLDER RELEASE LINE: makes or updates a system with the present sources, where root has run this line of bash after
# packages.sh.
build_system() {
    local folder=$1 release=$2 log=$1.log
    if [ ! -e "$folder" ]; then
        rm -rf --one-file-system "$folder.new"
        make_system "$release" "$folder.new"
        in_system "$folder.new" sh -euc 'useradd --create-home --shell /bin/bash builder && install -d -o builder ~builder/sources'
        mv "$folder.new" "$folder"
    fi
    git ls-files -co --exclude-standard -z | tar -c --null --files-from=- --ignore-failed-read 2>/dev/null |
        as_builder "$folder" 'find . -mindepth 1 -maxdepth 1 ! -name build -exec rm -rf {} + && tar -x'
    in_system "$folder" bash -euc "cd ~builder/sources && source scripts/packages.sh && $3" >"$log" 2>&1 ||
        { tail "$log" >&2; cannot_run "packages are missing"; }
}

# arm64_system: prints the folder of a system that builds for arm64. Separate, because libraries of both architectures conflict.
arm64_system() {
    build_system "$systems/arm64" trixie '
        dpkg --print-foreign-architectures | grep -q arm64 || { dpkg --add-architecture arm64; apt-get update -q; }
        install_packages "${arm64_packages[@]}" $(of_architecture arm64 "${build_packages[@]}" "${test_libraries[@]}")'
    echo "$systems/arm64"
}
