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
        self.assertIn("از تاريخ (date, yyyy/mm/dd", result.stderr)
        self.assertIn("ماه 31 وجود ندارد", result.stderr)
        self.assertIn("#11  برنج و حبوبات", result.stderr)
        self.assertIn("= 10/000", result.stderr)  # what was understood
        self.assertNotIn("از تاريخ (", result.stdout)

    def test_chooses_by_key_and_by_name(self):
        by_key = self.ask("106", "#1", "", "")
        by_name = self.ask("106", "x", "تهران", "", "")
        everywhere = self.ask("106", "-", "", "")
        self.assertEqual(by_key.stdout, by_name.stdout)
        self.assertIn("«x» در فهرست نيست", by_name.stderr)
        self.assertGreater(self.rows(everywhere), self.rows(by_key))

    def test_an_answer_that_isnt_taken_never_runs_the_report(self):
        # Neither an empty answer nor the end of the input lets a report run past it.
        for answers in (["1404/13/01"], ["1404/13/01", "", "", ""]):
            result = self.ask("219", *answers)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertIn("ماه 13 وجود ندارد", result.stderr)
        # "-" empties the field on purpose.
        emptied = self.ask("219", "2025/11/24", "-", "1404/01/31")
        self.assertIn("سال 2025 شمسي نيست", emptied.stderr)
        self.assertGreater(self.rows(emptied), 70)

    def test_lists_are_answered_as_people_write(self):
        by_key = self.ask("218", "", "", "11،12", "", "", "")
        by_name = self.ask("218", "", "", "99", "11,99", "روغن، برنج", "", "", "")
        self.assertEqual(by_key.stdout, by_name.stdout)
        self.assertEqual(by_name.stderr.count("«#99» در فهرست نيست"), 2)
        # ye and kaf in the other spelling, another code beside the key
        self.assertIn("#5  10005  بازرگاني پارس", by_key.stderr)
        customer = self.ask("218", "", "", "", "بازرگانی پارس", "", "")
        self.assertIn("= بازرگاني پارس", customer.stderr)

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
