# shellcheck shell=bash
# Sourced by commands, after report.sh: configures and builds a tree of build/.

processors=$(nproc 2>/dev/null || echo 2)

# configure PRESET [OPTION...]: quiet when all is well.
configure() {
    local preset=$1
    shift
    mkdir -p build
    cmake --preset "$preset" "$@" >"build/$preset.log" 2>&1 || build_failed "$preset"
}

# build PRESET [TARGET...]: n of m in a moving line; the end of the log when it fails. A warning stops nobody, but is told.
build() {
    local preset=$1 targets=()
    shift
    [ $# -gt 0 ] && targets=(--target "$@")
    NINJA_STATUS='[%f/%t] ' cmake --build --preset "$preset" --parallel "$processors" "${targets[@]}" 2>&1 |
        follow_build "$preset" >>"build/$preset.log"
    [ "${PIPESTATUS[0]}" -eq 0 ] || build_failed "$preset"
    end_progress
    local warnings
    warnings=$(grep -c 'warning:' "build/$preset.log")
    [ "$warnings" -eq 0 ] || say "the compiler has $warnings warnings, in build/$preset.log"
}

# Passes the build's output on, and shows how far it is.
follow_build() {
    local line
    while IFS= read -r line; do
        printf '%s\n' "$line"
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] && progress "building $1, ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}"
    done
}

build_failed() {
    end_progress
    grep -a -A 12 -m 5 -E 'error:|FAILED:|CMake Error' "build/$1.log" >&2 || tail -n 60 "build/$1.log" >&2
    say "building $1 failed; the whole log is build/$1.log"
    exit 1
}
