"""The package as pip installs it, apart from the build that it came from."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tarfile

import pytest
from packaging.requirements import Requirement

from conftest import ROOT


@pytest.fixture(scope="module")
def installed(tmp_path_factory):
    """Installed from a copy of the sources, whose build is that of these tests."""
    place = tmp_path_factory.mktemp("installed")
    sources = place / "sources"
    sources.mkdir()
    for name in ("pyproject.toml", "setup.py", "CMakeLists.txt", "LICENSE"):
        shutil.copy(ROOT / name, sources)
    shutil.copytree(ROOT / "python", sources / "python")
    (sources / "docs").mkdir()
    shutil.copy(ROOT / "docs" / "python.md", sources / "docs")
    subprocess.run(
        [sys.executable, "-m", "pip", "--disable-pip-version-check", "install", "--quiet",
         "--no-build-isolation", "--no-deps", "--no-index", "--root-user-action=ignore",
         "--target", place / "site", sources],
        check=True, env={**os.environ, "HOME": str(place)}, timeout=280)
    yield place / "site"
    shutil.rmtree(place)


def soname(name):
    """The name of a library of the build, which says its Qt."""
    library = pathlib.Path(os.environ["KELSTD_BUILD_DIR"]) / "lib" / f"lib{name}.so"
    dynamic = subprocess.run(["readelf", "-d", library], capture_output=True, text=True, check=True).stdout
    return re.search(r"\(SONAME\).*\[(.+)\]", dynamic).group(1)


def test_it_brings_what_it_needs(installed, home):
    code = """
import kelstd
converter = kelstd.Converter(kelstd.System.find("EPSG:28992"))
made = converter.from_wgs84(5.81015219, 52.17852792, 90.865)
print(f"{made.easting:.1f} {made.northing:.1f}", kelstd.program_dir())
print(sorted({line.split()[-1] for line in open("/proc/self/maps") if "libKelStd" in line}))
"""
    # The published shift of the delivered system has fewer digits than the README's: 2 mm.
    run = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True,
                         cwd=installed.parent, env={**os.environ, "PYTHONPATH": str(installed)})
    numbers, libraries = run.stdout.splitlines()
    package = installed / "kelstd"
    assert numbers == f"183928.9 465683.0 {package / 'bin'}"
    assert libraries == str([str(package / "lib" / soname(name)) for name in ("KelStd", "KelStdPlatform")])


def test_its_libraries_are_looked_for_beside_them_alone(installed):
    package = installed / "kelstd"
    for library in [*package.glob("*.so"), *(package / "lib").iterdir()]:
        assert not library.is_symlink()
        dynamic = subprocess.run(["readelf", "-d", library], capture_output=True, text=True, check=True).stdout
        for line in dynamic.splitlines():
            if "PATH)" in line:
                places = line.split("[")[1].rstrip("]").split(":")
                # An empty place would be whatever directory the process is in.
                assert all(place.startswith("$ORIGIN") for place in places), (library, line)


def test_it_is_what_pip_says(installed):
    told = subprocess.run([sys.executable, "-m", "pip", "show", "--files", "kelstd"], capture_output=True,
                          text=True, check=True, env={**os.environ, "PYTHONPATH": str(installed)}).stdout
    text = (ROOT / "CMakeLists.txt").read_text()
    assert f"Version: {text.split('VERSION ')[2].split()[0]}" in told and "License" in told
    for name in ("py.typed", "__init__.pyi", "_core.pyi", "bin/proj/proj.zip"):
        assert f"kelstd/{name}" in told
    assert pathlib.Path(installed / "kelstd" / "bin" / "library" / "standard").is_dir()


def requirements(installed):
    text = next(installed.glob("kelstd-*.dist-info/METADATA")).read_text()
    return [Requirement(line) for line in re.findall(r"^Requires-Dist: (.*)", text, re.MULTILINE)]


@pytest.mark.parametrize("name, version, fits", [
    ("numpy", "1.21.0", True), ("numpy", "1.26.4", True), ("numpy", "2.0.0", False),
    ("zarr", "2.13.6", True), ("zarr", "3.0.0", False),
])
def test_it_asks_for_versions_that_it_works_with(installed, name, version, fits):
    """numpy by the release notes of pybind11 2.12, with which modules came to work with NumPy 2."""
    asked = [one for one in requirements(installed) if one.name == name]
    assert len(asked) == 1 and asked[0].specifier.contains(version) is fits


def test_the_archive_of_its_sources_can_be_built(tmp_path):
    """Configured as setup.py does; that every source of the build is there, a dry run shows."""
    place = tmp_path / "place"
    place.mkdir()
    for entry in ROOT.iterdir():
        if entry.is_file():
            shutil.copy(entry, place)
        elif entry.name == "python":
            shutil.copytree(entry, place / entry.name)  # which setuptools writes into
        elif entry.name != "build" and not entry.name.startswith("."):
            (place / entry.name).symlink_to(entry)
    subprocess.run([sys.executable, "setup.py", "-q", "sdist"], check=True, cwd=place, capture_output=True)
    with tarfile.open(next((place / "dist").glob("*.tar.gz"))) as archive:
        archive.extractall(tmp_path)
    sources = next(path for path in tmp_path.glob("kelstd-*") if path.is_dir())
    configure = """
import pathlib, setuptools
setuptools.setup = lambda **given: given["cmdclass"]["build_ext"].configure(None, pathlib.Path("build"))
import setup
"""
    made = subprocess.run([sys.executable, "-c", configure], cwd=sources, capture_output=True, text=True)
    assert made.returncode == 0, made.stderr
    subprocess.run(["cmake", "--build", "build", "--target", "kelstd_python", "--", "-n"], check=True, cwd=sources,
                   stdout=subprocess.DEVNULL)
    headers = {str(path.relative_to(ROOT)) for folder in ("KelStd", "python") for path in (ROOT / folder).rglob("*.h")}
    assert headers and all((sources / header).exists() for header in headers)
