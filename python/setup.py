"""Builds the extension module and libvistrelhost with CMake, or takes those of a finished build in
the folder VISTREL_BUILD."""

import os
import re
import subprocess
import sys
from pathlib import Path

import pybind11
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/setuptools"  # and not among the sources


def version():
    header = (ROOT / "include/vistrel/vistrel_version.h").read_text()
    return ".".join(re.findall(r"VISTREL_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)", header))


class CMakeBuild(build_ext):
    def build_extension(self, ext):
        build = os.environ.get("VISTREL_BUILD") or self.make_build()
        for component in ("python", "python_wheel", "python_library"):
            subprocess.run(["cmake", "--install", build, "--component", component, "--strip",
                            "--prefix", Path(self.build_lib).resolve()], check=True)

    def make_build(self):
        build = Path(self.build_temp).resolve()
        subprocess.run(["cmake", "-S", ROOT, "-B", build, "-D", "CMAKE_BUILD_TYPE=Release",
                        "-D", "VISTREL_APPS=OFF", "-D", "VISTREL_TESTS=OFF",
                        "-D", "VISTREL_PYTHON=ON", "-D", f"Python_EXECUTABLE={sys.executable}",
                        "-D", f"pybind11_DIR={pybind11.get_cmake_dir()}"], check=True)
        subprocess.run(["cmake", "--build", build, "--target", "vistrel_python", "vistrel_python_wheel",
                        "--parallel", str(os.cpu_count())], check=True)
        return build


BUILD.mkdir(parents=True, exist_ok=True)
setup(
    version=version(),
    packages=["vistrel"],
    package_data={"vistrel": ["*.pyi", "py.typed"]},
    ext_modules=[Extension("vistrel._core", [])],
    cmdclass={"build_ext": CMakeBuild},
    options={"build": {"build_base": str(BUILD)}, "egg_info": {"egg_base": str(BUILD)}},
)
