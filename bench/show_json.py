"""Times zelsketch show --json against a reader of the same file declared with construct.

Usage: show_json.py ZELSKETCH
Prints the ratio of the two times (20 or more is asked for) and zelsketch's peak memory (12 x the file at most).
"""
import json
import os
import sys
import time

from construct import (Byte, Bytes, Const, Float64l, GreedyRange, Int16ul, Int32sl, LazyBound, PascalString,
                       Struct)

COUNT = 100_000
FILE = "show.tmp"


def counted(size):
    return Struct("count" / Byte, "characters" / Bytes(size - 1))


CODE = Struct("tag" / Const(b"\6"), "text" / PascalString(Byte, "cp1252"))
DEFINITION = Struct(
    "AreaCode" / CODE, "Multiplier" / Float64l, "CalcType" / Byte, "AreaName" / counted(21),
    "AreaDescription" / counted(21), "WallWidth" / Float64l, "WallHeight" / Float64l, "SegmentStyle" / counted(33),
    "FillPattern" / Int16ul, "LineColor" / Int16ul, "FillColor" / Int16ul, "PostDescription" / Byte,
    "PostArea" / Byte, "DimensionType" / Byte, "Hidden" / Byte, "SubtractAreaCode" / CODE,
    "Members" / LazyBound(lambda: LIST))
LIST = Struct("opening" / Const(b"\1"), "elements" / GreedyRange(DEFINITION), "closing" / Const(b"\0"))
SKETCH = Struct("header" / Bytes(107), "DefinitionType" / Byte, "FileFlags" / Int32sl, "definitions" / LIST)


def run(*arguments, out=os.devnull):
    """Gives the seconds and the peak bytes of a program."""
    began = time.perf_counter()
    child = os.posix_spawn(arguments[0], arguments, os.environ,
                           file_actions=[(os.POSIX_SPAWN_OPEN, 1, out, os.O_WRONLY | os.O_CREAT, 0o666)])
    _, status, usage = os.wait4(child, 0)
    if status:
        sys.exit(f"show_json: {' '.join(arguments)} failed")
    return time.perf_counter() - began, usage.ru_maxrss * 1024


def make(zelsketch):
    """The file, by another process, whose memory does not count."""
    child = os.fork()
    if child == 0:
        member = {"AreaCode": "GBA1", "AreaName": "Porch"}
        definitions = [{"AreaCode": f"GLA{i % 10}", "Multiplier": 1 + i / 10, "AreaName": f"Floor {i}",
                        "SegmentStyle": "SOLID", "SubtractAreaCode": "GAR", "Members": [member] if i % 10 == 0 else []}
                       for i in range(COUNT)]
        with open("show.json", "w", encoding="utf-8") as file:
            json.dump({"Definitions": definitions}, file)
        run(zelsketch, "build", "show.json", FILE)
        os._exit(0)
    if os.waitpid(child, 0)[1]:
        sys.exit("show_json: no file to measure with")


def main():
    zelsketch = sys.argv[1]
    make(zelsketch)
    shown, peak = min(run(zelsketch, "show", "--json", FILE) for _ in range(5))
    size = os.path.getsize(FILE)
    with open(FILE, "rb") as file:
        content = file.read()
    began = time.perf_counter()
    parsed = SKETCH.parse(content)
    read = time.perf_counter() - began
    if len(parsed.definitions.elements) != COUNT:
        sys.exit("show_json: the two readers do not agree")
    print(f"show --json of {COUNT} definitions: {shown:.2f} s, {read / shown:.0f} x faster than construct "
          f"({read:.1f} s), peak memory {peak / size:.1f} x the file")


main()
