"""Runs `vorek eval` as a user does. Usage: eval_command_test.py VOREK"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

VOREK = sys.argv.pop(1)


class EvalCommand(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.functions = Path(self.folder.name) / "settings" / "f.fun"

    def run_eval(self, *arguments, lines=""):
        return subprocess.run([VOREK, "eval", *arguments], input=lines, capture_output=True,
                              text=True, check=False, env={"VOREK_FUNCTIONS": str(self.functions)})

    def test_prints_the_value(self):
        cases = [
            (["3 + -2*(1+@ABS(-4))/5"], "1\n"),
            (["-3^2"], "9\n"),
            (["--", "-3^2"], "9\n"),
            (["--5-3"], "2\n"),
            (["A*b", "--var", "a=-5", "--var", "B=2.5"], "-12.5\n"),
            (["2/0", "--code"], "0\t8\tفرمول فوق داراي ساختار اشتباه ميباشد\n"),
            (["(1", "--code"], "\t6\tاشكال در پارانتزها وجود دارد.\n"),
        ]
        for arguments, output in cases:
            result = self.run_eval(*arguments)
            self.assertEqual((result.stdout, result.returncode), (output, 0), arguments)

    def test_an_error_is_no_figure(self):
        for formula in ("2/0", "(1", "@NONE(4)", ""):
            result = self.run_eval(formula)
            self.assertEqual((result.stdout, result.returncode), ("", 1), formula)
            self.assertIn("vorek: CErr ", result.stderr)

    def test_a_line_does_not_refuse_the_next(self):
        result = self.run_eval("-", "--var", "A=2",
                               lines="1+1\nB+1\r\nA+1\n2/0\n\n10000000000*10000000000\n(1")
        self.assertEqual(result.stdout, "2\t0\n0\t4\n3\t0\n0\t8\n0\t5\n1E+20\t0\n\t6\n")
        self.assertIn("اشکال در محاسبات", result.stderr)

    def test_wrong_usage(self):
        for arguments in ([], ["1", "2"], ["--nothing"], ["1", "--var", "A"], ["1", "--var", "A=x"]):
            result = self.run_eval(*arguments)
            self.assertEqual((result.stdout, result.returncode), ("", 2), arguments)

    def test_function_files(self):
        other = Path(self.folder.name) / "other.fun"
        other.write_text('x\r\n"@DOBLE","X*2"\r\n', encoding="utf-8")
        self.assertEqual(self.run_eval("@doble(4)", "--functions", str(other)).stdout, "8\n")
        self.assertFalse(self.functions.exists())
        self.assertEqual(self.run_eval("@doble(4)").stdout, "")
        self.assertTrue(self.functions.exists())


if __name__ == "__main__":
    unittest.main()
