# Sourced by the commands at the root: installs what a fresh Debian machine lacks.

packages_windows_build="g++-mingw-w64-x86-64-posix cmake ninja-build"
packages_wine="wine wine64 libgl1 libgl1-mesa-dri libglx-mesa0 gstreamer1.0-plugins-base gstreamer1.0-plugins-good"
packages_display="xvfb xdotool x11-utils imagemagick"
packages_sound="pulseaudio pulseaudio-utils"
packages_tests="googletest libbenchmark-dev libmpfr-dev libpng-dev khronos-api glslang-tools librsvg2-bin python3"
packages_native_build="g++ clang libclang-rt-dev cmake ninja-build"

say() { printf '%s: %s\n' "$(basename "$0")" "$*"; }

# need_packages PACKAGE...: installs those that are missing, as root or through sudo; otherwise lists them and stops.
need_packages() {
    local missing=() package
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed'; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && command -v sudo >/dev/null; }; then
            say "these packages are missing and only root may install them: ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update &&
           "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"; } \
         >"$log" 2>&1; then
        cat "$log" >&2
        say "the packages could not be installed"
        exit 1
    fi
    rm -f "$log"
}

# configure_and_build PRESET TESTS [TARGET...]: TESTS is ON or OFF; building them needs more packages. Quiet when all is
# well, the end of the log when not.
configure_and_build() {
    local preset=$1 tests=$2 log
    shift 2
    local targets=()
    [ $# -gt 0 ] && targets=(--target "$@")
    log=build/$preset.log
    mkdir -p build
    if ! { cmake --preset "$preset" -DDUNKMAN_TESTS="$tests" -DDUNKMAN_WARNINGS_AS_ERRORS="${warnings_as_errors:-OFF}" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        say "the $preset build failed; the whole log is in $log"
        exit 1
    fi
}
