# shellcheck shell=bash
# Sourced by commands: what they tell. Somebody at a terminal also sees a line that moves; it goes to the standard error.

command_name=$(basename "$0")
shopt -s checkwinsize # keeps COLUMNS

watched() { [ -t 2 ] && [ "${TERM:-dumb}" != dumb ]; }

# progress TEXT: a line that the next one takes the place of. Nothing without a terminal.
progress() {
    watched || return 0
    local text=$command_name:\ $*
    printf '\r\e[K%s' "${text:0:$((${COLUMNS:-80} - 1))}" >&2
}

# end_progress: the moving line goes; what is printed next begins in its place.
end_progress() { ! watched || printf '\r\e[K' >&2; }

# say TEXT: a line that stays.
say() {
    end_progress
    printf '%s: %s\n' "$command_name" "$*"
}
