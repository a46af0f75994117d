#!/usr/bin/env python3
"""Holds the documents against the project: what they link to, name and tell people to type has to be there."""

import re
import subprocess
import sys
from pathlib import Path

# Made up in the worked examples of the documents, for the reader to make.
EXAMPLES = {"world/buoy.h", "world/buoy.cpp", "attackDamage"}

# Names of other people's that no source of ours mentions.
FOREIGN = re.compile(r"^(std::|gl[A-Z]|wgl[A-Z]|WM_|SC_|IAudio|IMM|MF[A-Z]|NtUser)")

# What follows a name, so far as it is plain words, options and what is quoted.
ARGUMENTS = r"""((?: +(?:[\w./:{}*=,+-]+|'[^']*'))*)$"""
SCRIPT_WITH_OPTIONS = re.compile(r"^(\./[\w-]+|(?:tools|workshop)/[\w/-]*[\w-])" + ARGUMENTS)
PROGRAM_WITH_OPTIONS = re.compile(r"^(?:build/native/bin/)?(dunkman-[a-z]+)" + ARGUMENTS)


class Project:
    def __init__(self, files, text_of):
        self.files = set(files)
        self.folders = {str(parent) for file in files for parent in Path(file).parents if str(parent) != "."}
        self.roots = {folder for folder in self.folders if "/" not in folder}
        self.text_of = text_of
        self.words = set()
        for file in files:
            if not re.search(r"\.(md|dds|mp3|png)$|/replays/|/corpus/", file):
                self.words.update(re.findall(r"[A-Za-z_]\w*", text_of(file)))

    def has(self, path):
        # A stem in capitals stands for a name.
        path = re.sub(r"/[A-Z]{2,}(?=\.[a-z])", "/*", path.rstrip("/"))
        if "*" in path:
            return any(Path(file).match(path) for file in self.files)
        return path in self.files or path in self.folders


def anchors(text):
    for heading in re.findall(r"^#+ (.*)$", text, re.MULTILINE):
        yield re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def link_faults(project, document, text):
    for target in re.findall(r"\]\(([^)\s]+)\)", text):
        if re.match(r"https?:", target):
            continue
        path, _, anchor = target.partition("#")
        parts = []
        for part in [*Path(document).parent.parts, *Path(path).parts]:
            if part == "..":
                parts.pop()
            else:
                parts.append(part)
        file = "/".join(parts) if path else document
        if not project.has(file):
            yield f"links to {target}, which is not there"
        elif anchor and file.endswith(".md") and anchor not in anchors(project.text_of(file)):
            yield f"links to {target}, which has no such heading"


def spoken(text):
    """What is set as code: spans, and the lines of blocks of commands."""
    blocks = re.findall(r"^```(\w*)\n(.*?)^```", text, re.MULTILINE | re.DOTALL)
    outside = re.sub(r"^```.*?^```", "", text, flags=re.MULTILINE | re.DOTALL)
    yield from re.findall(r"`([^`\n]+)`", outside)
    for language, block in blocks:
        if language in ("", "sh", "bash"):
            for line in block.splitlines():
                yield re.split(r"\s{2,}|  #", line.strip())[0]


def program_faults(project, match):
    """The options of a developer program stand in a source that names it."""
    sources = [project.text_of(file) for file in project.files if re.match(r"(tools|workshop)/.*\.cpp$", file)]
    usage = "".join(text for text in sources if match[1] in text)
    for option in re.findall(r"--[\w-]+", match[2]):
        if usage and option not in usage:
            yield f"gives {match[1]} the option {option}, which it does not know"


def command_faults(project, code):
    code = re.sub(r"^([A-Z_]+=\S+ )+", "", code)
    if program := PROGRAM_WITH_OPTIONS.match(code):
        yield from program_faults(project, program)
    match = SCRIPT_WITH_OPTIONS.match(code)
    if not match:
        return
    script = match[1].removeprefix("./")
    if not project.has(script):
        yield f"names the command {match[1]}, which is not there"
        return
    if script not in project.files:
        return
    for option in re.findall(r"--[\w-]+", match[2]):
        if option not in project.text_of(script):
            yield f"gives {match[1]} the option {option}, which it does not know"


def code_faults(project, code):
    yield from command_faults(project, code)
    if preset := re.search(r"cmake (?:--build )?--preset (\S+)", code):
        if f'"{preset[1]}"' not in project.text_of("CMakePresets.json"):
            yield f"names the preset {preset[1]}, which is not there"
    for path in re.findall(r"^[\w.-]+/[\w./*-]*$", code):
        if path.split("/")[0] in project.roots and path not in EXAMPLES and not project.has(path):
            yield f"names {path}, which is not there"
    if re.fullmatch(r"(\w+::)*[a-z]\w*[a-z][A-Z]\w*(\(\))?|[A-Z][a-z]+[A-Z]\w*", code) and not FOREIGN.match(code):
        name = re.findall(r"\w+", code)[-1]
        if name not in EXAMPLES and name not in project.words:
            yield f"names {code}, which no source does"
    for program in re.findall(r"^(dunkman-[a-z]+|[a-z0-9]+_(?:test|bench|fuzz))(?:\.exe)?\b", code):
        if program not in project.words and program.split("-")[-1] not in project.words:
            yield f"names the program {program}, which is not built"


def find_faults(project):
    for document in sorted(file for file in project.files if file.endswith(".md")):
        text = project.text_of(document)
        yield from (f"{document}: {fault}" for fault in link_faults(project, document, text))
        for code in dict.fromkeys(spoken(text)):
            yield from (f"{document}: {fault}" for fault in code_faults(project, code))


def this_project():
    command = ["git", "ls-files", "--cached", "--others", "--exclude-standard"]
    listing = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    files = [file for file in listing.splitlines() if Path(file).is_file()]
    return Project(files, lambda file: Path(file).read_text(encoding="utf-8", errors="replace"))


def main():
    project = this_project()
    faults = list(find_faults(project))
    print("\n".join(faults) if faults else "every document holds")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
