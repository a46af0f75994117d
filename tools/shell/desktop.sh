# shellcheck shell=bash
# Sourced by commands that run Windows programs, after report.sh: a Wine prefix of the project's own, and where the machine
# has none, a virtual display and a null sound device. Everything started here is ended by end_desktop, and nothing else.

# shellcheck source=tools/shell/wine.sh
. "$(dirname "${BASH_SOURCE[0]}")/wine.sh"

desktop_processes=()
desktop_folder=

# start_wine PREFIX: makes the prefix when it is new. Must come after start_display.
start_wine() {
    export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
    # Wine answers nothing for 15 to 25 ms whenever it saves its registry, first about half a minute after a program began.
    # With this its sound device keeps 60 ms instead of 30.
    export PULSE_LATENCY_MSEC=${PULSE_LATENCY_MSEC:-120}
    # No Mono, no Gecko, no menu entries: nothing may ask or fetch.
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        say "making a Wine prefix in ${WINEPREFIX#"$PWD"/}"
        mkdir -p "$WINEPREFIX"
        wine wineboot --init >/dev/null 2>&1 </dev/null
        wineserver -w
    fi
    keep_wine_server
}

# start_display: a virtual display of 1920 by 1080.
start_display() {
    local number_file=$desktop_folder/display
    # A number that no display of this machine listens at, those outside of a chroot included: programs would find them.
    local number=$((100 + RANDOM % 900))
    while grep -q "X11-unix/X$number$" /proc/net/unix; do
        number=$((number + 1))
    done
    Xvfb ":$number" -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp +extension GLX 3>"$number_file" >/dev/null 2>&1 &
    desktop_processes+=($!)
    local tries
    for ((tries = 0; tries < 100; tries++)); do
        [ -s "$number_file" ] && break
        sleep 0.1
    done
    [ -s "$number_file" ] || { say "the virtual display did not start"; exit 1; }
    DISPLAY=:$(tr -d '\n' <"$number_file")
    export DISPLAY
    # Software rendering, whatever the machine has: the display is not on any graphics card.
    export LIBGL_ALWAYS_SOFTWARE=1
}

# resize_window PROGRAM.exe WIDTHxHEIGHT: gives the window of the program of that path, when it is up, that size. It is
# asked for from the Windows side: from the X server's, Wine 10 takes it for a window that fills the screen no more.
resize_window() {
    wine "$(dirname "$1")/resize-window.exe" "$(basename "$1")" "$2" >/dev/null 2>&1 </dev/null
}

# press_key PROGRAM.exe KEY: presses a key, by its name for X, in the window of the program.
press_key() {
    local window
    window=$(xdotool search --onlyvisible --class "$1" 2>/dev/null | head -n 1)
    [ -z "$window" ] || xdotool windowfocus "$window" keydown "$2" sleep 0.3 keyup "$2" >/dev/null 2>&1
}

# start_sound: a PulseAudio server of our own with a null sink as the default device.
start_sound() {
    command -v pulseaudio >/dev/null || { say "no sound server of our own here: the machine's is used"; return; }
    local runtime=$desktop_folder/pulse
    mkdir -p "$runtime"
    env -u PULSE_SERVER XDG_RUNTIME_DIR="$runtime" PULSE_RUNTIME_PATH="$runtime" HOME="$runtime" \
        pulseaudio -n --daemonize=no --use-pid-file=no --exit-idle-time=-1 --disallow-exit --log-level=error \
        -L "module-native-protocol-unix auth-anonymous=1 socket=$runtime/socket" \
        -L "module-null-sink sink_name=null rate=48000 channels=2" >/dev/null 2>&1 &
    desktop_processes+=($!)
    export PULSE_SERVER=unix:$runtime/socket
    local tries
    for ((tries = 0; tries < 50; tries++)); do
        if pactl info >/dev/null 2>&1; then
            # All its threads before those that draw; it does so itself for the device's thread only.
            chrt --rr --all-tasks --pid 5 "${desktop_processes[-1]}" >/dev/null 2>&1
            return
        fi
        sleep 0.1
    done
    say "the sound server did not start; going on without sound"
}

# prefer_sound PROGRAM.exe: lets the threads that carry its sound run before those that draw, as Windows does for a
# thread that registers as "Pro Audio" and Wine does not. Does nothing where real-time scheduling is not allowed.
prefer_sound() {
    local program=${1:0:15} process task name
    for process in /proc/[0-9]*; do
        name=$(cat "$process/comm" 2>/dev/null)
        [ "$name" = "$program" ] || [ "$name" = wineserver64 ] || [ "$name" = wineserver ] || continue
        grep -qzFx "WINEPREFIX=$WINEPREFIX" "$process/environ" 2>/dev/null || continue
        for task in "$process"/task/*; do
            # The game's main thread and those that draw for it stay as they are. Its events pass through wineserver.
            case $(cat "$task/comm" 2>/dev/null) in
                winepulse_* | wineserver*) ;;
                "$program") [ "${task##*/}" != "${process##*/}" ] || continue ;;
                *) continue ;;
            esac
            chrt --rr --pid 4 "${task##*/}" >/dev/null 2>&1
        done
    done
}

begin_desktop() { desktop_folder=$(mktemp -d); }

end_desktop() {
    [ -n "${WINEPREFIX:-}" ] && wineserver -k >/dev/null 2>&1
    local process
    for process in "${desktop_processes[@]}"; do
        kill "$process" 2>/dev/null
    done
    desktop_processes=()
    [ -n "$desktop_folder" ] && rm -rf "$desktop_folder"
    desktop_folder=
}
