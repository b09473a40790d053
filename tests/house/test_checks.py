#!/usr/bin/env python3
"""Tests of the checks: each is given small trees that it must pass or refuse.
Takes the folder of the checks as its argument."""

import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = pathlib.Path(sys.argv.pop(1)).resolve()


class Tree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file

    def run_check(self, check, *arguments):
        result = subprocess.run([SCRIPTS / check, *arguments], capture_output=True, text=True)
        return result.returncode, result.stdout + result.stderr

    def assert_passes(self, result):
        self.assertEqual(result, (0, ""))

    def assert_refuses(self, result, *fragments):
        status, output = result
        self.assertEqual(status, 1, output)
        for fragment in fragments:
            self.assertIn(fragment, output)


class Includes(Tree):
    def setUp(self):
        super().setUp()
        library = "wrappers/qt/extensions/common"
        self.write("tests/house/includes.toml", f"""[folders]
"low" = ["QtCore"]
"high" = ["low", "QtCore", "QtGui/private"]
"{library}" = []
"{library}/part" = ["{library}"]
""")
        self.write("src/low/low.h", "#include <QtCore/QString>\n#include <vector>\n#include <sys/stat.h>\n")
        self.write("src/low/low_p.h", "")
        self.write("src/high/high.h", '#include "low/low.h"\n')
        self.write("src/high/high_p.h", "")
        self.write(f"src/{library}/common_p.h", "")
        self.write(f"src/{library}/part/part.cpp", f'#include "{library}/common_p.h"\n')

    def check(self):
        return self.run_check("check-includes", self.root)

    def test_passes_what_the_directions_allow(self):
        self.write("src/high/high.cpp", '#include "high/high.h"\n#include "high/high_p.h"\n#include "high.moc"\n'
                                        "#include <QtGui/private/qwindow_p.h>\n")
        self.assert_passes(self.check())

    def test_refuses_an_include_against_the_arrows(self):
        self.write("src/low/bad.cpp", '\n#include "high/high.h"\n')
        self.assert_refuses(self.check(), 'src/low/bad.cpp:2: "high/high.h": low may not use high')

    def test_refuses_indented_and_spaced_includes_too(self):
        self.write("src/low/bad.cpp", '#if 1\n  #  include "high/high.h"\n#endif\n')
        self.assert_refuses(self.check(), "src/low/bad.cpp:2")

    def test_ignores_includes_within_comments(self):
        self.write("src/low/good.cpp", '/*\n#include "high/high.h"\n*/\n// #include "high/high.h"\n')
        self.assert_passes(self.check())

    def test_counts_lines_behind_comments(self):
        self.write("src/low/bad.cpp", '/*\n\n*/\n#include "high/high.h"\n')
        self.assert_refuses(self.check(), "src/low/bad.cpp:4")

    def test_refuses_a_private_header_of_another_module(self):
        self.write("src/high/bad.cpp", '#include "low/low_p.h"\n')
        self.assert_refuses(self.check(), '"low/low_p.h" is private to low')

    def test_refuses_a_qt_module_that_is_not_declared(self):
        self.write("src/low/bad.cpp", "#include <QtQuick/QQuickItem>\n")
        self.assert_refuses(self.check(), "low may not use QtQuick")

    def test_refuses_private_headers_of_an_allowed_qt_module(self):
        self.write("src/low/bad.cpp", "#include <QtCore/private/qobject_p.h>\n")
        self.assert_refuses(self.check(), "low may not use QtCore/private")

    def test_refuses_a_qt_header_without_its_module(self):
        self.write("src/low/bad.cpp", "#include <QString>\n")
        self.assert_refuses(self.check(), "<QString> names no Qt module")

    def test_refuses_an_include_that_does_not_start_at_src(self):
        self.write("src/low/bad.cpp", '#include "low.h"\n')
        self.assert_refuses(self.check(), '"low.h" is no header below src/')

    def test_refuses_other_libraries_unless_declared(self):
        self.write("src/low/bad.cpp", "#include <X11/Xlib.h>\n")
        self.assert_refuses(self.check(), "low may not use X11")

    def test_refuses_a_folder_that_is_not_declared(self):
        self.write("src/new/file.cpp", "")
        self.assert_refuses(self.check(), "src/new/file.cpp: its folder isn't declared")

    def test_refuses_a_tree_without_sources(self):
        self.write("empty/tests/house/includes.toml", "[folders]\n")
        self.assert_refuses(self.run_check("check-includes", self.root / "empty"), "no sources")


