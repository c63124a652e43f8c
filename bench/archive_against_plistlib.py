"""Prints how archive_bench compares with Python's plistlib and with plain file copies.

    python3 bench/archive_against_plistlib.py build/release/bench/archive_bench

Both sides write and read the same 1,000 strokes of 200 points, one dictionary for each point, in
the same run. A ratio above 1 says how many times as long the other side takes.
"""

import json
import plistlib
import struct
import subprocess
import sys
import time

STROKES = 1000
POINTS = 200
ROUNDS = 3


def build():
    objects = ["$null"]

    def add(value):
        objects.append(value)
        return plistlib.UID(len(objects) - 1)

    def description(*names):
        return add({"$classname": names[0], "$classes": [*names, "NSObject"]})

    array = description("NSArray")
    dictionary = description("NSDictionary")
    pencil = description("PencilAnnotation", "PathAnnotation", "Annotation")
    keys = [add("elementType"), add("elementPoints")]
    kinds = [add(0), add(1)]
    strokes = []
    for stroke in range(STROKES):
        path = [add({"$class": dictionary, "NS.keys": keys, "NS.objects": [
            kinds[min(p, 1)], add(struct.pack("=dd", p * 1.25, stroke + 0.5))]})
            for p in range(POINTS)]
        strokes.append(add({"$class": pencil, "annotationType": 2, "annotationSize": 3.0,
                            "path": add({"$class": array, "NS.objects": path})}))
    top = {"standardAnnotations": add({"$class": array, "NS.objects": strokes})}
    return {"$archiver": "NSKeyedArchiver", "$version": 100000, "$top": top, "$objects": objects}


def count(root):
    objects = root["$objects"]
    points = 0
    for stroke in objects[root["$top"]["standardAnnotations"].data]["NS.objects"]:
        for element in objects[objects[stroke.data]["path"].data]["NS.objects"]:
            values = [objects[uid.data] for uid in objects[element.data]["NS.objects"]]
            struct.unpack("=dd", values[1])
            points += 1
    return points


def best(action):
    times = []
    for _ in range(ROUNDS):
        start = time.process_time()
        result = action()
        times.append(1000 * (time.process_time() - start))
    return min(times), result


def ours(program):
    output = subprocess.run([program, "--benchmark_format=json"], check=True,
                            stdout=subprocess.PIPE).stdout
    return {run["name"]: run for run in json.loads(output)["benchmarks"]}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    runs = ours(sys.argv[1])
    write = runs["writeArchive/1000"]["cpu_time"]
    read = runs["readArchive/1000"]["cpu_time"]
    their_write, encoded = best(lambda: plistlib.dumps(build(), fmt=plistlib.FMT_BINARY))
    their_read, points = best(lambda: count(plistlib.loads(encoded, fmt=plistlib.FMT_BINARY)))
    if points != STROKES * POINTS:
        sys.exit(f"plistlib read {points} points")
    file_write = runs["writeFileOfSameSize/1000/real_time"]["real_time"]
    file_read = runs["readFileOfSameSize/1000/real_time"]["real_time"]
    atomic = runs["writeFileAtomicallyOfSameSize/1000/real_time"]["real_time"]
    size = runs["writeArchive/1000"]["bytes"]
    rows = [
        ("archive bytes, plistlib", size, len(encoded), "bytes"),
        ("write an archive, plistlib", write, their_write, "ms"),
        ("read an archive, plistlib", read, their_read, "ms"),
        ("write an archive, the same bytes to a file", write, file_write, "ms"),
        ("read an archive, the same bytes from a file", read, file_read, "ms"),
        ("write a file atomically, plainly", atomic, file_write, "ms"),
        ("write 2,000 strokes, 1,000", runs["writeArchive/2000"]["cpu_time"], write, "ms"),
        ("read 2,000 strokes, 1,000", runs["readArchive/2000"]["cpu_time"], read, "ms"),
    ]
    for name, first, second, unit in rows:
        print(f"{name + ':':<46}{first:>12.1f} {second:>12.1f} {unit:<6}{second / first:>8.2f}")


main()
