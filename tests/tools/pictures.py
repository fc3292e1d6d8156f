#!/usr/bin/env python3
"""Draws all examples as SVG with two builds of the program and compares every number in the two
pictures. Fails if one of them is more than a unit, which is a pixel at scale 1, off."""
import pathlib
import re
import subprocess
import sys
import tempfile

TOLERANCE = 1.0
# Not the digits of a colour.
NUMBER = re.compile(r"(?<![#0-9a-f])-?\d+(?:\.\d+)?(?:e-?\d+)?")


def drawn(program, file, folder):
    picture = pathlib.Path(folder) / "picture.svg"
    subprocess.run([program, "export", file, "-o", picture], check=True)
    return picture.read_text()


def difference(first, second):
    if NUMBER.sub("", first) != NUMBER.sub("", second):
        return float("inf")
    pairs = zip(NUMBER.findall(first), NUMBER.findall(second))
    return max(abs(float(a) - float(b)) for a, b in pairs)


worst = 0.0
examples = pathlib.Path(__file__).parents[2] / "examples"
with tempfile.TemporaryDirectory() as folder:
    for file in sorted(examples.glob("*.vprj")) + sorted(examples.glob("*.ckt")):
        apart = difference(*(drawn(program, file, folder) for program in sys.argv[1:3]))
        print(f"{file.name:24} {apart:.3f}")
        worst = max(worst, apart)
sys.exit(worst > TOLERANCE)
