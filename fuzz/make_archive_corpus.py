"""Writes the seeds of archive_fuzz: small keyed archives, right and wrong ones.

Run it after a change of this file: python3 fuzz/make_archive_corpus.py
"""

import pathlib
import plistlib
import struct

FOLDER = pathlib.Path(__file__).parent / "corpus" / "archive_fuzz"


class Archive:
    def __init__(self):
        self.objects = ["$null"]
        self.classes = {}

    def add(self, value):
        self.objects.append(value)
        return plistlib.UID(len(self.objects) - 1)

    def of_class(self, name, values):
        if name not in self.classes:
            self.classes[name] = self.add({"$classname": name, "$classes": [name, "NSObject"]})
        return self.add({"$class": self.classes[name], **values})

    def array(self, values, name="NSArray"):
        return self.of_class(name, {"NS.objects": values})

    def dictionary(self, values, name="NSDictionary"):
        keys = [self.add(key) for key in values]
        return self.of_class(name, {"NS.keys": keys, "NS.objects": list(values.values())})

    def element(self, kind, x, y):
        return self.dictionary({"elementType": self.add(kind),
                                "elementPoints": self.add(struct.pack("=dd", x, y))})

    def stroke(self, points, **more):
        path = self.array([self.element(min(i, 1), i, 2 * i) for i in range(points)])
        return self.of_class("PencilAnnotation", {"annotationType": 2, "annotationSize": 7.5,
                                                  "dashMode": True, "path": path, **more})

    def write(self, name, **top):
        root = {"$archiver": "NSKeyedArchiver", "$version": 100000, "$top": top,
                "$objects": self.objects}
        (FOLDER / name).write_bytes(plistlib.dumps(root, fmt=plistlib.FMT_BINARY))


def empty():
    Archive().write("empty")


def scalars():
    archive = Archive()
    archive.write("scalars", annotationBackdrop=-1, annotationModeKey=archive.add("Mode"),
                  path=2.5, lines=plistlib.UID(0), next=False, standardAnnotations=2**63)


def strokes():
    archive = Archive()
    screens = archive.array([archive.array([archive.stroke(1)])])
    archive.write("strokes", standardAnnotations=archive.array([archive.stroke(3)]),
                  standardClearedScreens=screens)


def mutable_forms():
    archive = Archive()
    text = archive.of_class("NSMutableString", {"NS.string": "text"})
    data = archive.of_class("NSMutableData", {"NS.data": b"data"})
    entries = archive.dictionary({"color": archive.add(3), "elementPoints": data},
                                 "NSMutableDictionary")
    archive.write("mutable_forms", lines=archive.array([text, data, entries], "NSMutableArray"))


def texts():
    archive = Archive()
    lines = [archive.add(line) for line in ("", "plain", "Gr\u00fc\u00dfe \U0001f58d", "x" * 40)]
    archive.write("texts", next=archive.of_class("TextAnnotation", {
        "lines": archive.array(lines), "title": archive.add("title"), "originX": 1.0}))


def many_keys():
    archive = Archive()
    archive.write("many_keys", path=archive.dictionary(
        {**{f"key {i}": archive.add(i) for i in range(20)}, "color": archive.add(9)}))


def shared_object():
    archive = Archive()
    stroke = archive.stroke(1)
    archive.write("shared_object", standardAnnotations=archive.array([stroke, stroke]), next=stroke)


def object_in_itself():
    archive = Archive()
    stroke = archive.stroke(1)
    archive.objects[stroke.data]["next"] = stroke
    archive.write("object_in_itself", next=stroke)


def list_in_itself():
    archive = Archive()
    array = archive.array([])
    archive.objects[array.data]["NS.objects"] = [array, array]
    archive.write("list_in_itself", path=array)


def doubling_lists():
    archive = Archive()
    array = archive.array([])
    for _ in range(12):
        array = archive.array([array, array])
    archive.write("doubling_lists", path=array)


def reference_past_the_end():
    Archive().write("reference_past_the_end", path=plistlib.UID(70000))


FOLDER.mkdir(parents=True, exist_ok=True)
for seed in (empty, scalars, strokes, mutable_forms, texts, many_keys, shared_object,
             object_in_itself, list_in_itself, doubling_lists, reference_past_the_end):
    seed()
