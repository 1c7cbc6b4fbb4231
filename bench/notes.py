"""What the programs of the benchmark have in common: a build to measure, and notes as JSON."""

import argparse
import json
import pathlib


def parser(description: str) -> argparse.ArgumentParser:
    made = argparse.ArgumentParser(description=description.splitlines()[0])
    made.add_argument("build", type=pathlib.Path, help="the build directory")
    made.add_argument("output", type=pathlib.Path, help="the notes, as JSON")
    return made


def write(path: pathlib.Path, content: object) -> None:
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(content, indent=1))
