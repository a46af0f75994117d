"""The rules of the sources, each broken on purpose in a copy of the project: what breaks one is named, and nothing
else is."""

import os
import shutil
import tempfile
import unittest
from pathlib import Path

import check_scripts
import check_sources
import linked_functions
from floors import FLOORS, FOLDERS, LEVEL, folder_of, include_faults, link_faults

ROOT = Path(__file__).resolve().parents[2]


def faults():
    return check_sources.find_faults(sorted(check_sources.source_files()))


def headers_of(folder):
    return sorted(path.as_posix() for path in Path(folder).rglob("*.h"))


def forbidden_to(folder):
    """The folders above, and those on the same floor."""
    return [target for target in FOLDERS if target != folder and LEVEL[target] >= LEVEL[folder]]


class CopyOfTheProject(unittest.TestCase):
    """Runs in a copy of the headers, sources and lists of CMake."""

    @classmethod
    def setUpClass(cls):
        cls.start = os.getcwd()
        cls.folder = tempfile.TemporaryDirectory()
        for folder in FOLDERS:
            for path in (ROOT / folder).rglob("*"):
                if path.suffix in (".h", ".cpp", ".cmake") or path.name == "CMakeLists.txt":
                    copy = Path(cls.folder.name) / path.relative_to(ROOT)
                    copy.parent.mkdir(parents=True, exist_ok=True)
                    shutil.copyfile(path, copy)
        os.chdir(cls.folder.name)

    @classmethod
    def tearDownClass(cls):
        os.chdir(cls.start)
        cls.folder.cleanup()

    def faults_with(self, path, text):
        """What is found while `path` holds `text`; afterwards it is as before."""
        path = Path(path)
        before = path.read_text(encoding="utf-8") if path.exists() else None
        path.write_text(text, encoding="utf-8")
        try:
            return faults()
        finally:
            if before is None:
                path.unlink()
            else:
                path.write_text(before, encoding="utf-8")

    def assert_only_fault(self, found, *words):
        self.assertEqual(len(found), 1, found)
        for word in words:
            self.assertIn(word, found[0])

    def test_the_project_as_it_is_has_no_fault(self):
        self.assertEqual(faults(), [])

    def test_an_include_of_a_folder_above_or_beside_is_caught_in_each_folder(self):
        wrong = {}
        for folder in FOLDERS:
            headers = [headers_of(target)[0] for target in forbidden_to(folder) if headers_of(target)]
            wrong[f"{folder}/wrong.cpp"] = headers
            Path(folder, "wrong.cpp").write_text("".join(f'#include "{header}"\n' for header in headers))
        found = faults()
        for path in wrong:
            Path(path).unlink()
        for path, headers in wrong.items():
            for header in headers:
                with self.subTest(path=path, header=header):
                    self.assertIn(f"{path}: {folder_of(path)}/ stands below {header} and may not include it", found)
        self.assertEqual(len(found), sum(map(len, wrong.values())))

    def test_a_link_to_a_folder_above_or_beside_is_caught_in_each_folder(self):
        kinds = ("dunkman_library(wrong_{n} SOURCES wrong.cpp LINKS {target})\n",
                 "dunkman_program(wrong_{n} SOURCES wrong.cpp LINKS base {target})\n",
                 "add_library(wrong_{n} STATIC wrong.cpp)\ntarget_link_libraries(wrong_{n} PUBLIC {target})\n")
        for folder in FOLDERS:
            lines = [f"dunkman_library(target_in_{folder} SOURCES target.cpp)\n"]
            for target in forbidden_to(folder):
                lines += [kind.format(n=n, target=f"target_in_{target}") for n, kind in enumerate(kinds)]
            Path(folder, "wrong.cmake").write_text("".join(lines))
        found = faults()
        for folder in FOLDERS:
            Path(folder, "wrong.cmake").unlink()
        for folder in FOLDERS:
            for target in forbidden_to(folder):
                for n in range(len(kinds)):
                    with self.subTest(folder=folder, target=target, kind=kinds[n]):
                        self.assertIn(f"{folder}/wrong.cmake: wrong_{n} of {folder}/ stands below target_in_{target} "
                                      f"of {target}/ and may not link it", found)
        self.assertEqual(len(found), len(kinds) * sum(len(forbidden_to(folder)) for folder in FOLDERS))

    def test_an_include_that_names_no_folder_is_caught(self):
        found = self.faults_with("world/wrong.cpp", '#include "zombie.h"\n')
        self.assert_only_fault(found, "world/wrong.cpp", "does not begin with a folder")

    def test_two_headers_that_include_each_other_are_caught(self):
        Path("base/one.h").write_text('#pragma once\n#include "base/other.h"\n')
        found = self.faults_with("base/other.h", '#pragma once\n#include "base/one.h"\n')
        Path("base/one.h").unlink()
        self.assert_only_fault(found, "circle", "base/one.h", "base/other.h")

    def test_a_header_begins_with_pragma_once(self):
        self.assert_only_fault(self.faults_with("base/wrong.h", "int wrong();\n"), "base/wrong.h", "#pragma once")

    def test_a_source_includes_its_own_header_first(self):
        fault = ["render/view.cpp: includes something before its own header render/view.h"]
        self.assertEqual(self.faults_with("render/view.cpp", '#include <cmath>\n#include "render/view.h"\n'), fault)
        self.assertEqual(self.faults_with("render/view.cpp", '#include "render/view.h"\n#include <cmath>\n'), [])

    def test_a_header_for_writers_begins_with_the_one_for_readers(self):
        fault = ["app/recording_writer.h: includes something before its own header app/recording.h"]
        text = '#pragma once\n#include <vector>\n#include "app/recording.h"\n'
        self.assertEqual(self.faults_with("app/recording_writer.h", text), fault)

    def test_a_tab_is_caught(self):
        self.assert_only_fault(self.faults_with("base/wrong.cpp", "\tint wrong;\n"), "base/wrong.cpp", "tabs")

    def test_a_carriage_return_is_caught(self):
        self.assert_only_fault(self.faults_with("base/wrong.cpp", "int wrong;\r\n"), "base/wrong.cpp", "returns")

    def test_a_file_that_is_too_long_is_caught(self):
        longest = check_sources.LONGEST_FILE
        self.assertEqual(self.faults_with("base/long.cpp", "\n" * longest), [])
        self.assert_only_fault(self.faults_with("base/long.cpp", "\n" * (longest + 1)), "base/long.cpp", "lines")

    def test_a_header_of_windows_stays_in_files_for_windows(self):
        for header in ("windows.h", "mmdeviceapi.h", "GL/gl.h", "sys/stat.h"):
            text = f"#include <{header}>\n"
            with self.subTest(header=header):
                self.assert_only_fault(self.faults_with("audio/wrong.cpp", text), "audio/wrong.cpp", header)
                self.assertEqual(self.faults_with("audio/right_win32.cpp", text), [])

    def test_the_core_has_no_ifdef_for_a_platform(self):
        text = "#ifdef _WIN32\n#endif\n"
        self.assert_only_fault(self.faults_with("render/wrong.cpp", text), "render/wrong.cpp", "#ifdef")
        self.assertEqual(self.faults_with("tools/right.cpp", text), [])


