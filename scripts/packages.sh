# The Debian packages that this project uses, by what needs them, and their installation. Sourced by the other scripts.

build_packages=(
    cmake ninja-build g++ pkg-config gettext
    nlohmann-json3-dev libsimdjson-dev libicu-dev libexpat1-dev libcurl4-openssl-dev
    libcli11-dev libfmt-dev libglib2.0-dev libseccomp-dev
    libpango1.0-dev libcairo2-dev libharfbuzz-dev libpng-dev libgdk-pixbuf-2.0-dev
    libfontconfig-dev libwayland-dev wayland-protocols plasma-wayland-protocols libx11-dev libgtk-3-dev libgtk-layer-shell-dev
)
# What the programs need to run, besides libraries: certificates, time zones and the font. Libraries come with the -dev packages;
# cmake/Package.cmake finds their packages for the .deb.
run_packages=(ca-certificates tzdata fonts-inter)
# Optional at run time: for --home, and fonts for names in other scripts.
recommended_packages=(libnss-wrapper fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji)
# For trying desks.
desk_packages=(dbus-daemon python3 python3-gi python3-pil python3-xlib gir1.2-gtk-3.0 xserver-xorg-core xserver-xorg-video-dummy xdotool
    x11-utils x11-xserver-utils hsetroot)
test_libraries=(libgtest-dev libgmock-dev)
test_packages=("${desk_packages[@]}" "${test_libraries[@]}" librsvg2-common openssl python3-trustme
    gir1.2-atspi-2.0 gir1.2-gtklayershell-0.1 at-spi2-core libatk-adaptor libglib2.0-bin
    sway swaybg grim wl-clipboard openbox xsettingsd xcompmgr mutter xwayland pcmanfm-qt qt6-qpa-plugins desktop-file-utils appstream man-db zsh fish)
package_packages=(bash coreutils dpkg-dev file gzip lintian)
lint_packages=(git clang-format clang-tidy)
fuzz_packages=(clang libclang-rt-dev)
# For building for arm64 elsewhere, and for running what was built.
arm64_packages=(crossbuild-essential-arm64 qemu-user-static python3 libnss-wrapper libnss-wrapper:arm64)
bench_packages=(
    libbenchmark-dev libplist-dev openssl
    python3 python3-feedparser python3-trustme python3-cairo python3-gi python3-gi-cairo gir1.2-pango-1.0 chromium
)

# of_architecture ARCHITECTURE NAME…: prints the names, those of libraries with the architecture for apt.
of_architecture() {
    local architecture=$1 name; shift
    for name in "$@"; do
        [[ $name != *-dev ]] || apt-cache show --no-all-versions "$name" | grep -qx 'Architecture: all' || name+=:$architecture
        echo "$name"
    done
}

# install_packages NAME…: installs missing packages, as root or by sudo.
install_packages() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f '${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "${0##*/}: needs root or sudo to install: ${missing[*]}" >&2; exit 1; }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}
