# Sourced by ./test and ./run: which Debian packages each needs, and how they get here.

build_packages=(
    ccache cmake g++ libboost-dev libbsd-dev libfmt-dev libjpeg62-turbo-dev libqrencode-dev
    libturbojpeg0-dev libx11-dev libxcb1-dev libxcb-composite0-dev libxcb-damage0-dev
    libxcb-randr0-dev libxcb-shape0-dev libxcb-shm0-dev libxcb-xfixes0-dev libxcb-xinput-dev
    libxcb-xtest0-dev libxkbcommon-dev libxkbcommon-x11-dev ninja-build nlohmann-json3-dev
    pkg-config qt6-base-dev qt6-svg-dev
)
desktop_packages=(
    fonts-dejavu-core fonts-droid-fallback fonts-urw-base35 hsetroot openbox picom x11-utils
    xdg-user-dirs xvfb
)
test_packages=(
    appstream chromium clang-14 clang-format-14 clang-tidy-14 desktop-file-utils groff-base
    libagg-dev libbenchmark-dev libclang-rt-14-dev libgmock-dev libgtest-dev man-db mandoc nodejs python3
    systemd x11-apps x11-xkb-utils x11-xserver-utils xdotool zbar-tools
)

# install_packages NAME...: those that are missing; says what to do where that is not possible.
install_packages() {
    local missing=() name
    for name in "$@"; do
        if [[ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" != installed ]]; then
            missing+=("$name")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return 0
    fi
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -y -q)
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is neither root nor sudo to install them:" \
                "${missing[*]}" >&2
            return 1
        fi
        apt=(sudo "${apt[@]}")
    fi
    echo "Installing: ${missing[*]}"
    "${apt[@]}" update >/dev/null
    "${apt[@]}" install --no-install-recommends "${missing[@]}" >/dev/null
}

# install_node_packages FOLDER: what its package-lock.json names, where that is not there yet.
install_node_packages() {
    if [[ $1/node_modules/.package-lock.json -nt $1/package-lock.json ]]; then
        return 0
    fi
    command -v npm >/dev/null || install_packages npm
    echo "Installing: the packages of $1"
    (cd "$1" && npm ci --ignore-scripts --no-audit --no-fund --loglevel=error)
}
