#!/usr/bin/env python3
"""The figures that ./test prints at its end."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "test"))
import figures  # noqa: E402
from one_line_a_case import run  # noqa: E402

DOCUMENT = """## Figures

| figure | aim | last | by |
|---|---|---|---|
| orders of threads | all | 9 | `./test` |
| mutants killed | 90 % | 93 % | `./test mutate` |

## Else

| not a figure | at | all | `x` |
"""


class Figures(unittest.TestCase):
    def test_a_figure_is_found_among_other_lines(self):
        self.assertEqual(figures.measured("x\nfigure: size: 594 KiB\ny\n"), {"size": "594 KiB"})

    def test_whole_numbers_of_the_same_name_add_up(self):
        found = figures.measured("figure: points: 700\nfigure: points: 1500\n")
        self.assertEqual(found, {"points": "2 200"})

    def test_logs_add_up_too(self):
        found = figures.measured("figure: points: 1\n", figures.measured("figure: points: 1 000\n"))
        self.assertEqual(found, {"points": "1 001"})

    def test_only_the_table_of_figures_is_read(self):
        self.assertEqual([row[0] for row in figures.kept(DOCUMENT)], ["orders of threads", "mutants killed"])

    def test_what_was_measured_now_comes_before_what_was_kept(self):
        lines = figures.table({"orders of threads": "10"}, figures.kept(DOCUMENT))
        self.assertRegex(lines[0], "orders of threads +10   aim all$")
        self.assertRegex(lines[1], "mutants killed +93 %   aim 90 %; last time, by ./test mutate$")

    def test_a_figure_without_a_row_is_not_lost(self):
        self.assertRegex(figures.table({"new": "1"}, [])[0], "new +1   in no table$")

    def test_the_document_of_the_project_has_figures(self):
        self.assertGreater(len(figures.kept(figures.KEPT.read_text(encoding="utf-8"))), 5)


if __name__ == "__main__":
    sys.exit(run(sys.modules[__name__]))
