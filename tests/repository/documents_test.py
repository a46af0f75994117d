"""What no longer holds in a document is found."""

import unittest

from check_documents import Project, find_faults

FILES = {
    "play": "case $1 in --size) ;;",
    "docs/other.md": "# Of sand and sea\n",
    "world/beach.h": "constexpr double beachHalfDepth = 3.0;",
    "world/zombie.cpp": "",
    "tools/look/beach": "the option --at",
    "tools/headless/usage.cpp": 'const char* usage = "usage: dunkman-headless [--seed N]"',
    "CMakePresets.json": '"name": "native"',
    "world/CMakeLists.txt": "dunkman_program(dunkman-headless)",
}


def faults(document):
    files = {**FILES, "docs/page.md": document}
    return list(find_faults(Project(files, files.get)))


class Documents(unittest.TestCase):
    def assert_sound(self, document):
        self.assertEqual(faults(document), [])

    def assert_fault(self, document, words):
        found = faults(document)
        self.assertEqual(len(found), 1, found)
        self.assertIn(words, found[0])

    def test_links_lead_somewhere(self):
        self.assert_sound("[other](other.md) [code](../world/beach.h) [web](https://example.org)")
        self.assert_fault("[gone](gone.md)", "gone.md")

    def test_links_to_headings_lead_to_one(self):
        self.assert_sound("[sea](other.md#of-sand-and-sea)")
        self.assert_fault("[sky](other.md#of-sky)", "no such heading")

    def test_files_that_are_named_are_there(self):
        self.assert_sound("`world/beach.h` and `world/` and `world/*.cpp` and `build/anything`")
        self.assert_fault("`world/sea.h`", "world/sea.h")

    def test_a_stem_in_capitals_stands_for_a_name(self):
        self.assert_sound("`world/NAME.cpp`")
        self.assert_fault("`world/NAME.inc`", "world/NAME.inc")

    def test_names_of_the_code_are_in_the_code(self):
        self.assert_sound("`beachHalfDepth`")
        self.assert_fault("`beachWholeDepth`", "beachWholeDepth")

    def test_commands_are_there_and_know_their_options(self):
        self.assert_sound("`./play --size 640x360`\n```\n./play     plays\n```\n")
        self.assert_fault("`./sleep`", "./sleep")
        self.assert_fault("`./play --loud`", "--loud")
        self.assert_fault("```\n./play --loud   plays it loudly\n```\n", "--loud")

    def test_scripts_of_any_folder_know_their_options(self):
        self.assert_sound("`tools/look/beach --at=-8,0 -o build/beach.png`")
        self.assert_fault("`tools/look/beach --from=-8,0`", "--from")
        self.assert_fault("`tools/look/sea --at=-8,0`", "tools/look/sea")

    def test_developer_programs_know_their_options(self):
        self.assert_sound("```\nbuild/native/bin/dunkman-headless --seed 1\n```\n")
        self.assert_fault("`build/native/bin/dunkman-headless --sead 1`", "--sead")
        self.assert_fault("`NAME=value dunkman-headless --sead 1`", "--sead")

    def test_presets_and_programs_are_there(self):
        self.assert_sound("`cmake --preset native`, `dunkman-headless --seed 1`")
        self.assert_fault("`cmake --preset foreign`", "foreign")
        self.assert_fault("`dunkman-dancer`", "dunkman-dancer")


if __name__ == "__main__":
    unittest.main()
