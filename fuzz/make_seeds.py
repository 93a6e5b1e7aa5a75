#!/usr/bin/env python3
"""Writes the seed corpus of a fuzz target from its readable description.

Usage: make_seeds.py SEEDS.txt OUTPUT_DIRECTORY
"""
import pathlib
import re
import sys


def parse(text):
    seeds = {}
    name = None
    for number, line in enumerate(text.splitlines(), 1):
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        if line.startswith("seed "):
            name = line.split(None, 1)[1].strip()
            seeds[name] = bytearray()
            continue
        if name is None:
            sys.exit(f"line {number}: tokens before the first seed")
        for token in tokens(line, number):
            seeds[name] += token
    return seeds


TOKEN = re.compile(r'\s*(?:"([^"]*)"|([0-9A-Fa-f]{2})(?:\*(\d+))?)')


def tokens(line, number):
    position = 0
    line = line.rstrip()
    while position < len(line):
        match = TOKEN.match(line, position)
        if not match:
            sys.exit(f"line {number}: cannot read {line[position:]!r}")
        text, byte, count = match.groups()
        if text is not None:
            yield text.encode("latin-1")
        else:
            yield bytes([int(byte, 16)]) * int(count or 1)
        position = match.end()


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    seeds = parse(pathlib.Path(sys.argv[1]).read_text())
    out = pathlib.Path(sys.argv[2])
    out.mkdir(parents=True, exist_ok=True)
    for name, data in seeds.items():
        (out / name).write_bytes(bytes(data))
    print(f"{len(seeds)} seeds in {out}")


if __name__ == "__main__":
    main()
