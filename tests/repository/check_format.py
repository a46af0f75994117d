#!/usr/bin/env python3
"""Every source is as the formatter writes it. Versions of the formatter differ in taste: only one counts."""

import re
import shutil
import subprocess
import sys

from check_sources import source_files

VERSION = "14"
SKIPPED = 77


def formatter():
    for name in (f"clang-format-{VERSION}", "clang-format"):
        if shutil.which(name):
            found = subprocess.run([name, "--version"], capture_output=True, text=True).stdout
            if re.search(rf"version {VERSION}\.", found):
                return name
    return None


def main():
    program = formatter()
    if not program:
        print(f"clang-format {VERSION} is not here, and other versions have another taste: nothing was looked at")
        return SKIPPED
    files = sorted(source_files())
    result = subprocess.run([program, "--dry-run", "--Werror", *files], capture_output=True, text=True)
    if result.returncode:
        unformatted = sorted(set(re.findall(r"^(\S+?):\d+:\d+: error", result.stderr, re.M)))
        print(result.stderr if not unformatted else f"{program} -i " + " ".join(unformatted))
        return 1
    print(f"{len(files)} files, no fault")
    return 0


if __name__ == "__main__":
    sys.exit(main())
