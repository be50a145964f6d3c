"""The golden files, family by family."""

import cases_charts
import cases_elements
import cases_frames
import cases_images
import cases_labels
import cases_older
import cases_older_tokens
import cases_snapshots

FAMILIES = (cases_elements, cases_labels, cases_charts, cases_snapshots, cases_images, cases_frames, cases_older,
            cases_older_tokens)


def CASES(forms):
    return [case for family in FAMILIES for case in family.cases(forms)]
