"""Writes a keyed archive with mutable and immutable forms of its values, by Python's plistlib."""

import plistlib
import struct
import sys

objects = ["$null"]


def add(value):
    objects.append(value)
    return plistlib.UID(len(objects) - 1)


def description(*names):
    return add({"$classname": names[0], "$classes": [*names, "NSObject"]})


classes = {
    "NSArray": description("NSArray"),
    "NSMutableArray": description("NSMutableArray", "NSArray"),
    "NSDictionary": description("NSDictionary"),
    "NSMutableDictionary": description("NSMutableDictionary", "NSDictionary"),
    "NSString": description("NSString"),
    "NSMutableString": description("NSMutableString", "NSString"),
    "NSData": description("NSData"),
    "NSMutableData": description("NSMutableData", "NSData"),
    "PencilAnnotation": description("PencilAnnotation", "PathAnnotation", "Annotation"),
}


def of_class(name, **values):
    return add({"$class": classes[name], **{k.replace("_", "."): v for k, v in values.items()}})


def array(name, values):
    return of_class(name, NS_objects=values)


def dictionary(name, values):
    return of_class(name, NS_keys=list(values), NS_objects=list(values.values()))


def element(form, kind, x, y):
    keys = ["elementType", "elementPoints"]
    points = struct.pack("=dd", x, y)
    if form == "NSMutableDictionary":
        key_uids = [of_class("NSMutableString", NS_string=key) for key in keys]
        values = [add(kind), of_class("NSMutableData", NS_data=points)]
    else:
        key_uids = [add(key) for key in keys]
        values = [add(kind), add(points)]
    return of_class(form, NS_keys=key_uids, NS_objects=values)


def stroke(list_form, dictionary_form, dash):
    path = array(list_form, [element(dictionary_form, 0, 1.5, 2.5),
                             element(dictionary_form, 1, -3.0, 4.25)])
    values = {"annotationType": 2, "annotationSize": 7.5, "path": path}
    if dash is not None:
        values["dashMode"] = dash
    return of_class("PencilAnnotation", **values)


top = {
    "immutable": array("NSArray", [stroke("NSArray", "NSDictionary", None)]),
    "mutable": array("NSMutableArray", [stroke("NSMutableArray", "NSMutableDictionary", True)]),
    "plainString": add("plain"),
    "nonAsciiString": add("Stra\u00dfe \U0001f58d"),
    "immutableString": of_class("NSString", NS_string="immutable"),
    "mutableString": of_class("NSMutableString", NS_string="mutable"),
    "stringByReference": of_class("NSMutableString", NS_string=add("referred")),
    "immutableData": of_class("NSData", NS_data=b"abc"),
    "mutableData": of_class("NSMutableData", NS_data=b"def"),
    "dataByReference": of_class("NSMutableData", NS_data=add(b"ghi")),
    "null": plistlib.UID(0),
    "integer": -12,
    "large": 2**40,
    "real": 0.1,
    "bool": True,
    "nested": array("NSMutableArray", [array("NSArray", [add(1), add(2.5), plistlib.UID(0)])]),
}

with open(sys.argv[1], "wb") as file:
    plistlib.dump({"$archiver": "NSKeyedArchiver", "$version": 100000, "$top": top,
                   "$objects": objects}, file, fmt=plistlib.FMT_BINARY)
