"""Answers `vorek show --ask` as a user does. Usage: ask_command_test.py VOREK SAMPLE_DB"""
import subprocess
import sys
import unittest

SAMPLE = sys.argv.pop(2)
VOREK = sys.argv.pop(1)


class AskCommand(unittest.TestCase):
    def ask(self, report, *answers):
        lines = "".join(answer + "\n" for answer in answers)
        return subprocess.run([VOREK, "show", report, "--db", SAMPLE, "--user", "1", "--ask",
                               "--format", "tsv"],
                              input=lines, capture_output=True, text=True, check=False)

    def rows(self, result):
        self.assertEqual(result.returncode, 0, result.stderr)
        return len(result.stdout.splitlines()) - 1  # the header

    def test_asks_for_what_the_panel_holds(self):
        result = self.ask("218", "1404/01/01", "31/31", "1404/12/29", "11,12", "", "10,000", "برنج")
        self.assertEqual(self.rows(result), 331)
        self.assertIn("از تاريخ (date, yyyy/mm/dd)", result.stderr)
        self.assertIn('"31/31" is no Persian date', result.stderr)
        self.assertIn("#11  برنج و حبوبات", result.stderr)
        self.assertNotIn("از تاريخ (", result.stdout)

    def test_chooses_by_key_and_by_name(self):
        by_key = self.ask("106", "#1", "", "")
        by_name = self.ask("106", "x", "تهران", "", "")
        everywhere = self.ask("106", "-", "", "")
        self.assertEqual(by_key.stdout, by_name.stdout)
        self.assertIn("no line matches", by_name.stderr)
        self.assertGreater(self.rows(everywhere), self.rows(by_key))

    def test_asks_in_place_of_the_dialog(self):
        self.assertEqual(self.rows(self.ask("219", "1404/01/01", "1404/01/31")), 70)

    def test_end_of_input_cancels(self):
        for report in ("218", "219"):
            result = self.ask(report, "1404/01/01")
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("cancelled", result.stderr)

    def test_a_report_without_parameters_asks_nothing(self):
        result = self.ask("103")
        self.assertEqual((self.rows(result), result.stderr), (4, ""))


unittest.main()
