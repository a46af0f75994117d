# shellcheck shell=bash disable=SC2034  # the lists are for those who source this
# Sourced by commands, after report.sh: which packages they need, and how a Debian machine gets them.

packages_windows_build="g++-mingw-w64-x86-64-posix cmake ninja-build"
packages_windows_clang_build="$packages_windows_build clang"
packages_native_build="g++ cmake ninja-build"
packages_sanitize_build="clang libclang-rt-dev cmake ninja-build"
packages_wine="wine wine64 libgl1 libgl1-mesa-dri libglx-mesa0 gstreamer1.0-plugins-base gstreamer1.0-plugins-good"
packages_display="xvfb xdotool imagemagick"
packages_sound="pulseaudio pulseaudio-utils"
packages_film="ffmpeg libegl-dev libgl1-mesa-dri"
packages_tests="googletest python3"
packages_windows_tests="$packages_wine $packages_display $packages_tests $packages_native_build libegl-dev"
packages_native_tests="$packages_tests $packages_film libmpfr-dev libpng-dev librsvg2-bin libbenchmark-dev khronos-api glslang-tools python3-jsonschema"
packages_style="clang-format clang-tidy shellcheck pyflakes3 pycodestyle git python3-numpy"
packages_tidy="clang-tidy git googletest libbenchmark-dev libmpfr-dev libpng-dev g++-mingw-w64-x86-64-posix python3"
packages_sanitize_tests="$packages_tests libmpfr-dev libpng-dev librsvg2-bin khronos-api glslang-tools"
packages_coverage="clang llvm libclang-rt-dev cmake ninja-build $packages_tests $packages_film libmpfr-dev libpng-dev librsvg2-bin"
packages_soak="$packages_sanitize_build $packages_windows_build $packages_windows_tests $packages_sound"
packages_valgrind="valgrind $packages_native_build $packages_tests $packages_film libmpfr-dev libpng-dev librsvg2-bin libbenchmark-dev"

# Each: the name in Debian 12 and 13, what shows that it is there (a command, a file, or - for what cannot be seen), and
# what it is for. On other systems this list is what people are told.
package_table="
g++                         g++                           compiler of the native programs
g++-mingw-w64-x86-64-posix  x86_64-w64-mingw32-g++-posix  compiler and libraries of the Windows programs
clang                       clang++                       second compiler, and the one with the sanitizers
libclang-rt-dev             -                             address, undefined-behaviour and thread sanitizer
llvm                        llvm-cov                      counts of the lines and branches that ran
valgrind                    valgrind                      finds uses of memory that is not there or holds no value
cmake                       cmake                         build files, 3.25 or later
ninja-build                 ninja                         builds
wine                        wine                          runs the Windows programs
wine64                      -                             its 64-bit part
libgl1                      -                             OpenGL, as Wine looks for it
libgl1-mesa-dri             -                             OpenGL 4.5 in software
libglx-mesa0                -                             OpenGL on an X display
gstreamer1.0-plugins-base   -                             music: sample conversion under Wine's Media Foundation
gstreamer1.0-plugins-good   -                             music: MP3 decoder under Wine's Media Foundation
xvfb                        Xvfb                          virtual display
xdotool                     xdotool                       keys and clicks on the virtual display
imagemagick                 import                        screenshots
pulseaudio                  pulseaudio                    sound server with a null device
pulseaudio-utils            pactl                         asks whether there is a sound server
googletest                  /usr/src/googletest           test library, as sources
libbenchmark-dev            /usr/include/benchmark        benchmark library
nlohmann-json3-dev          /usr/include/nlohmann         reader to hold ours against
rapidjson-dev               /usr/include/rapidjson        another one
libegl-dev                  /usr/include/EGL/egl.h        draws into memory instead of a window
libmpfr-dev                 /usr/include/mpfr.h           exact functions to hold ours against
libpng-dev                  /usr/include/png.h            pictures that textures are made from
librsvg2-bin                rsvg-convert                  draws SVG
khronos-api                 /usr/share/khronos-api        registry of OpenGL, held against our loader
glslang-tools               glslangValidator              a second opinion on the shaders
clang-format                clang-format                  layout of the sources, held by version 14
clang-tidy                  clang-tidy                    names and likely faults, held by version 14
shellcheck                  shellcheck                    faults in shell scripts
pyflakes3                   pyflakes3                     faults in Python scripts
pycodestyle                 pycodestyle                   layout of Python scripts
python3                     python3                       checks and asset tools
python3-jsonschema          -                             a second opinion on the schemas of the data files
python3-numpy               -                             arithmetic of the music tools and of the sound check
fonts-dejavu-core           -                             captions of the contact sheets
fluidsynth                  fluidsynth                    plays scores
fluid-soundfont-gm          /usr/share/sounds/sf2         instruments
sox                         sox                           mixes stems
libsox-fmt-mp3              -                             MP3 in sox
lame                        lame                          MP3 encoder
ffmpeg                      ffmpeg                        makes films, and decodes MP3 for them and to compare with
debootstrap                 debootstrap                   makes a bare Debian to try things in
git                         git                           the project's history
"

# describe_packages PACKAGE...: a line for each, with what it is for.
describe_packages() {
    local package
    for package in "$@"; do
        awk -v package="$package" '
            $1 == package { sub(/^[^ ]+ +[^ ]+ +/, ""); purpose = $0 }
            END { printf "  %-28s%s\n", package, purpose }' <<<"$package_table"
    done
}

# is_present PACKAGE: by its command or file, on a system without Debian's list of packages.
is_present() {
    local sign
    sign=$(awk -v package="$1" '$1 == package { print $2 }' <<<"$package_table")
    case ${sign:-$1} in
        -) return 0 ;;
        /*) [ -e "$sign" ] ;;
        *) command -v "${sign:-$1}" >/dev/null ;;
    esac
}

is_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'ok installed'; }

# need_packages PACKAGE...: installs those that are missing, as root or through sudo. Where that is not possible it lists
# them, with what they are for, and stops.
need_packages() {
    local missing=() package look=is_installed
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || look=is_present
    for package in $(printf '%s\n' "$@" | sort -u); do
        $look "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if [ $look = is_present ]; then
        say "this is no Debian system, and these are missing (by their names there):"
        describe_packages "${missing[@]}"
        exit 1
    fi
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && command -v sudo >/dev/null; }; then
            say "these packages are missing, and only root may install them:"
            describe_packages "${missing[@]}"
            say "as root: apt-get install --no-install-recommends ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    local log apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o Acquire::Retries=3)
    log=$(mktemp)
    # Nothing that somebody uses may go for it.
    if ! { "${apt[@]}" update && "${apt[@]}" install -y --no-remove --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        say "the packages could not be installed"
        exit 1
    fi
    rm -f "$log"
}

# sound_packages: a sound server of our own, but not where it would push out the one that a desktop comes with.
sound_packages() {
    if is_installed pipewire-audio; then
        echo pulseaudio-utils
    else
        echo "$packages_sound"
    fi
}
