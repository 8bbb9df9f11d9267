"""What the tests share: systems, and a home directory of the run's own."""

import os
import pathlib

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
