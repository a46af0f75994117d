# shellcheck shell=bash
# Sourced by commands that run Windows programs, which have set WINEPREFIX.

# keep_wine_server: Wine's server and its services, for the next programs. The server that Debian's wine starts goes with its
# last program, and at times refuses the next one, which comes just then and ends at once, without a word. This one stays for
# a minute, longer than programs are apart. Where a server runs already, starting one does nothing; one that is about to go
# counts as none. The services are started by the first program and go with the server, long after that program; they keep
# its output open, and whoever reads that would wait for them. So the first program is one whose output nobody reads.
keep_wine_server() {
    local tries
    for ((tries = 0; tries < 50; tries++)); do
        wineserver -p60 >/dev/null 2>&1 </dev/null
        wineserver -k0 >/dev/null 2>&1 </dev/null && break # signal 0: is it there?
        sleep 0.1
    done
    wine cmd /c exit >/dev/null 2>&1 </dev/null
}
