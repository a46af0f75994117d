#!/usr/bin/env python3
"""Rules of the sources that no compiler checks. Prints every place that breaks one; exit status 1 if there is any."""

import os
import re
import sys

from floors import FOLDERS, cmake_lists, folder_of, include_faults, includes, link_faults
from writers import writer_faults

SYSTEM_HEADERS = re.compile(
    r'#include <(windows|windowsx|winuser|mmdeviceapi|audioclient|avrt|mf\w+|objbase|wrl\S*|GL/\S+|unistd|sys/\S+)'
    r'(\.h)?>', re.I)
PROGRAMS_AROUND = ["tools", "workshop", "benchmarks", "tests"]  # not the game itself
LONGEST_FILE = 450  # lines; a longer one has more than one subject


def source_files():
    """Headers and sources of the project's own folders."""
    for folder in FOLDERS:
        for place, _, names in os.walk(folder):
            yield from (os.path.join(place, name) for name in names if name.endswith((".h", ".cpp")))


def own_header_fault(path, text):
    """A source includes the header of its name before anything else, so that its object shows that this header compiles
    by itself: headers_alone tries only those that no source shows. A header for writers begins with the one for
    readers."""
    name, suffix = os.path.splitext(path)
    own = f"{name}.h" if suffix == ".cpp" else f"{name.removesuffix('_writer')}.h"
    if own == path or not os.path.exists(own):
        return []
    first = re.search(r'^#include ["<](.*?)[">]', text, re.M)
    if first and first.group(1) in (own, f"{name}_writer.h"):
        return []
    return [f"{path}: includes something before its own header {own}"]


def find_circle(graph):
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for target in graph.get(node, []):
            circle = visit(target)
            if circle:
                return circle
        path.pop()
        done.add(node)
        return None

    for node in graph:
        circle = visit(node)
        if circle:
            return circle
    return None


def find_faults(files):
    """Every place of these files, and of the lists of CMake beside them, that breaks a rule; one sentence each."""
    faults = []
    graph = {}
    for path in files:
        with open(path, encoding="utf-8", newline="") as file:
            text = file.read()
        graph[path] = includes(text)
        if path.endswith(".h") and not text.lstrip().startswith("#pragma once"):
            faults.append(f"{path}: a header starts with #pragma once")
        if "\t" in text or "\r" in text:
            faults.append(f"{path}: tabs or carriage returns")
        if text.count("\n") > LONGEST_FILE:
            faults.append(f"{path}: {text.count(chr(10))} lines; which second subject moved in?")
        if SYSTEM_HEADERS.search(text) and not re.search(r"_(win32|posix|sim)\.(h|cpp)$", path):
            faults.append(f"{path}: includes {SYSTEM_HEADERS.search(text).group(0)} without the suffix _win32")
        faults += own_header_fault(path, text)
        faults += include_faults(path, text)
        faults += writer_faults(path, text, graph[path])
        if folder_of(path) not in PROGRAMS_AROUND:
            if re.search(r"#\s*if(def|ndef)?\b.*\b(_WIN32|__linux__|_MSC_VER)\b", text) and "_win32" not in path:
                faults.append(f"{path}: a platform #ifdef in the core")
    faults += link_faults(dict(cmake_lists()))
    circle = find_circle(graph)
    if circle:
        faults.append("a circle of includes: " + " -> ".join(circle))
    return faults


def main():
    files = sorted(source_files())
    faults = find_faults(files)
    print("\n".join(faults) if faults else f"{len(files)} files, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
