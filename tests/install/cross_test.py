"""The library cross-compiled for AArch64, installed into a sysroot, and programs against that."""
from __future__ import annotations

import os
import shlex
import unittest
from pathlib import Path

from installation import CMAKE, CONSUMER, SOURCE, InstallationCase, run

TRIPLE = "aarch64-linux-gnu"
TOOL = os.environ["NETXML_TOOL_PROGRAM"]

TOOLCHAIN = """
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER {triple}-gcc)
set(CMAKE_CXX_COMPILER {triple}-g++)
set(CMAKE_SYSROOT {sysroot})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
"""


class Cross(InstallationCase):
    sysroot: Path
    toolchain: Path

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        cls.sysroot = cls.work / "sysroot"
        (cls.sysroot / "usr").mkdir(parents=True)
        # Debian keeps the machine's C library in a directory of its own; linker scripts name it so.
        run("cp", "-a", f"/usr/{TRIPLE}", cls.sysroot / "usr")
        for name, target in (("usr/include", f"{TRIPLE}/include"), ("usr/lib", f"{TRIPLE}/lib"),
                             ("lib", f"usr/{TRIPLE}/lib")):
            (cls.sysroot / name).symlink_to(target)
        cls.toolchain = cls.work / "toolchain.cmake"
        cls.toolchain.write_text(TOOLCHAIN.format(triple=TRIPLE, sysroot=cls.sysroot))
        build = cls.work / "netxml"
        run(CMAKE, "-S", SOURCE, "-B", build, "--toolchain", cls.toolchain,
            "-DCMAKE_BUILD_TYPE=MinSizeRel", "-DNETXML_BUILD_TOOLS=OFF", "-DNETXML_BUILD_TESTS=OFF",
            "-DNETXML_BUILD_EXAMPLES=OFF", "-DCMAKE_INSTALL_PREFIX=/usr")
        run(CMAKE, "--build", build)
        run(CMAKE, "--install", build, env={"DESTDIR": str(cls.sysroot)})

    def test_find_package(self) -> None:
        directory = self.work / "find-package"
        run(CMAKE, "-S", CONSUMER, "-B", directory, "--toolchain", self.toolchain,
            f"-DNETXML_TOOL={TOOL}")
        run(CMAKE, "--build", directory)
        self.assertIn("AArch64", run("readelf", "-h", directory / "c_shared"))
        # All but the program that reads UTF-16: the sysroot has no modules for iconv.
        self.check_programs(directory, ["c_shared", "c_static", "validate"], "qemu-aarch64", "-L",
                            self.sysroot)

    def test_pkg_config(self) -> None:
        libraries = self.sysroot / "usr/lib/pkgconfig"
        env = {"PKG_CONFIG_LIBDIR": str(libraries), "PKG_CONFIG_SYSROOT_DIR": str(self.sysroot)}
        flags = shlex.split(run("pkg-config", "--cflags", "--libs", "netxml", env=env))
        for word in flags:
            if word.startswith(("-I", "-L")):
                place = Path(word[2:])
                self.assertTrue(place.is_relative_to(self.sysroot) and place.is_dir(), word)
        program = self.work / "c_shared"
        run(f"{TRIPLE}-gcc", f"--sysroot={self.sysroot}", CONSUMER / "round_trip.c", "-o", program,
            *flags)
        self.check_programs(self.work, ["c_shared"], "qemu-aarch64", "-L", self.sysroot)


if __name__ == "__main__":
    unittest.main()
