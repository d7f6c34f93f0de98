#!/usr/bin/env python3
"""The mutants that tools/mutate.py makes of a source, and the marks that take some out."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools"))
from mutation.mutants import mutants_of, unmarked  # noqa: E402
from print_each_case import run  # noqa: E402

HEADER = """class Base {
public:
    virtual int first(const char* text) = 0;
    // Two lines.
    virtual int second(int number,
                       int other) = 0;
    int plain();
    virtual ~Base() {
        plain();
    }
};

class Derived : public Base {
public:
    virtual void third();
    int first(const char* text) override;
};

class Last final : public Base {
    int first(const char* text) override;
};
"""


def changes(source, how):
    """What the lines of a function body become through the mutants of one kind."""
    lines = source if isinstance(source, list) else ["int Derived::f(const char* text, int number) {", source, "}"]
    found = mutants_of("sample.cpp", lines, [HEADER])
    return ["\n".join(m.applied_to(lines)[1:-1]) for m in found if m.how.startswith(how)]


class Operators(unittest.TestCase):
    def test_a_comparison_becomes_its_neighbour(self):
        self.assertEqual(changes("    if (number < 4) return 1;", "with <="), ["    if (number <= 4) return 1;"])

    def test_a_number_grows_by_one(self):
        self.assertEqual(changes("    return 41;", "with"), ["    return 42;"])

    def test_room_for_one_more_element_is_no_mutant(self):
        self.assertEqual(changes("    text.reserve(2);", "with "), [])
        self.assertEqual(changes("    SmallVector<int, 4> numbers;", "with "), [])

    def test_parameters_that_a_message_does_not_have_stay(self):
        self.assertEqual(changes("    ::SendMessageW(window, WM_GETFONT, 0, 0);", "with 1"), [])

    def test_a_condition_is_negated(self):
        self.assertEqual(changes("    if (number) return 1;", "negated"), ["    if (!(number)) return 1;"])

    def test_a_call_is_left_out(self):
        self.assertEqual(changes("    plain();", "without it"), [""])
        self.assertEqual(changes("    ::DeleteObject(text);", "without it"), [""])

    def test_a_truth_value_of_the_system_becomes_the_other(self):
        self.assertEqual(changes("    return TRUE;", "with"), ["    return FALSE;"])

    def test_a_pointer_argument_becomes_null(self):
        self.assertEqual(changes("    print(text, number);", "with nullptr"), ["    print(nullptr, number);"])

    def test_an_address_and_the_arguments_of_an_inner_call_become_null(self):
        self.assertEqual(changes("    print(&number, copy(1, text));", "with nullptr"),
                         ["    print(nullptr, copy(1, text));", "    print(&number, copy(1, nullptr));"])

    def test_parentheses_and_commas_in_a_text_end_no_argument(self):
        self.assertEqual(changes('    print("a), (", text);', "with nullptr"), ['    print("a), (", nullptr);'])

    def test_a_virtual_call_becomes_direct(self):
        self.assertEqual(changes("    return first(text);", "with a direct"), ["    return Derived::first(text);"])
        self.assertEqual(changes("    this->second(1, 2);", "with a direct"), ["    Derived::second(1, 2);"])

    def test_what_is_direct_already_stays(self):
        for call in ("    return plain();", "    return other.first(text);", "    return Base::first(text);"):
            self.assertEqual(changes(call, "with a direct"), [])
        self.assertEqual(changes(["int Last::f() {", "    return first(0);", "}"], "with a direct"), [])

    def test_a_conversion_becomes_its_sibling(self):
        self.assertEqual(changes("    return value.toInt();", "with toU"), ["    return value.toUInt64();"])
        self.assertEqual(changes("    return readWText();", "with readT"), ["    return readText();"])

    def test_two_statements_change_places(self):
        self.assertEqual(changes(["{", "    plain();", "    first(text);", "}"], "after the next"),
                         ["    first(text);\n    plain();"])
        self.assertEqual(changes(["{", "    a = f();", "    delete a;", "}"], "after the next"),
                         ["    delete a;\n    a = f();"])

    def test_statements_that_cannot_change_places_stay(self):
        for pair in (["    plain();", "    return 1;"], ["    const int a = f();", "    plain();"],
                     ["    if (number)", "        plain();"], ["    plain();", "    break;"],
                     ["    a = 1;", "    b = 2;"], ["    a += 1;", "    b += 1;"],
                     ["    putInt(owner.bag, key::kA, 1);", "    putInt(owner.bag, key::kB, 2);"],
                     ["    bag.removeProperty(kA);", "    putInt(bag, kB, 2);"], ["    plain();", "    plain();"],
                     ["    dialog_controls::setFont(window, id, 1);", "    dialog_controls::makeLink(window, id);"]):
            self.assertEqual(changes(["{", *pair, "}"], "after the next"), [])
        self.assertEqual(changes(["{", "    if (number)", "        plain();", "        first(text);", "}"],
                                 "after the next"), [])

    def test_assignments_that_need_each_other_change_places(self):
        for pair in (["    a = b;", "    b = 2;"], ["    b = 2;", "    a = b;"],
                     ["    putInt(bag, kA, 1);", "    putInt(bag, kA, 2);"],
                     ["    bag.removeProperty(kA);", "    putInt(bag, kA, 2);"],
                     ["    dialog_controls::setText(w, id, a);", "    dialog_controls::setTextIfAny(w, id, b);"]):
            self.assertEqual(len(changes(["{", *pair, "}"], "after the next")), 1)

    def test_neighbouring_virtual_functions_change_places(self):
        lines = HEADER.splitlines()

        orders = ["\n".join(m.applied_to(lines)) for m in mutants_of("sample.h", lines)]

        self.assertEqual(len(orders), 2)
        self.assertLess(orders[0].index("int second(int number,"), orders[0].index("int first("))
        self.assertLess(orders[0].index("int other) = 0;"), orders[0].index("int first("))
        self.assertLess(orders[1].index("plain();\n    }"), orders[1].index("int second("))

    def test_texts_comments_and_fenced_lines_stay(self):
        for line in ('    print("1 < 2");', "    // 1 < 2", "    print();  // 1 < 2"):
            self.assertEqual(changes(line, "with "), [])
        self.assertEqual(changes(["{", "// mutate: off", "    a = 1;", "// mutate: on", "}"], "with "), [])


class Marks(unittest.TestCase):
    def left(self, *body):
        lines = ["int f(int number) {", *body, "}"]
        judged, stray = unmarked("sample.cpp", mutants_of("sample.cpp", lines, []), lines)
        return [mutant.how for mutant in judged], stray

    def test_a_mark_takes_out_only_what_it_names(self):
        self.assertEqual(self.left("    return number < 4;  // Equally right with <=: a reason."),
                         (["with 5"], []))

    def test_a_mark_may_name_several(self):
        self.assertEqual(self.left("    return number < 4;  // Equally right with <= or with 5: a reason."), ([], []))

    def test_a_mark_tells_equal_changes_of_a_line_apart(self):
        self.assertEqual(self.left("    return f(1, 1);  // Equally right with 2 (2): a reason."), (["with 2"], []))

    def test_a_mark_on_lines_of_its_own_is_about_the_next_line_of_code(self):
        self.assertEqual(self.left("    // Equally right with <=: a reason", "    // of two lines.", "",
                                   "    return number < 4;"), (["with 5"], []))

    def test_a_mark_needs_a_reason(self):
        self.assertEqual(self.left("    return number < 4;  // Equally right with <=:")[0], ["with <=", "with 5"])

    def test_a_mark_that_fits_no_mutant_is_told(self):
        self.assertEqual(self.left("    return number;  // Equally right with 5: a reason."), ([], [(2, "with 5")]))


if __name__ == "__main__":
    sys.exit(run(sys.modules[__name__]))
