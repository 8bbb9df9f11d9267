"""Builds the Python package by CMake.

The package brings the library and the files of its program directory; Qt and the program unzip are
the system's. CMAKE_ARGS in the environment are arguments for CMake, and KELSTD_BUILD_DIR is a build
directory that is used again; one that CMake has configured keeps its configuration.
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = pathlib.Path(__file__).resolve().parent


def version():
    text = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(KelStd\s+VERSION (\S+)", text).group(1)


class BuildByCMake(build_ext):
    def build_extension(self, ext):
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        build = pathlib.Path(os.environ.get("KELSTD_BUILD_DIR") or self.build_temp).resolve()
        if not (build / "CMakeCache.txt").exists():
            self.configure(build)
        jobs = str(os.cpu_count() or 1)
        subprocess.run(
            ["cmake", "--build", build, "--parallel", jobs, "--target", "kelstd_python"], check=True
        )
        subprocess.run(
            ["cmake", "--install", build, "--component", "wheel", "--strip", "--prefix", package.parent],
            check=True,
        )
        # A package of Python holds no links: a library has the one name that it is looked for by.
        for link in [path for path in (package / "lib").iterdir() if path.is_symlink()]:
            library = link.resolve()
            link.unlink()
            library.rename(link)

    def configure(self, build):
        generator = ["-G", "Ninja"] if shutil.which("ninja") else []
        subprocess.run(
            [
                "cmake", "-S", ROOT, "-B", build, *generator,
                "-DCMAKE_BUILD_TYPE=Release",
                "-DKELSTD_PYTHON=ON",
                "-DKELSTD_BUILD_CLI=OFF",
                "-DKELSTD_BUILD_TESTS=OFF",
                f"-DPython3_EXECUTABLE={sys.executable}",
                *shlex.split(os.environ.get("CMAKE_ARGS", "")),
            ],
            check=True,
        )


setup(
    version=version(),
    ext_modules=[Extension("kelstd._core", sources=[])],
    cmdclass={"build_ext": BuildByCMake},
)
