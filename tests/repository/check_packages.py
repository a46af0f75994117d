#!/usr/bin/env python3
"""Every package that a command asks for has its line in the table of tools/shell/packages.sh, with what it is for: that
table is what people read whose system cannot install it by itself."""

import glob
import os
import re
import sys

from floors import FOLDERS

TABLE = "tools/shell/packages.sh"
NAME = re.compile(r"[a-z0-9][a-z0-9+.-]+")


def described(text):
    """Names with all three columns."""
    lines = re.search(r'^package_table="\n(.*?)^"', text, re.M | re.S).group(1).splitlines()
    return {line.split()[0] for line in lines if len(line.split(maxsplit=2)) == 3}


def listed(text):
    """The words of the lists that commands put together."""
    lists = re.findall(r'^packages_\w+="([^"]*)"', text, re.M)
    return {word for words in lists for word in words.split() if NAME.fullmatch(word)}


def asked_for(script):
    """What a script names itself, beside the lists."""
    with open(script, encoding="utf-8", errors="replace") as file:
        text = file.read().replace("\\\n", " ")
    calls = re.findall(r"^\s*need_packages ([^#\n]*)", text, re.M)
    return {word for call in calls for word in call.partition("$(")[0].split() if NAME.fullmatch(word)}


def scripts():
    yield from (entry.path for entry in os.scandir(".") if entry.is_file())
    for folder in FOLDERS:
        for place, _, names in os.walk(folder):
            yield from (os.path.join(place, name) for name in names if "." not in name or name.endswith(".sh"))


def main():
    with open(TABLE, encoding="utf-8") as file:
        text = file.read()
    named = listed(text)
    for script in scripts():
        named |= asked_for(script)
    for path in glob.glob("workshop/*/*packages"):
        with open(path, encoding="utf-8") as file:
            named |= set(file.read().split())
    unknown = sorted(named - described(text))
    for name in unknown:
        print(f"{TABLE}: {name}: no line says what it is for")
    print(f"{len(named)} packages")
    return 1 if unknown or not named else 0


if __name__ == "__main__":
    sys.exit(main())
