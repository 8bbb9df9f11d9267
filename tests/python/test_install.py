"""The package as pip installs it, apart from the build that it came from."""

import os
import pathlib
import shutil
import subprocess
import sys

import pytest

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
    assert libraries == str([str(package / "lib" / f"lib{name}.so.0") for name in ("KelStd", "KelStdPlatform")])


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
