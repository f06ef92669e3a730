"""Trees and objects with one fault each: the checks have to find it and name the place."""
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FLOORS = "# Architecture\n\n- `engine`\n\n## Floors\n\n1. `text`\n2. `grid`\n3. `engine`\n\n## Road\n\n- `roof`\n"

# What a file holds, and what the check has to say about it; None when it is right.
INCLUDES = (
    ("src/grid/a.h", '#include "text/b.h"', None),
    ("src/grid/a.h", '#include "vorek/grid.h"\n#include <vector>', None),
    ("src/adapters/sqlite/a.cc", '#include "grid/a.h"\n#include <sqlite3.h>', None),
    ("src/text/a.h", '#include "grid/b.h"', "src/text/a.h:1: grid/b.h: runs up from text to grid"),
    ("src/text/a.h", '\n  #  include "engine/b.h"', "src/text/a.h:2: engine/b.h: runs up"),
    ("src/grid/a.h", '#include "adapters/sqlite/a.h"', "the core doesn't know adapters"),
    ("src/grid/a.h", '#include "roof/a.h"', "no such floor"),
    ("src/roof/a.h", "", "roof is not a floor"),
    ("src/grid/a.h", '#include "b.h"', "name the folder"),
    ("src/grid/a.h", "#include <sqlite3.h>", "the standard library alone"),
    ("src/grid/a.h", "#include <format>", "not in every compiler"),
    ("include/vorek/a.h", '#include "grid/b.h"', "include/vorek/a.h:1: grid/b.h: a public header"),
    ("src/adapters/qt/a.h", '#include "adapters/sqlite/b.h"', "an adapter doesn't know another"),
    ("src/grid/a.h", '#include "grid/a.h"', "a circle: grid/a.h -> grid/a.h"),
)


def run(*command):
    return subprocess.run(command, capture_output=True, text=True)


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        return path


class FloorsTest(Folder):
    def check(self):
        return run(ROOT / "tools/checks/floors", self.root)

    def test_each_include(self):
        for name, text, expected in INCLUDES:
            with self.subTest(name=name, text=text):
                self.write("docs/architecture.md", FLOORS)
                path = self.write(name, text)
                result = self.check()
                path.unlink()
                self.assertEqual(result.returncode, 1 if expected else 0, result.stdout)
                self.assertIn(expected or "", result.stdout)

    def test_a_circle_over_several_files(self):
        self.write("docs/architecture.md", FLOORS)
        self.write("src/grid/a.h", '#include "grid/b.h"')
        self.write("src/grid/b.h", '#include "grid/c.h"')
        self.write("src/grid/c.h", '#include "grid/a.h"')
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.count("circle"), 1)
        self.assertIn("grid/a.h -> grid/b.h -> grid/c.h -> grid/a.h", result.stdout)

    def test_a_document_without_floors_fails(self):
        self.write("docs/architecture.md", "# Architecture\n")
        self.write("src/grid/a.h", "")
        self.assertNotEqual(self.check().returncode, 0)


class NamedTestsTest(Folder):
    def check(self, named):
        self.write("tests/a/a_test.cc", "TEST_F(A, Works) {}\nTEST(B,\n     Works) {}\n")
        self.write("fuzz/fuzz_x.cc", "")
        self.write("fuzz/corpus/x/1", "")
        self.write("docs/security.md", f"| what | shown by |\n| --- | --- |\n| x | {named} |\n")
        return run(ROOT / "tools/checks/named-tests", self.root)

    def test_each_name(self):
        for named, reason in (
                ("`A.Works`, `B.Works`", None), ("`fuzz.x`", None), ("`tests/a/a_test.cc`", None),
                ("`A.Fails`", "docs/security.md:3: there is no test A.Fails"),
                ("`fuzz.y`", "no test fuzz.y"), ("`tests/b.cc`", "no test tests/b.cc"),
                ("", "no test is named")):
            with self.subTest(named=named):
                result = self.check(named)
                self.assertEqual(result.returncode, 1 if reason else 0, result.stdout)
                self.assertIn(reason or "", result.stdout)


class SymbolsTest(Folder):
    def check(self, source):
        path = self.write("a.cc", source)
        made = self.root / "a.o"
        compiled = run(os.environ.get("CXX", "c++"), "-c", path, "-o", made)
        self.assertEqual(compiled.returncode, 0, compiled.stderr)
        archive = self.root / "a.a"
        archive.unlink(missing_ok=True)
        run("ar", "rcs", archive, made)
        return run(ROOT / "tools/check-symbols", archive)

    def test_each_library(self):
        for source, passes in (
                ("struct Query { void Run(); }; void f(Query& q) { q.Run(); }", True),
                ("struct QString { QString(); }; void f() { QString s; }", False),
                ("struct QString; void g(const QString&); void f(QString& s) { g(s); }", False),
                ('extern "C" int sqlite3_step(void*); int f() { return sqlite3_step(0); }', False),
                ('extern "C" int SQLFetch(void*); int f() { return SQLFetch(0); }', False)):
            with self.subTest(source=source):
                result = self.check(source)
                self.assertEqual(result.returncode == 0, passes, result.stderr)

    def test_a_missing_archive_fails(self):
        self.assertNotEqual(run(ROOT / "tools/check-symbols", self.root / "none.a").returncode, 0)


if __name__ == "__main__":
    unittest.main()