class Floors(unittest.TestCase):
    def test_each_folder_of_sources_stands_on_one_floor(self):
        self.assertEqual(len(FOLDERS), len(set(FOLDERS)))
        with_sources = {folder_of(path.relative_to(ROOT).as_posix()) for path in ROOT.glob("*/**/*.cpp")
                        if not path.relative_to(ROOT).parts[0] in ("build", "data", "docs")}
        self.assertEqual(with_sources, set(FOLDERS))

    def test_an_include_that_goes_down_or_stays_is_allowed(self):
        for folder in FOLDERS:
            for target in [folder] + [below for floor in FLOORS[:LEVEL[folder]] for below in floor]:
                self.assertEqual(list(include_faults(f"{folder}/right.cpp", f'#include "{target}/some.h"\n')), [])

    def test_a_link_that_goes_down_is_allowed(self):
        lists = {"base/CMakeLists.txt": "dunkman_library(base SOURCES base.cpp)",
                 "world/CMakeLists.txt": "dunkman_library(world SOURCES world.cpp LINKS base)"}
        self.assertEqual(list(link_faults(lists)), [])

    def test_a_library_of_others_may_be_linked_anywhere(self):
        self.assertEqual(list(link_faults({"base/CMakeLists.txt": "dunkman_library(base SOURCES a.cpp LINKS m)"})), [])

    def test_a_comment_links_nothing(self):
        lists = {"base/CMakeLists.txt": "dunkman_library(base SOURCES base.cpp) # LINKS world\n",
                 "world/CMakeLists.txt": "dunkman_library(world SOURCES world.cpp)"}
        self.assertEqual(list(link_faults(lists)), [])


class LinkedFunctions(unittest.TestCase):
    """What an object file of the game may ask the linker for."""

    def test_functions_that_differ_between_libraries_are_caught(self):
        for symbol in ("sin", "cosf", "pow", "exp", "atan2", "rand", "strtod", "qsort"):
            self.assertIsNotNone(linked_functions.fault("libworld.a:zombie.cpp", symbol), symbol)

    def test_clocks_and_chance_are_caught(self):
        for symbol in ("time", "clock_gettime", "std::chrono::_V2::system_clock::now()", "getenv",
                       "std::random_device::_M_getval()", "dunkman::platform::clockNanoseconds()"):
            self.assertIsNotNone(linked_functions.fault("libworld.a:zombie.cpp", symbol), symbol)

    def test_files_are_opened_by_the_loaders_only(self):
        for symbol in ("std::basic_filebuf<char, std::char_traits<char> >::close()", "fopen",
                       "dunkman::File::toRead(std::string const&)", "dunkman::removeFile(std::string const&)",
                       "dunkman::parseFile(std::string const&)"):
            self.assertIsNotNone(linked_functions.fault("libworld.a:zombie.cpp", symbol), symbol)
            self.assertIsNotNone(linked_functions.fault("libscreens.a:game_screen.cpp", symbol), symbol)
        self.assertIsNone(linked_functions.fault("libworld.a:scene_loader.cpp",
                                                 "dunkman::parseFile(std::string const&)"))

    def test_what_has_one_result_everywhere_is_free(self):
        for symbol in ("memcpy", "fmod", "dunkman::exactSin(double)", "std::__throw_length_error(char const*)",
                       "operator new(unsigned long)", "__stack_chk_fail"):
            self.assertIsNone(linked_functions.fault("libworld.a:zombie.cpp", symbol), symbol)


class Scripts(unittest.TestCase):
    def setUp(self):
        self.start = os.getcwd()
        os.chdir(ROOT)

    def tearDown(self):
        os.chdir(self.start)

    def test_those_without_a_suffix_are_found(self):
        self.assertLessEqual({"play", "test", "make-assets", ".ci/run", "tools/run-wine", "tools/shell/packages.sh"},
                             set(check_scripts.scripts("shell")))
        self.assertLessEqual({"tools/tidy", "workshop/music/build", "tests/repository/floors.py"},
                             set(check_scripts.scripts("python")))


if __name__ == "__main__":
    unittest.main()
