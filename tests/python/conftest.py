"""What the tests share: systems, and a home directory of the run's own."""

import importlib
import os
import pathlib
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]


@pytest.fixture(scope="session", autouse=True)
def home(tmp_path_factory):
    """KELSTD_HOME_DIR of the whole run; that of ctest is shared by its processes."""
    path = pathlib.Path(os.environ.get("KELSTD_HOME_DIR") or tmp_path_factory.mktemp("home"))
    path.mkdir(exist_ok=True)
    os.environ["KELSTD_HOME_DIR"] = str(path)
    return path


@pytest.fixture(scope="session")
def systems():
    return ROOT / "tests" / "data" / "systems"


@pytest.fixture(scope="session")
def kelstd(home):
    import kelstd

    return kelstd


@pytest.fixture(scope="session")
def rd(kelstd, systems):
    return kelstd.System.open(systems / "rd_new.xml")


@pytest.fixture(scope="session")
def rd_converter(kelstd, rd):
    return kelstd.Converter(rd)


@pytest.fixture
def given(tmp_path):
    """An empty directory to convert."""
    made = tmp_path / "given"
    made.mkdir()
    return made


@pytest.fixture
def output(tmp_path):
    """The directory of the results, which is not there yet."""
    return tmp_path / "output"


@pytest.fixture
def convert_directory(home, monkeypatch, capsys):
    """The example on a Dask cluster, run in this process: what it returns, and what it says."""
    monkeypatch.syspath_prepend(ROOT / "examples" / "dask")
    module = importlib.import_module("convert_directory")

    def run(given, output, *options):
        monkeypatch.setattr(sys, "argv", ["convert_directory", "--system", str(ROOT / "examples" / "rd_new.xml"),
                                          "--workers", "0", *options, str(given), str(output)])
        try:
            status = module.main()
        except SystemExit as end:
            status = end.code
        return status, capsys.readouterr().err

    run.module = module
    return run
