# shellcheck shell=bash
# Sourced by commands that run Windows programs, which have set WINEPREFIX.

# keep_wine_server: Wine's server, for the next programs. The one that Debian's wine starts goes with its last program, and
# at times refuses the next one, which comes just then and ends at once, without a word. This one stays for a minute, longer
# than programs are apart. Where a server runs already, starting one does nothing; one that is about to go counts as none.
keep_wine_server() {
    local tries
    for ((tries = 0; tries < 50; tries++)); do
        wineserver -p60 >/dev/null 2>&1 </dev/null
        wineserver -k0 >/dev/null 2>&1 </dev/null && return # signal 0: is it there?
        sleep 0.1
    done
}
