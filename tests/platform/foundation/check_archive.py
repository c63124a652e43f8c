"""Reads a keyed archive by Python's plistlib and compares it with what the test wrote."""

import plistlib
import struct
import sys


def require(name, found, wanted):
    if found != wanted or type(found) is not type(wanted):
        sys.exit(f"{name}: found {found!r}, wanted {wanted!r}")


with open(sys.argv[1], "rb") as file:
    root = plistlib.load(file, fmt=plistlib.FMT_BINARY)

require("root keys", sorted(root), ["$archiver", "$objects", "$top", "$version"])
require("$archiver", root["$archiver"], "NSKeyedArchiver")
require("$version", root["$version"], 100000)
objects = root["$objects"]
require("$objects[0]", objects[0], "$null")
top = root["$top"]


def follow(uid):
    require("type of a reference", type(uid), plistlib.UID)
    return objects[uid.data]


def class_of(value):
    return follow(value["$class"])


require("top keys", sorted(top), ["annotationBackdrop", "annotationModeKey", "data", "dollar",
                                  "none", "ratio", "standardAnnotations", "title"])
require("annotationBackdrop", top["annotationBackdrop"], -7)
require("ratio", top["ratio"], 0.1)
require("annotationModeKey", follow(top["annotationModeKey"]), "AnnotationModeStandard")
require("title", follow(top["title"]), "Stra\u00dfe \U0001f58d")
require("data", follow(top["data"]), bytes(range(256)) * 2)
require("none", top["none"], plistlib.UID(0))
require("dollar", follow(top["dollar"]), "$null")

array = follow(top["standardAnnotations"])
require("array keys", sorted(array), ["$class", "NS.objects"])
require("array class", class_of(array), {"$classname": "NSArray",
                                         "$classes": ["NSArray", "NSObject"]})
require("number of annotations", len(array["NS.objects"]), 3)
require("shared object", array["NS.objects"][0], array["NS.objects"][2])

for index, points in enumerate((4, 1)):
    stroke = follow(array["NS.objects"][index])
    require("stroke keys", sorted(stroke), ["$class", "annotationSize", "annotationType",
                                            "dashMode", "path"])
    require("stroke class", class_of(stroke), {
        "$classname": "PencilAnnotation",
        "$classes": ["PencilAnnotation", "PathAnnotation", "Annotation", "NSObject"]})
    require("annotationType", stroke["annotationType"], 2)
    size = struct.unpack("=f", struct.pack("=f", index + 1.1))[0]
    require("annotationSize", stroke["annotationSize"], size)
    require("dashMode", stroke["dashMode"], index == 1)
    path = follow(stroke["path"])
    require("number of elements", len(path["NS.objects"]), points)
    for at, reference in enumerate(path["NS.objects"]):
        element = follow(reference)
        require("element keys", sorted(element), ["$class", "NS.keys", "NS.objects"])
        require("element class", class_of(element), {"$classname": "NSDictionary",
                                                     "$classes": ["NSDictionary", "NSObject"]})
        entries = dict(zip(map(follow, element["NS.keys"]), map(follow, element["NS.objects"])))
        point = struct.pack("=dd", at + 0.25 * (index + 1), index + 1)
        require("element", entries, {"elementType": min(at, 1), "elementPoints": point})

for name in ("NSArray", "NSDictionary", "PencilAnnotation"):
    found = [o for o in objects if isinstance(o, dict) and o.get("$classname") == name]
    require(f"descriptions of {name}", len(found), 1)
# The first object is null's own; a text that looks like it is a value beside it.
leaves = [(type(o), o) for o in objects[1:] if isinstance(o, (str, int, float))]
require("leaves that are stored twice", len(leaves) - len(set(leaves)), 0)
print("as expected")
