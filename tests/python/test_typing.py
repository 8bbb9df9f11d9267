"""What a type checker knows of the package."""

import importlib
import pkgutil
import re
import subprocess
import sys

from conftest import ROOT

SAMPLE = ROOT / "tests" / "python" / "typed_sample.py"


def mypy(tmp_path, *arguments):
    return subprocess.run([sys.executable, "-m", "mypy", "--cache-dir", tmp_path, *arguments],
                          capture_output=True, text=True, cwd=ROOT).stdout


def test_mistakes_are_found_where_they_are_and_nowhere_else(tmp_path):
    wrong = [number for number, line in enumerate(SAMPLE.read_text().splitlines(), 1) if "# wrong" in line]
    told = mypy(tmp_path, SAMPLE, "python/kelstd")
    lines = [(path, int(number)) for path, number in re.findall(r"^(\S+?):(\d+): error", told, re.MULTILINE)]
    assert {path for path, _ in lines} <= {"tests/python/typed_sample.py"}, told
    assert sorted({number for _, number in lines}) == wrong, told


def test_the_stubs_name_what_there_is(kelstd):
    stubs = (ROOT / "python" / "kelstd" / "__init__.pyi").read_text()
    named = re.findall(r" as (\w+)", stubs)
    assert sorted(set(kelstd.__all__) | {"__version__"}) == sorted(named)
    core = importlib.import_module("kelstd._core")
    declared = re.findall(r"^(?:def|class) (\w+)|^(\w+):", (ROOT / "python" / "kelstd" / "_core.pyi").read_text(),
                          re.MULTILINE)
    assert {a or b for a, b in declared} == {name for name in dir(core) if not name.startswith("__")}


def test_everything_public_has_a_description(kelstd):
    for name in kelstd.__all__:
        item = getattr(kelstd, name)
        if name == "FRAMES":
            continue
        assert item.__doc__, name
        for member, value in vars(item).items() if isinstance(item, type) else ():
            if not member.startswith("_") and callable(value) and not isinstance(value, type):
                assert value.__doc__, f"{name}.{member}"
    assert {module.name for module in pkgutil.iter_modules(kelstd.__path__)} >= {"_core", "_arrays"}
