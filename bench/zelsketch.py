"""Measures zelsketch on a file of 200 MB, and beside others on a hundredth of it.

Usage: zelsketch.py ZELSKETCH
Prints for each job the time, the pace and the peak memory, the last as a multiple of the file; to be reached are the
figures in JOBS. The hundredth is also read by construct and, as JSON, by jq: how many times longer they take.
"""
import os
import struct
import sys
import time

from construct import (Byte, Bytes, Const, Float64l, GreedyRange, Int16ul, Int32ul, LazyBound, PascalString,
                       Struct)

LARGE, SMALL = 1_545_000, 15_450  # with their members, 1.7 million definitions and a hundredth
# Job, arguments, the least MB/s, the most memory. FILE is the file, JSON its JSON, OUT a file that is not there.
JOBS = [
    ("check", ["check", "FILE"], 100, 1.2),
    ("list", ["list", "FILE"], 0, 1.2),
    ("list --csv", ["list", "--csv", "FILE"], 0, 1.2),
    ("get", ["get", "FILE", "Definitions[LAST].AreaName"], 100, 1.2),
    ("show --json", ["show", "--json", "FILE"], 0, 1.2),
    ("build", ["build", "JSON", "OUT"], 0, 6),
    ("convert", ["convert", "--to-version", "3", "FILE", "OUT"], 0, 3),
]


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
SKETCH = Struct("header" / Bytes(107), "DefinitionType" / Byte, "FileFlags" / Int32ul, "definitions" / LIST)


def definition(code, multiplier, name, members):
    text = bytes([len(name)]) + name
    return (b"\6" + bytes([len(code)]) + code + struct.pack("<dB", multiplier, 0) + text.ljust(21, b"\0")
            + bytes(21 + 16) + b"\5SOLID".ljust(33, b"\0") + bytes(6 + 3 + 1) + b"\6\3GAR" + b"\1" + members + b"\0")


def make(count, path):
    """A file of `count` definitions, one in ten with a member. By another process, whose memory does not count."""
    child = os.fork()
    if child == 0:
        header = bytearray(107)
        header[0:12] = b"\7TRN4WIN\0\0\0\x40"
        header[12:18] = struct.pack("<IBB", 0x110, 0, 5)
        with open(path, "wb") as file:
            file.write(bytes(header) + bytes(5) + b"\1")
            for i in range(count):
                member = definition(b"GBA1", 0, b"Porch", b"") if i % 10 == 0 else b""
                file.write(definition(b"GLA%d" % (i % 10), 1 + i / 10, b"Floor %d" % i, member))
            file.write(b"\0")
        os._exit(0)
    if os.waitpid(child, 0)[1]:
        sys.exit("zelsketch: no file to measure with")


def run(command, out=os.devnull):
    """Gives the seconds and the peak bytes of a program."""
    began = time.perf_counter()
    child = os.posix_spawnp(command[0], command, os.environ, file_actions=[
        (os.POSIX_SPAWN_OPEN, 1, out, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o666)])
    _, status, usage = os.wait4(child, 0)
    if status:
        sys.exit(f"zelsketch: {' '.join(command)} failed")
    return time.perf_counter() - began, usage.ru_maxrss * 1024


def quickest(command, times, fresh=None):
    results = []
    for _ in range(times):
        if fresh and os.path.exists(fresh):
            os.remove(fresh)
        results.append(run(command))
    return min(seconds for seconds, _ in results), max(peak for _, peak in results)


def command(zelsketch, arguments, name, count):
    words = {"FILE": name, "JSON": name + ".json", "OUT": name + ".out"}
    return [zelsketch] + [words.get(word, word).replace("LAST", str(count - 1)) for word in arguments]


def measure_large(zelsketch):
    make(LARGE, "large")
    run([zelsketch, "show", "--json", "large"], "large.json")
    size = os.path.getsize("large")
    print(f"{'zelsketch, %.0f MB' % (size / 1e6):24}{'s':>8}{'MB/s':>8}{'least':>8}{'memory':>8}{'most':>8}")
    for job, arguments, least, most in JOBS:
        seconds, peak = quickest(command(zelsketch, arguments, "large", LARGE), 3, "large.out")
        print(f"{job:24}{seconds:8.2f}{size / 1e6 / seconds:8.0f}{least or '-':>8}{peak / size:8.2f}{most:8.1f}",
              flush=True)
    for name in ("large", "large.json", "large.out"):
        os.remove(name)


def measure_small(zelsketch):
    make(SMALL, "small")
    run([zelsketch, "show", "--json", "small"], "small.json")
    mine = {job: quickest(command(zelsketch, arguments, "small", SMALL), 5, "small.out")[0]
            for job, arguments, _, _ in JOBS}
    print(f"\n{'a hundredth of it':24}{'zelsketch':>10}{'other':>10}{'ratio':>8}")

    def row(job, what, seconds):
        print(f"{job:16}{what:8}{mine[job]:10.3f}{seconds:10.3f}{seconds / mine[job]:8.0f}")

    with open("small", "rb") as file:
        content = file.read()
    began = time.perf_counter()
    parsed = SKETCH.parse(content)
    row("show --json", "construct", time.perf_counter() - began)
    if len(parsed.definitions.elements) != SMALL:
        sys.exit("zelsketch: the two readers do not agree")
    columns = "[.AreaCode, .Multiplier, .CalcType, .AreaName, .AreaDescription, .WallWidth, .WallHeight, .SegmentStyle]"
    for job, script in (("get", ".Definitions[-1].AreaName"), ("build", "empty"),
                        ("list --csv", f".Definitions[] | recurse(.Members[]) | {columns} | @csv")):
        row(job, "jq", quickest(["jq", "-r", script, "small.json"], 3)[0])


def main():
    measure_large(sys.argv[1])
    measure_small(sys.argv[1])


main()
