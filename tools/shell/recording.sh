# shellcheck shell=bash
# Sourced by ./play, after report.sh, in the project's folder: recordings that a person makes and brings.

# check_recording FILE: stops when the file cannot be one, which the game would pass over in silence.
check_recording() {
    [ -f "$1" ] || { say "there is no file $1"; exit 1; }
    [ -r "$1" ] || { say "$1 may not be read"; exit 1; }
    grep -q newKeyStates "$1" || { say "$1 is no recording: it has no \"newKeyStates\" in it"; exit 1; }
}

# make_data_folder FOLDER: what data/ holds, by links, without its recording. Writing to the folder leaves data/ alone.
make_data_folder() {
    rm -rf "$1"
    mkdir -p "$1"
    local file
    for file in "$PWD"/data/*; do
        [[ ${file##*/} = recording*.json5* ]] || ln -s "$file" "$1/"
    done
}

# free_number FOLDER: the number after the highest of its recording-N.json5.
free_number() {
    local file number=0
    for file in "$1"/recording-*.json5; do
        [[ $file =~ -0*([1-9][0-9]*)\.json5$ ]] && ((BASH_REMATCH[1] > number)) && number=${BASH_REMATCH[1]}
    done
    echo $((number + 1))
}

# steps_of_game LOG: the steps that the game screen ran, as the game told them.
steps_of_game() {
    grep -a -o 'pace Game from=.*' "$1" | awk -F'[ =]' '{ steps += $6 } END { print steps + 0 }'
}

# time_of STEPS: 60 of them are a second.
time_of() {
    awk -v steps="$1" 'BEGIN {
        minutes = int(steps / 3600)
        printf "%s%.1f s (%d steps)", (minutes ? minutes " min " : ""), (steps - 3600 * minutes) / 60, steps
    }'
}

# last_screen LOG: the screen that came up last.
last_screen() { grep -a -o 'screen [A-Za-z]*' "$1" | tail -n 1 | cut -d' ' -f2; }

# keep_unfinished_recording FILE: what the game kept of one that it was left in, if anything, goes to recordings/.
keep_unfinished_recording() {
    local kept
    [ -f "$1" ] || return 0
    mkdir -p recordings
    kept=recordings/recording-$(free_number recordings).json5
    if cp "$1" "$kept"; then
        say "what was recorded until then is $kept; ./play $kept replays it"
    else
        say "what was recorded until then is $1"
    fi
}

# keep_recording FOLDER LOG: after a run in FOLDER, takes the recording that the game saved there over into data/, keeps the
# one that was there in recordings/, and tells all about it.
keep_recording() {
    local saved=$1/recording.json5 kept
    if [ ! -f "$saved" ]; then
        if grep -a -q 'fatal: ' "$2"; then
            say "nothing was saved: the game stopped with a fault"
        else
            say "nothing was saved: the game was left on the screen $(last_screen "$2"), before the credits were over"
        fi
        [ ! -f "$saved.new" ] || say "what the game could write of it is in $saved.new"
        keep_unfinished_recording "$1/recording-unfinished.json5"
        say "data/recording.json5 is as it was"
        return
    fi
    if [ -f data/recording.json5 ]; then
        mkdir -p recordings
        kept=recordings/recording-$(free_number recordings).json5
        if ! cp data/recording.json5 "$kept"; then
            say "data/recording.json5 could not be kept as $kept, so it stays; the new recording is $saved"
            return
        fi
    fi
    if ! { cp "$saved" data/recording.json5.new && mv data/recording.json5.new data/recording.json5; }; then
        say "data/recording.json5 could not be replaced; the new recording is $saved"
        return
    fi
    say "saved in data/recording.json5: a game of $(time_of "$(steps_of_game "$2")"), which ended when the hero fell"
    [ -z "${kept:-}" ] || say "the recording before it is $kept; ./play $kept replays it"
    say "./play replays the new one"
}
