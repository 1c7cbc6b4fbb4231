#!/usr/bin/env python3
"""Notes which malformed documents each library refuses."""

import json
import subprocess

import contestants
import notes


def refusals(contestant: contestants.Contestant) -> dict[str, bool]:
    # What libraries print on standard error quotes the documents, bytes that are no text included.
    run = subprocess.run([contestant.program, "--checks"], stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, check=True)
    return json.loads(run.stdout)


def main() -> None:
    options = notes.parser(__doc__).parse_args()
    everyone = contestants.find(options.build)
    notes.write(options.output, {name: refusals(one) for name, one in everyone.items()})


if __name__ == "__main__":
    main()
