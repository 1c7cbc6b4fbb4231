#!/usr/bin/env python3
"""Notes what was measured and where: the machine, the compiler, the libraries' versions."""

import json
import os
import pathlib
import platform
import re
import subprocess

import notes

PACKAGES = {"pugixml": "libpugixml-dev", "RapidXML": "librapidxml-dev",
            "TinyXML-2": "libtinyxml2-dev", "libxml2": "libxml2-dev",
            "Xerces-C": "libxerces-c-dev", "Expat": "libexpat1-dev"}


def output(*command: str) -> str:
    run = subprocess.run(command, capture_output=True, text=True)
    return run.stdout.strip() if run.returncode == 0 else ""


def first_match(pattern: str, path: str) -> str:
    found = re.search(pattern, pathlib.Path(path).read_text(), re.M)
    return found[1] if found else "unknown"


def compiler(build: pathlib.Path) -> str:
    commands = json.loads((build / "compile_commands.json").read_text())
    words = next(entry["command"] for entry in commands
                 if entry["file"].endswith("dom/access.cpp")).split()
    flags = [word for word in words if re.match(r"-(O|m|flto|std=)", word)]
    return " ".join([output(words[0], "--version").splitlines()[0] + ",", *flags])


def revision(source: pathlib.Path) -> str:
    return output("git", "-C", str(source), "describe", "--always", "--dirty") or "of no revision"


def describe(build: pathlib.Path, source: pathlib.Path) -> str:
    versions = {name: output("dpkg-query", "-W", "-f=${Version}", package)
                for name, package in PACKAGES.items()}
    lines = [
        first_match(r"^model name\s*: (.*)$", "/proc/cpuinfo") +
        f", {os.cpu_count()} processors, " +
        f"{os.sysconf('SC_PHYS_PAGES') * os.sysconf('SC_PAGE_SIZE') / 2**30:.0f} GiB, " +
        f"{platform.system()} {platform.release()}, {platform.libc_ver()[0]} "
        f"{platform.libc_ver()[1]}",
        f"netxml {revision(source)}, {compiler(build)}",
        ", ".join(f"{name} {version}" for name, version in versions.items() if version),
    ]
    return "\n".join(f"- {line}" for line in lines)


def main() -> None:
    options = notes.parser(__doc__).parse_args()
    text = describe(options.build, pathlib.Path(__file__).parent)
    notes.write(options.output, {"text": text})


if __name__ == "__main__":
    main()
