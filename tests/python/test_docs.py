"""What the documents show is what there is."""

import doctest
import os
import subprocess
import sys

import pytest

from conftest import ROOT


@pytest.mark.filterwarnings("ignore")
def test_the_guide_shows_what_happens(kelstd, monkeypatch):
    monkeypatch.chdir(ROOT)
    made = doctest.testfile(str(ROOT / "docs" / "python.md"), module_relative=False, encoding="utf-8",
                            optionflags=doctest.ELLIPSIS | doctest.IGNORE_EXCEPTION_DETAIL)
    assert made.failed == 0 and made.attempted > 20


def test_the_package_shows_what_happens(kelstd, monkeypatch):
    monkeypatch.chdir(ROOT)
    made = doctest.testmod(kelstd)
    assert made.failed == 0 and made.attempted > 2


def test_the_example_prints_what_it_says(home):
    folder = ROOT / "examples" / "python"
    run = subprocess.run([sys.executable, "-W", "error", folder / "convert_table.py",
                          ROOT / "examples" / "rd_new.xml", ROOT / "examples" / "rd_new_points.csv"],
                         capture_output=True, text=True, check=True, env=dict(os.environ))
    # TM08 as the README has it.
    assert "TM08               183928.877   465682.965    47.582" in run.stdout
    assert run.stdout == (folder / "expected_output.txt").read_text()
