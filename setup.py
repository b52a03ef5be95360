"""Has CMake build the extension module for pip. What else there is to know of the package stands in pyproject.toml."""

from __future__ import annotations

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
NEEDED = "g++ cmake make qt6-base-dev libcadical-dev libtomlplusplus-dev python3-dev pybind11-dev"
OPTIONS = {
    "CMAKE_BUILD_TYPE": "Release",
    "CMAKE_UNITY_BUILD": "ON",
    "BUILD_SHARED_LIBS": "OFF",  # the module brings Velk's libraries with it
    "VELK_BUILD_PYTHON": "ON",
    "VELK_BUILD_PLANNING": "ON",
    "VELK_BUILD_CLI": "OFF",
    "VELK_BUILD_EXAMPLES": "OFF",
    "VELK_BUILD_TESTS": "OFF",
    "VELK_INSTALL": "OFF",
    "Python3_EXECUTABLE": sys.executable,
}


def version() -> str:
    found = re.search(r"^ *VERSION ([0-9.]+)$", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"), re.MULTILINE)
    if not found:
        raise SystemExit("CMakeLists.txt tells no version")
    return found[1]


def run_cmake(*arguments: str) -> None:
    print("cmake", shlex.join(arguments), flush=True)
    try:
        subprocess.run(["cmake", *arguments], cwd=ROOT, check=True)
    except FileNotFoundError:
        raise SystemExit(f"velk: CMake, which builds the module, is missing. On Debian: apt install {NEEDED}") from None
    except subprocess.CalledProcessError:
        raise SystemExit(f"velk: CMake tells above what fails. On Debian, it needs: apt install {NEEDED}") from None


class CMakeBuild(build_ext):
    """Builds in the folder that setuptools has for it, with the options of the variable CMAKE_ARGS behind ours."""

    def build_extension(self, ext: Extension) -> None:
        build = pathlib.Path(self.build_temp).resolve()
        options = [f"-D{name}={value}" for name, value in OPTIONS.items()]
        run_cmake("-S", str(ROOT), "-B", str(build), *options, *shlex.split(os.environ.get("CMAKE_ARGS", "")))
        jobs = self.parallel or os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL") or os.cpu_count() or 1
        run_cmake("--build", str(build), "--target", "velk-python-stub", "--parallel", str(jobs))
        self.copy_built(build / "python/velk", pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent)

    def copy_built(self, built: pathlib.Path, package: pathlib.Path) -> None:
        package.mkdir(parents=True, exist_ok=True)
        for file in built.glob("_velk.*"):
            shutil.copy2(file, package)


setup(version=version(), ext_modules=[Extension("velk._velk", sources=[])], cmdclass={"build_ext": CMakeBuild})
