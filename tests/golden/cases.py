"""The golden files, family by family."""

import cases_elements
import cases_labels


def CASES(forms):
    return [case for family in (cases_elements, cases_labels) for case in family.cases(forms)]
