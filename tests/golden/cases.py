"""The golden files, family by family."""

import cases_elements


def CASES(forms):
    return cases_elements.cases(forms)
