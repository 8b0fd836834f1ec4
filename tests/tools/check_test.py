"""Every rule of tools/check, seen to fail on a small tree with one fault, and to pass without it."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).resolve().parents[2] / "tools" / "check"

CMAKE_LISTS = """
cmake_minimum_required(VERSION 3.25)
set(CMAKE_CXX_COMPILER_FORCED TRUE)
project(Small LANGUAGES CXX)
option(TADIALOGS_TESTS "" OFF)
add_library(tacore OBJECT platform/A.cpp groupfile/Merge.cpp)
if(TADIALOGS_TESTS)
    add_subdirectory(tests)
endif()
"""

LANGUAGE = """<?xml version="1.0" encoding="utf-8"?>
<TS version="2.1"><context><name></name>
%s
</context></TS>
"""


def messages(*pairs):
    return LANGUAGE % "\n".join(
        f'<message id="{key}"><translation>{text}</translation></message>' for key, text in pairs)


# A tree without a fault.
CLEAN = {
    "CMakeLists.txt": CMAKE_LISTS,
    ".clang-format": "{BasedOnStyle: Google, SortIncludes: Never}\n",
    "platform/A.h": "#pragma once\n\n#include <fmt/printf.h>\n#include <string>\n",
    "platform/A.cpp": '#include "platform/A.h"\n\nconst char* g_key = "IDS_A-ONE_1";\n',
    "groupfile/Merge.cpp": '#include "groupfile/Merge.h"\n',
    "groupfile/Merge.h": '#pragma once\n\n#include "platform/A.h"\n',
    "groupfile/Dialog.h": "#pragma once\n\n#include <QWidget>\n",
    "groupfile/Dialog.ui": "<ui><string>IDC_B-TWO</string></ui>\n",
    "terminal/Store.h": "#pragma once\n\n#include <sqlite3.h>\n",
    "tests/CMakeLists.txt": "add_executable(t T.cpp)\n",
    "tests/T.cpp": "int main() { return 0; }\n",
    "lang/en.ts": messages(("IDS_A-ONE_1", "%d of %s"), ("IDC_B-TWO", "Two")),
    "lang/zh_TW.ts": messages(("IDS_A-ONE_1", "第 %d 個，%s"), ("IDC_B-TWO", "二")),
}


class CheckTest(unittest.TestCase):

    def check(self, rule, **changes):
        """Runs one rule on the clean tree with some files changed; gives its lines."""
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {**CLEAN, **changes.get("files", {})}.items():
                path = root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text, encoding="utf-8")
            result = subprocess.run([sys.executable, CHECK, "--root", root, rule], text=True,
                                    capture_output=True, encoding="utf-8")
        lines = result.stdout.splitlines()
        self.assertEqual(result.returncode, 1 if lines else 0, result.stderr)
        return lines

    def assert_fault(self, rule, name, text, *expected):
        """One file makes the rule say exactly the expected beginnings of lines."""
        lines = self.check(rule, files={name: text})
        self.assertEqual(len(lines), len(expected), lines)
        for line, beginning in zip(lines, expected):
            self.assertTrue(line.startswith(beginning), f"{line!r} is not {beginning!r}")

    def assert_each_fault(self, includes, directive, line):
        """Each file that holds one include is told of once, at that line, and no other is."""
        lines = self.check("layers", files={
            name: directive % include for name, include in includes.items()})
        self.assertEqual([text.split(": ")[0] for text in lines],
                         [f"{name}:{line}" for name in sorted(includes)])

    def test_clean_tree_passes(self):
        for rule in ("layers", "circles", "built", "keys", "paths"):
            self.assertEqual(self.check(rule), [], rule)

    @unittest.skipUnless(shutil.which("clang-format"), "needs clang-format")
    def test_format(self):
        self.assertEqual(self.check("format"), [])
        self.assert_fault("format", "tests/T.cpp", "int main() { return 0; }\nint  x;\n",
                          "tests/T.cpp:2: is not as clang-format lays it out")

    def test_layers_upwards(self):
        includes = {
            "platform/B.h": "settings/S.h",
            "platform/C.h": "platform/ui/U.h",
            "settings/S.cpp": "groupfile/Merge.h",
            "settings/T.cpp": "platform/ui/U.h",
            "groupfile/Other.h": "dialogs/D.h",
            "dialogs/D.h": "groupfile/Merge.h",
            "dialogs/E.h": "sheet/S.h",
            "sheet/S.h": "dialogs/D.h",
            "sheet/T.h": "terminal/Store.h",
            "terminal/T.cpp": "tests/support/Memory.h",
            "terminal/U.cpp": "tour/Guide.h",
            "terminal/chart/C.h": "terminal/frame/F.h",
            "terminal/chart/D.h": "terminal/store/S.h",
            "terminal/lines/L.h": "terminal/chart/C.h",
            "terminal/plot/P.h": "terminal/lines/L.h",
            "terminal/quotes/Q.h": "terminal/store/S.h",
            "terminal/store/S.h": "terminal/quotes/Q.h",
            "terminal/studies/S.h": "terminal/plot/P.h",
            "tour/T.cpp": "tests/frame/Fixture.h"}
        self.assert_each_fault(includes, '#include "%s"\n', 1)

    def test_layers_downwards(self):
        includes = {
            "platform/ui/U.h": "platform/A.h",
            "settings/S.cpp": "platform/A.h",
            "dialogs/D.h": "platform/ui/U.h",
            "dialogs/D.cpp": "ui_D.h",
            "sheet/S.h": "groupfile/Merge.h",
            "terminal/T.cpp": "sheet/S.h",
            "terminal/chart/C.h": "terminal/lines/L.h",
            "terminal/frame/F.h": "terminal/chart/C.h",
            "terminal/frame/G.h": "terminal/store/S.h",
            "terminal/lines/L.h": "terminal/plot/P.h",
            "terminal/plot/P.h": "terminal/studies/S.h",
            "terminal/store/S.h": "terminal/lang/L.h",
            "tour/T.cpp": "terminal/frame/F.h",
            "tour/U.cpp": "tests/support/Driver.h"}
        files = {name: f'#include "{include}"\n' for name, include in includes.items()}
        self.assertEqual(self.check("layers", files=files), [])

    def test_layers_libraries(self):
        includes = {
            "platform/B.h": "QString",
            "settings/S.h": "QtCore/QString",
            "settings/T.h": "qglobal.h",
            "settings/U.h": "unistd.h",
            "dialogs/D.cpp": "sqlite3.h",
            "sheet/S.cpp": "qcustomplot.h",
            "groupfile/Merge.cpp": "QFile"}
        self.assert_each_fault(includes, "\n#  include <%s>\n", 2)

    def test_layers_core_through_a_header(self):
        self.assert_fault("layers", "groupfile/Merge.h", '#include "groupfile/Dialog.h"\n',
                          "groupfile/Dialog.h:3: the core may not include <QWidget>")

    def test_circles(self):
        files = {"sheet/A.cpp": '#include "sheet/A.h"\n#include "sheet/B.h"\n',
                 "sheet/A.h": "#pragma once\n",
                 "sheet/B.h": '#include "sheet/C.h"\n',
                 "sheet/C.cpp": '#include "sheet/C.h"\n'}
        for name in ("sheet/C.h", "sheet/C.cpp"):
            with self.subTest(closed_by=name):
                self.assertEqual(self.check("circles", files=files), [])
                lines = self.check("circles", files={
                    **files, "sheet/C.h": "", name: '#include "sheet/A.h"\n'})
                self.assertEqual([line.split(": ")[0] for line in lines],
                                 ["sheet/A.cpp:2", "sheet/B.h:1", f"{name}:1"])

    def test_forgotten_source(self):
        forgotten = [f"{folder}/Forgotten.cpp" for folder in ("bench", "fuzz", "terminal", "tests")]
        lines = self.check("built", files={name: "int x;\n" for name in forgotten})
        self.assertEqual(lines, [f"{name}:1: no target builds this source" for name in forgotten])

    def test_key_without_text(self):
        self.assert_fault("keys", "terminal/T.cpp", '// "IDS_C-ONE"\nauto k = Tr("IDS_C-ONE");\n',
                          "terminal/T.cpp:2: lang/en.ts lacks IDS_C-ONE",
                          "terminal/T.cpp:2: lang/zh_TW.ts lacks IDS_C-ONE")
        self.assert_fault("keys", "groupfile/Other.ui", "<ui>\n<string>IDS_C-ONE</string></ui>\n",
                          "groupfile/Other.ui:2: lang/en.ts", "groupfile/Other.ui:2: lang/zh_TW.ts")

    def test_key_in_one_language_only(self):
        self.assert_fault("keys", "lang/en.ts", messages(("IDS_A-ONE_1", "%d of %s")),
                          "groupfile/Dialog.ui:1: lang/en.ts lacks IDC_B-TWO")

    def test_texts(self):
        one, two = ("IDS_A-ONE_1", "%d of %s"), ("IDC_B-TWO", "Two")
        for faulty, what in (
                ([one, two, ("IDS_C-ONE", "C")], "5: no code uses IDS_C-ONE"),
                ([one, two, two], "5: IDC_B-TWO is there twice"),
                ([one, ("IDC_B-TWO", " ")], "4: IDC_B-TWO has no finished translation"),
                ([one, two, ("two", "Two")], '5: "two" is not a language key')):
            with self.subTest(what=what):
                self.assert_fault("keys", "lang/en.ts", messages(*faulty), f"lang/en.ts:{what}")

    def test_unfinished_and_broken_files(self):
        text = CLEAN["lang/en.ts"]
        self.assert_fault("keys", "lang/en.ts",
                          text.replace("<translation>Two", '<translation type="unfinished">Two'),
                          "lang/en.ts:4: IDC_B-TWO has no finished translation")
        self.assert_fault("keys", "lang/en.ts", text.replace("</context>", ""),
                          "lang/en.ts:5: not well-formed")

    def test_arguments_differ(self):
        for text in ("%s of %d", "%d of", "%ld of %s", "%d of %s %s"):
            with self.subTest(text=text):
                self.assert_fault("keys", "lang/zh_TW.ts",
                                  messages(("IDS_A-ONE_1", text), ("IDC_B-TWO", "2")),
                                  "lang/zh_TW.ts:3: IDS_A-ONE_1 takes other arguments")

    def test_arguments_of_terminal_keys_may_change_places(self):
        def lines(chinese):
            key = "IDS_TERMINAL-X"
            return self.check("keys", files={
                "platform/A.cpp": f'auto k = "{key}";\n',
                "groupfile/Dialog.ui": "",
                "lang/en.ts": messages((key, "%1 of %2")),
                "lang/zh_TW.ts": messages((key, chinese))})

        self.assertEqual(lines("%2 之 %1"), [])
        self.assertEqual(len(lines("%1 之")), 1)

    def test_machine_paths(self):
        folder = "/" + "home/somebody/x"
        self.assert_fault("paths", "docs/a.md", f"see\n`{folder}`\n", "docs/a.md:2: names a path")
        self.assert_fault("paths", "CMakeLists.txt", CMAKE_LISTS + f"\n# -I{folder}\n",
                          "CMakeLists.txt:11: names a path")
        self.assertEqual(self.check("paths", files={
            "docs/a.md": "https://example.org" + folder + " and /usr/share/x and a" + folder}), [])


if __name__ == "__main__":
    unittest.main()
