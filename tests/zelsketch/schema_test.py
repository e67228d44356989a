"""Holds what zelsketch writes and takes as JSON against the schemas that ship.

Usage: schema_test.py ZELSKETCH DOCS
"""
import json
import os
import random
import struct
import subprocess
import sys
import tempfile

from jsonschema import Draft202012Validator

ZELSKETCH, DOCS = map(os.path.abspath, sys.argv[1:])
failures = []


def properties(node):
    """The names of all properties that the schema knows."""
    for key, value in node.items():
        if key == "properties":
            yield from value
        if isinstance(value, dict):
            yield from properties(value)


def keys(node):
    """The names of all members of a value."""
    if isinstance(node, list):
        for element in node:
            yield from keys(element)
    if isinstance(node, dict):
        yield from node
        for value in node.values():
            yield from keys(value)


def build(value):
    with open("json", "w", encoding="utf-8") as out:
        json.dump(value, out)
    status = subprocess.run([ZELSKETCH, "build", "json", "f"], stderr=subprocess.DEVNULL, check=False).returncode
    with open("f", "rb") as file:
        return status, file.read()


def show(content, options):
    with open("f", "wb") as out:
        out.write(content)
    shown = subprocess.run([ZELSKETCH, "show", "--json", *options, "f"], stdout=subprocess.PIPE, check=True).stdout
    return json.loads(shown)


def odd_files():
    """Files with every field, whole and damaged."""
    chance = random.Random(741)
    member = {"AreaCode": "B", "WallWidth": -0.0, "Members": [{}]}
    whole = build({"Definitions": [{"AreaCode": "A", "AreaName": "Living", "Members": [member]}]})[1]
    flags, version, definition = 12, 17, 113
    for number in range(7):
        for text in range(8):
            header = bytearray(whole[:definition])
            header[version] = number
            header[flags + 1] = text & 1
            yield bytes(header) + whole[definition:], []
    # Every text and number full of ones.
    ones = bytearray(whole)
    ones[0:flags - 1] = b"\xff" * (flags - 1)
    ones[version + 1:107] = b"\xff" * (107 - version - 1)
    ones[definition] = 7
    ones[definition + 3:definition + 112] = b"\xff" * 109
    ones[definition + 113] = 9
    ones[112] = ones[definition + 115] = 2
    yield bytes(ones) + b"more", []
    for _ in range(100):
        content = bytearray(whole[:chance.randrange(len(whole))])
        for _ in range(min(3, len(content))):
            content[chance.randrange(len(content))] = chance.choice(b"\0\1\6\x7f\x80\xff")
        yield bytes(content), []


def odd_drawings():
    """Each record cut short in front of its fields and behind them, which shows them all; and odd bytes."""
    chance = random.Random(741)
    empty = b"\1\0"
    for version in (0, 2, 7, 8, 13, 15, 20, 22, 24, 26):
        values = bytes((24 if version >= 2 else 0) + (12 if version >= 14 else 0) + (4 if version >= 15 else 0))
        lists = 3 * empty + values

        def entity(kind, rest):
            return lists + b"\0\1\0" + struct.pack("<h", kind) + rest

        contents = [
            b"\1\1", b"\1" + 150 * b"\2", b"\3\7" + 300 * b"\xff",
            empty + b"\2\2", empty + b"\1\2\6\0" + 200 * b"\xff",
            2 * empty + b"\2\1" + 300 * b"\xff", 2 * empty + b"\1\1" + 30 * b"\1",
            3 * empty, 3 * empty + 40 * b"\xff", lists + b"\1\2", lists + b"\0\0\0\0\1\0\x09\0",
            entity(13, bytes(58) + b"\xff\xff" + bytes(18) + b"\1"),
            entity(23, bytes(58) + b"\xff\xff\0" + bytes(40) + b"\1"),
            entity(23, bytes(58) + b"\xff\xff\0" + bytes(40) + b"\0\1\0\x0c\0"),
            entity(7, bytes(58) + b"\1\0\xff" + bytes(24) + b"\xff\xff"),
        ]
        for kind in (0, 1, 2, 3, 4, 7, 13, 14, 23, 35):
            contents += [entity(kind, rest * bytes([chance.choice(b"\0\1\xff")])) for rest in (0, 58, 67, 400)]
        for content in contents:
            yield content, ["--drawing", str(version)]


REFUSED = [
    {"Header": {"Flags": -1}},
    {"Header": {"CreatedBy": {"text": "old"}}},
    {"Definitions": [{"WallWidth": "0x7ff0000000000000"}]},
    {"Definitions": [{"AreaCode": 256 * "A"}]},
    {"Definitions": [{"AreaName": "x", "AreaNameCount": 256}]},
    {"Definitions": [{"Members": [{"NoSuchField": 1}]}]},
    {"LeftOver": "f"},
]


def check_schema(name, samples):
    """All that is shown follows the schema, which is named in it, and the schema knows nothing else."""
    with open(os.path.join(DOCS, name), encoding="utf-8") as file:
        schema = json.load(file)
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(schema)
    seen = set()
    for content, options in samples:
        shown = show(content, options)
        seen.update(keys(shown))
        failures.extend(f"{error.json_path}: {error.message}" for error in validator.iter_errors(shown))
        if not shown["$schema"] == schema["$id"] == name:
            failures.append(f"{name} is not named")
    never = set(properties(schema)) - seen
    if never:
        failures.append(f"{name}: never written: {sorted(never)}")
    return validator


def main():
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        build({})
        validator = check_schema("definition-file.schema.json", odd_files())
        for value in REFUSED:
            if validator.is_valid(value) or build(value)[0] != 1:
                failures.append(f"not refused by both: {value}")
        check_schema("drawing.schema.json", odd_drawings())
        os.chdir("/")
    sys.exit("\n".join(failures[:20]) if failures else 0)


main()
