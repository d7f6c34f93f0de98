"""Runs the unittest cases of a module and prints a line for each, so that ./test can count them."""
import unittest


def run(module):
    """0 when all cases passed, else 1."""
    success = True
    for suite in unittest.defaultTestLoader.loadTestsFromModule(module):
        for case in suite:
            result = case.run()
            good = result.wasSuccessful()
            success = success and good
            print(("ok " if good else "not ok ") + case.id())
            for _, trace in result.failures + result.errors:
                print(trace)
    return 0 if success else 1
