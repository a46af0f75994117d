#!/usr/bin/env python3
"""Looks at what the object files of the game ask the linker for: a step of the game must not depend on the machine.

    linked_functions.py NM LIBRARY...

No library function whose last digit differs from one C library to the next, no clock, no source of chance, no
environment; files only where the list below says so, all of them read before the loop or written after it.
"""

import re
import subprocess
import sys

# What C's library may be asked for. IEEE 754 leaves fmod, sqrt and the roundings to whole numbers one result each;
# snprintf prints hexadecimal numbers into traces and lines for the debugger, which nothing reads back.
C_FUNCTIONS = {"memcpy", "memmove", "memset", "memcmp", "memchr", "strlen", "fmod", "sqrt", "trunc", "round", "floor",
               "ceil", "snprintf"}

FILES = re.compile(r"filebuf|fstream|std::filesystem|\bf?open(at)?\b|\bfread\b|dunkman::read(Data)?File\(|"
                   r"dunkman::(File::|(statusOf|renameFile|removeFile|workingFolder|enterFolder|temporaryFolder)\()")
CHANCE_AND_TIME = re.compile(r"std::chrono|random_device|std::(mersenne|linear_congr)|std::thread|getenv")

# Object files that open files: each is asked before the loop begins, when the game screen is entered, or after the
# credits.
MAY_OPEN_FILES = {"libbase.a:file_contents.cpp", "libjson5.a:reader.cpp", "librender.a:dds.cpp",
                  "librender.a:shader_preprocessor.cpp", "libapp.a:data_folder.cpp", "libapp.a:lifecycle.cpp",
                  "libapp.a:recording.cpp", "libapp.a:unfinished_recording.cpp"}

# Asks the system for what base/files.h promises.
FILES_THEMSELVES = "libbase.a:files_posix.cpp"

# The only ones that ask the machine for its time: how many steps are due, and how long they and start-up took.
MAY_ASK_FOR_TIME = {"libapp.a:main_loop.cpp", "libapp.a:pace.cpp", "libapp.a:start_times.cpp"}

# Who reads scenes, recipes and recordings through json5.
MAY_READ_JSON_FILES = {"libjson5.a:data_file.cpp", "libworld.a:scene_loader.cpp", "libassets.a:catalog.cpp",
                       "libapp.a:recording.cpp"}
JSON_FILE_FUNCTION = re.compile(r"dunkman::(parseFile|loadDataFile)\(")

# Compilers' own, and what the sanitizers and the coverage put in.
COMPILERS = re.compile(r"^(_+(cxa|gxx|dso|dynamic_cast|stack_chk|assert_fail|GLOBAL_OFFSET|Unwind|tls|asan|ubsan|"
                       r"gcov|sanitizer|chk_fail|memcpy_chk|popcount|tsan)\w*|_Z\w+|operator (new|delete).*|"
                       r"(vtable|typeinfo|VTT|guard variable) .*|construction vtable.*)$")


def undefined_symbols(nm, library):
    """Pairs of object file and symbol, such as ("libworld.a:arena.cpp", "fmod")."""
    listing = subprocess.run([nm, "--undefined-only", "--print-file-name", "--demangle", library], check=True,
                             capture_output=True, text=True).stdout
    for line in listing.splitlines():
        place, symbol = re.fullmatch(r"(.*?):\s+[Uwv] (.*)", line).groups()
        yield place.rsplit("/", 1)[-1].removesuffix(".o").removesuffix(".obj"), symbol


def fault(place, symbol):
    if place == FILES_THEMSELVES:
        return None
    if symbol.startswith(("dunkman::platform::clock", "dunkman::platform::processAge")):
        return None if place in MAY_ASK_FOR_TIME else "asks for the time"
    if JSON_FILE_FUNCTION.match(symbol):
        return None if place in MAY_READ_JSON_FILES else "reads a data file"
    if FILES.search(symbol):
        return None if place in MAY_OPEN_FILES else "works with files"
    if CHANCE_AND_TIME.search(symbol):
        return "depends on the machine's time or chance"
    if re.match(r"[A-Za-z_]\w*$", symbol) and symbol not in C_FUNCTIONS and not COMPILERS.match(symbol):
        return "calls a function that is not in the list of those with one result everywhere"
    return None


def main():
    nm, *libraries = sys.argv[1:]
    seen = 0
    faults = []
    for library in libraries:
        for place, symbol in undefined_symbols(nm, library):
            seen += 1
            what = fault(place, symbol)
            if what:
                faults.append(f"{place}: {what}: {symbol}")
    print("\n".join(faults) if faults else f"{seen} symbols of {len(libraries)} libraries, no fault")
    return 1 if faults or seen == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