class Symbols(Tree):
    def setUp(self):
        super().setUp()
        source = self.write("library.cpp", """
            namespace Here { int function(int) { return 1; } }
            int variable = 3;
            struct Made { Made(); }; Made::Made() {}
            inline int weak() { return 1; } int (*user())() { return &weak; }
            __attribute__((visibility("hidden"))) int hidden() { return 1; }
        """)
        self.library = self.root / "library.so"
        subprocess.run(["c++", "-shared", "-fPIC", "-o", self.library, source], check=True)
        self.symbols = ["T Here::function(int)", "D variable", "T Made::Made()", "T user()"]

    def check(self, symbols):
        return self.run_check("check-symbols", self.library, self.write("list.txt", "# why\n" + "\n".join(symbols) + "\n"))

    def test_passes_a_list_that_fits_in_any_order(self):
        self.assert_passes(self.check(self.symbols))
        self.assert_passes(self.check(reversed(self.symbols)))

    def test_refuses_a_symbol_that_is_missing_from_the_list(self):
        self.assert_refuses(self.check(self.symbols[1:]), "exported, but not listed:\nT Here::function(int)")

    def test_refuses_a_symbol_that_is_missing_from_the_library(self):
        self.assert_refuses(self.check(self.symbols + ["T gone()"]), "listed, but not exported:\nT gone()")

    def test_refuses_a_symbol_of_another_kind(self):
        self.assert_refuses(self.check(["T variable" if line == "D variable" else line for line in self.symbols]),
                            "T variable", "D variable")

    def test_refuses_an_empty_list(self):
        self.assert_refuses(self.check([]), "T user()")

    def test_refuses_a_list_that_is_not_there(self):
        self.assert_refuses(self.run_check("check-symbols", self.library, self.root / "none.txt"), "there is no")

    def test_refuses_a_file_that_is_no_library(self):
        status, _ = self.run_check("check-symbols", self.root / "library.cpp", self.write("list.txt", "T a\n"))
        self.assertNotEqual(status, 0)


class TestsRegistered(Tree):
    def setUp(self):
        super().setUp()
        (self.root / "build").mkdir()
        self.source = self.write("tests/part/tst_subject.cpp", "")
        self.compiled({self.source: "tst_subject"})
        self.run_by_ctest(["tst_subject"])

    def compiled(self, programs):
        self.write("build/compile_commands.json", json.dumps([
            {"directory": str(self.root / "build"), "file": str(source),
             "command": f"c++ -o tests/CMakeFiles/{program}.dir/{source.name}.o -c {source}"}
            for source, program in programs.items()]))

    def run_by_ctest(self, programs):
        self.write("build/tests/CTestTestfile.cmake", "".join(
            f'add_test([=[{program}]=] "/build/tests/{program}")\nset_tests_properties([=[{program}]=] PROPERTIES)\n'
            for program in programs))

    def check(self):
        return self.run_check("check-tests-registered", self.root, self.root / "build")

    def test_passes_sources_of_programs_that_are_run(self):
        self.assert_passes(self.check())

    def test_refuses_a_source_that_is_not_compiled(self):
        self.write("tests/part/tst_forgotten.cpp", "")
        self.assert_refuses(self.check(), "tests/part/tst_forgotten.cpp: is not compiled")

    def test_refuses_a_source_of_the_same_name_elsewhere(self):
        self.write("tests/other/tst_subject.cpp", "")
        self.assert_refuses(self.check(), "tests/other/tst_subject.cpp: is not compiled")

    def test_refuses_a_program_that_is_not_run(self):
        self.run_by_ctest(["tst_other"])
        self.assert_refuses(self.check(), "ctest runs none of tst_subject")

    def test_refuses_a_tree_without_tests(self):
        self.source.unlink()
        self.assert_refuses(self.check(), "no test sources")


unittest.main()
