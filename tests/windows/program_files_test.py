#!/usr/bin/env python3
"""Holds the Windows programs, as the zip for players has them, against docs/windows.md: what they import, what they
export, what they say of themselves.

    program_files_test.py ZIP VERSION OBJDUMP DOCUMENT
"""

import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
import zipfile

from pe_resources import MANIFEST, icon_pictures, resources, version_words

ZIP, VERSION, OBJDUMP, DOCUMENT = (sys.argv.pop(1) for _ in range(4))
PROGRAMS = ("dunkman.exe", "dunkman-live.exe", "dunkman-record.exe")
RUNTIME = ("kernel32.dll", "msvcrt.dll", "ucrtbase.dll")  # the compiler's own library calls most of what stands here
RUNTIME_SET = re.compile(r"api-ms-win-crt-[\w-]+\.dll")


def is_runtime(library):
    return library in RUNTIME or RUNTIME_SET.fullmatch(library) is not None


class ProgramFile:
    def __init__(self, path):
        headers = subprocess.run([OBJDUMP, "-p", path], capture_output=True, text=True, check=True).stdout
        imports, _, exports = headers.partition("The Export Tables")
        self.imports = {}
        for block in imports.split("DLL Name: ")[1:]:
            library = block.split()[0].lower()
            # Its address, then its hint; newer tools put "<none>" between the two, as it has no ordinal.
            names = re.findall(r"^\s+[0-9a-f]+\s+(?:<none>\s+)?[0-9a-f]+\s+(\w+)\s*$", block, re.M)
            assert names, f"{OBJDUMP} lists nothing of {library} in a way that is understood here"
            self.imports[library] = set(names)
        number = r"\[\s*\d+\]"
        self.exports = set(re.findall(
            rf"^\s+{number}\s+(?:\+base{number}\s+[0-9a-f]+\s+)?([A-Za-z]\w+)\s*$", exports, re.M))
        self.stack = int(re.search(r"SizeOfStackReserve\s+([0-9a-f]+)", headers).group(1), 16)
        with open(path, "rb") as file:
            self.bytes = file.read()
        self.resources = resources(self.bytes)
        self.name = os.path.basename(path)
        self.headers = headers


def documented():
    """The functions that the document names, by library: `### user32.dll`, then rows that begin with names."""
    with open(DOCUMENT, encoding="utf-8") as file:
        text = file.read()
    libraries = {}
    for library, section in re.findall(r"^### ([\w.-]+\.dll)[^\n]*\n(.*?)(?=^##|\Z)", text, re.M | re.S):
        rows = re.findall(r"^\| ([^|]*) \|", section, re.M)
        libraries[library.lower()] = {name for row in rows for name in re.findall(r"`(\w+)`", row)}
    return libraries


class ProgramFiles(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder, zipfile.ZipFile(ZIP) as package:
            paths = [package.extract(name, folder) for name in package.namelist() if name.endswith(".exe")]
            cls.programs = {os.path.basename(path): ProgramFile(path) for path in paths}
        assert sorted(cls.programs) == sorted(PROGRAMS), cls.programs

    def each(self):
        for name, program in self.programs.items():
            with self.subTest(name):
                yield program

    def test_every_function_of_windows_that_is_imported_is_in_the_document(self):
        known = documented()
        for program in self.each():
            for library, functions in program.imports.items():
                if not is_runtime(library):
                    self.assertEqual(sorted(functions - known.get(library, set())), [], library)

    def test_the_document_lists_no_import_that_is_gone(self):
        for program in self.each():
            for library, functions in documented().items():
                if not is_runtime(library):
                    self.assertEqual(sorted(functions - program.imports.get(library, set())), [], library)

    def test_what_the_document_names_of_the_kernel_is_imported(self):
        for program in self.each():
            self.assertEqual(sorted(documented()["kernel32.dll"] - program.imports["kernel32.dll"]), [])

    def test_libraries_that_an_edition_of_windows_lacks_are_not_imported(self):
        for program in self.each():
            self.assertNotIn("mfplat.dll", program.imports)
            self.assertNotIn("mfreadwrite.dll", program.imports)

    def test_no_library_is_imported_that_a_player_would_have_to_install(self):
        own = {"avrt.dll", "gdi32.dll", "imm32.dll", "ole32.dll", "opengl32.dll", "user32.dll"}
        for program in self.each():
            self.assertEqual({library for library in program.imports if not is_runtime(library)}, own)

    def test_the_two_words_for_the_stronger_graphics_chip_are_exported_and_nothing_else(self):
        for program in self.each():
            self.assertEqual(program.exports, {"NvOptimusEnablement", "AmdPowerXpressRequestHighPerformance"})

    def test_the_manifest_is_inside(self):
        settings = "{http://schemas.microsoft.com/SMI/%s/WindowsSettings}%s"
        windows_10_and_11 = "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"
        for program in self.each():
            manifest = xml.etree.ElementTree.fromstring(program.resources[MANIFEST, 1])
            said = {element.tag: element.text for element in manifest.iter()}
            self.assertEqual(said[settings % (2016, "dpiAwareness")], "PerMonitorV2, PerMonitor")
            self.assertEqual(said[settings % (2016, "longPathAware")], "true")
            self.assertEqual(said[settings % (2019, "activeCodePage")], "UTF-8")
            systems = [element.get("Id") for element in manifest.iter() if element.tag.endswith("supportedOS")]
            self.assertEqual(systems, [windows_10_and_11])
            identity = manifest.find("{urn:schemas-microsoft-com:asm.v1}assemblyIdentity")
            self.assertEqual(identity.get("version"), VERSION + ".0")

    def test_the_version_is_that_of_the_project(self):
        for program in self.each():
            texts, numbers = version_words(program.resources)
            self.assertEqual(numbers, tuple(int(number) for number in VERSION.split(".")) + (0,))
            self.assertEqual((texts["FileVersion"], texts["ProductVersion"]), (VERSION, VERSION))
            self.assertEqual((texts["ProductName"], texts["OriginalFilename"]), ("Dunkman", program.name))

    def test_each_says_what_it_is(self):
        told = {version_words(program.resources)[0]["FileDescription"] for program in self.programs.values()}
        self.assertEqual(len(told), len(PROGRAMS), told)

    def test_the_icon_has_all_usual_sizes(self):
        for program in self.each():
            pictures = icon_pictures(program.resources)
            self.assertEqual(sorted(pictures), [16, 20, 24, 32, 40, 48, 64, 256])
            for size, picture in pictures.items():
                if picture.startswith(b"\x89PNG"):
                    self.assertEqual(struct.unpack_from(">II", picture, 16), (size, size))
                else:  # a bitmap counts its mask
                    self.assertEqual(struct.unpack_from("<II", picture, 4), (size, 2 * size))

    def test_names_of_functions_and_the_time_of_the_build_are_left_out(self):
        for program in self.each():
            self.assertRegex(program.headers, r"Time/Date\s+Thu Jan  1 00:00:00 1970")
            header, = struct.unpack_from("<I", program.bytes, 0x3C)
            self.assertEqual(struct.unpack_from("<II", program.bytes, header + 12), (0, 0), "the table of symbols")

    def test_the_stack_has_two_megabytes(self):
        for program in self.each():
            self.assertEqual(program.stack, 2 * 1024 * 1024)


if __name__ == "__main__":
    unittest.main(verbosity=2)
