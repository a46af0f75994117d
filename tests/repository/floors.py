"""The floors of the house: which folder stands on which, and every include or link that goes up instead of down."""

import re
from pathlib import Path

# From the ground up. Folders on one floor do not see each other.
FLOORS = [
    ["base"],
    ["exact", "json5"],
    ["audio", "render"],
    ["platform"],
    ["assets"],
    ["world"],
    ["screens"],
    ["app"],
    ["tools"],
    ["workshop"],
    ["benchmarks", "tests"],
]
LEVEL = {folder: level for level, floor in enumerate(FLOORS) for folder in floor}
FOLDERS = [folder for floor in FLOORS for folder in floor]


def folder_of(path):
    return str(path).split("/")[0]


def goes_down(folder, target):
    return folder == target or LEVEL[target] < LEVEL[folder]


def includes(text):
    """What a source includes of the project."""
    return re.findall(r'^\s*#\s*include\s*"([^"]+)"', text, re.M)


def include_faults(path, text):
    for target in includes(text):
        if folder_of(target) not in LEVEL:
            yield f'{path}: "{target}" does not begin with a folder of the project'
        elif not goes_down(folder_of(path), folder_of(target)):
            yield f"{path}: {folder_of(path)}/ stands below {target} and may not include it"


def without_comments(text):
    return re.sub(r"#[^\n]*", "", text)


def targets_of(text):
    """The targets that a list of CMake makes, each with what it links."""
    for kind, name, body in re.findall(r"\b(?:dunkman|add)_(\w+)\s*\(\s*([\w-]+)([^()]*(?:\([^()]*\)[^()]*)*)\)",
                                       without_comments(text)):
        if kind in ("library", "program", "test", "benchmark", "fuzzer", "executable"):
            links = re.search(r"\bLINKS\b(.*?)(?:\bTIMEOUT\b|$)", body, re.S)
            yield name, re.findall(r"[\w-]+", links.group(1)) if links else []
    for name, body in re.findall(r"\btarget_link_libraries\s*\(\s*([\w-]+)([^()]*)\)", without_comments(text)):
        yield name, re.findall(r"[\w-]+", body)


def link_faults(lists):
    """`lists` maps the path of each CMake list to its text."""
    home = {}
    for path, text in lists.items():
        for name, _ in targets_of(text):
            home.setdefault(name, folder_of(path))
    for path, text in lists.items():
        folder = folder_of(path)
        for name, links in targets_of(text):
            for target in links:
                if target in home and not goes_down(folder, home[target]):
                    yield f"{path}: {name} of {folder}/ stands below {target} of {home[target]}/ and may not link it"


def cmake_lists():
    for folder in FOLDERS:
        for path in sorted([*Path(folder).rglob("CMakeLists.txt"), *Path(folder).rglob("*.cmake")]):
            yield str(path), path.read_text(encoding="utf-8")
