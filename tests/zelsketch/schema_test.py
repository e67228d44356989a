"""Holds what zelsketch writes and takes as JSON against the schema that ships.

Usage: schema_test.py ZELSKETCH SCHEMA
"""
import json
import os
import random
import subprocess
import sys
import tempfile

from jsonschema import Draft202012Validator

ZELSKETCH, SCHEMA = map(os.path.abspath, sys.argv[1:])
with open(SCHEMA, encoding="utf-8") as file:
    schema = json.load(file)
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema)


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


def show(content):
    with open("f", "wb") as out:
        out.write(content)
    return json.loads(subprocess.run([ZELSKETCH, "show", "--json", "f"], stdout=subprocess.PIPE, check=True).stdout)


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
            yield bytes(header) + whole[definition:]
    # Every text and number full of ones.
    ones = bytearray(whole)
    ones[0:flags - 1] = b"\xff" * (flags - 1)
    ones[version + 1:107] = b"\xff" * (107 - version - 1)
    ones[definition] = 7
    ones[definition + 3:definition + 112] = b"\xff" * 109
    ones[definition + 113] = 9
    ones[112] = ones[definition + 115] = 2
    yield bytes(ones) + b"more"
    for _ in range(100):
        content = bytearray(whole[:chance.randrange(len(whole))])
        for _ in range(min(3, len(content))):
            content[chance.randrange(len(content))] = chance.choice(b"\0\1\6\x7f\x80\xff")
        yield bytes(content)


REFUSED = [
    {"Header": {"Flags": -1}},
    {"Header": {"CreatedBy": {"text": "old"}}},
    {"Definitions": [{"WallWidth": "0x7ff0000000000000"}]},
    {"Definitions": [{"AreaCode": 256 * "A"}]},
    {"Definitions": [{"AreaName": "x", "AreaNameCount": 256}]},
    {"Definitions": [{"Members": [{"NoSuchField": 1}]}]},
    {"LeftOver": "f"},
]


def main():
    failures = []
    seen = set()
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        build({})
        for content in odd_files():
            shown = show(content)
            seen.update(keys(shown))
            failures += [f"{error.json_path}: {error.message}" for error in validator.iter_errors(shown)]
            if shown["$schema"] != schema["$id"]:
                failures.append("the schema is not named")
        for value in REFUSED:
            if validator.is_valid(value) or build(value)[0] != 1:
                failures.append(f"not refused by both: {value}")
        os.chdir("/")
    never = set(properties(schema)) - seen
    if never:
        failures.append(f"never written: {sorted(never)}")
    sys.exit("\n".join(failures[:20]) if failures else 0)


main()
