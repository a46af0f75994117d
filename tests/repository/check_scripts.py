#!/usr/bin/env python3
"""Lints the scripts, those without a suffix too: `check_scripts.py shell` or `check_scripts.py python`."""

import os
import re
import shutil
import subprocess
import sys

from floors import FOLDERS

SKIPPED = 77
LINE_WIDTH = "120"
LINTERS = {
    # -x: into the files that a script sources, as seen from the root.
    "shell": [["shellcheck", "-x", "-P", "SCRIPTDIR", "-P", "."]],
    # A line may break before or after an operator.
    "python": [["pyflakes3"], ["pycodestyle", f"--max-line-length={LINE_WIDTH}", "--ignore=W503,W504"]],
}


def kind_of(path):
    """By the first line, or for what is only sourced or imported by the suffix."""
    with open(path, "rb") as file:
        first = file.readline(200).decode(errors="replace")
    if path.endswith(".py") or re.match(r"#!.*\bpython3?\b", first):
        return "python"
    if path.endswith(".sh") or re.match(r"#!.*\b(ba)?sh\b", first):
        return "shell"
    return None


def scripts(kind):
    found = [entry.path[2:] for entry in os.scandir(".") if entry.is_file()]
    for folder in [*FOLDERS, ".ci"]:
        for place, _, names in os.walk(folder):
            found += [os.path.join(place, name) for name in names]
    return sorted(path for path in found if kind_of(path) == kind)


def main():
    kind = sys.argv[1]
    files = scripts(kind)
    missing = [command[0] for command in LINTERS[kind] if not shutil.which(command[0])]
    if missing:
        print(f"{' and '.join(missing)} not found: nothing was looked at")
        return SKIPPED
    faults = [subprocess.run([*command, *files]).returncode for command in LINTERS[kind]]
    print(f"{len(files)} {kind} scripts")
    return 1 if any(faults) else 0


if __name__ == "__main__":
    sys.exit(main())
