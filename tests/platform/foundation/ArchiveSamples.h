#pragma once

#include "platform/foundation/Archivable.h"
#include "platform/foundation/BinaryPropertyListWriter.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::platform::samples {

struct Coordinates {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(const Coordinates &, const Coordinates &) = default;
};

/// A pen stroke as the canvas stores it: a few numbers and one dictionary for each point.
class Stroke : public Archivable {
public:
    std::int64_t kind = 0;
    float width = 0.0F;
    bool isDashed = false;
    std::vector<Coordinates> points;

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return {"PencilAnnotation", "PathAnnotation", "Annotation"};
    }

    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeInt("annotationType", kind);
        coder.encodeFloat("annotationSize", width);
        coder.encodeBool("dashMode", isDashed);
        coder.encodeArray("path", [this](ArchiveArray &path) {
            for (std::size_t i = 0; i < points.size(); ++i) {
                path.addDictionary([&](ArchiveDictionary &element) {
                    std::array<std::uint8_t, sizeof(Coordinates)> bytes{};
                    std::memcpy(bytes.data(), &points[i], bytes.size());
                    element.setInt("elementType", i == 0 ? 0 : 1);
                    element.setData("elementPoints", bytes);
                });
            }
        });
    }

    static std::shared_ptr<Archivable> decode(KeyedUnarchiver &coder)
    {
        auto stroke = std::make_shared<Stroke>();
        stroke->kind = coder.decodeInt("annotationType");
        stroke->width = coder.decodeFloat("annotationSize");
        stroke->isDashed = coder.containsValueForKey("dashMode") && coder.decodeBool("dashMode");
        const auto path = coder.decodeNode("path");
        const std::size_t count = path ? path->size() : 0;
        for (std::size_t i = 0; i < count; ++i) {
            const auto element = path->at(i);
            const auto type = element ? element->find("elementType") : std::nullopt;
            const auto data = element ? element->find("elementPoints") : std::nullopt;
            if (!type || !data || type->asInt() > 1) {
                continue;
            }
            const auto bytes = data->asData();
            Coordinates point;
            if (bytes.size() == sizeof point) {
                std::memcpy(&point, bytes.data(), bytes.size());
                stroke->points.push_back(point);
            }
        }
        return stroke;
    }
};

/// A named link of a chain.
class Link : public Archivable {
public:
    std::string name;
    std::shared_ptr<Link> next;

    Link() = default;
    Link(std::string ownName, std::shared_ptr<Link> nextLink)
        : name(std::move(ownName)), next(std::move(nextLink))
    {
    }

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override { return {"Link"}; }

    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeString("name", name);
        coder.encodeObject("next", next);
    }

    static std::shared_ptr<Archivable> decode(KeyedUnarchiver &coder)
    {
        auto link = std::make_shared<Link>();
        link->name = coder.decodeString("name").value_or("");
        link->next = coder.decodeObjectOf<Link>("next");
        return link;
    }
};

inline const ClassTable &classes()
{
    static const ClassTable table = [] {
        ClassTable made;
        made.add("PencilAnnotation", &Stroke::decode);
        made.add("Link", &Link::decode);
        return made;
    }();
    return table;
}

/// A stroke of `count` points; different for each `seed`.
inline std::shared_ptr<Stroke> stroke(std::size_t count, int seed = 1)
{
    auto made = std::make_shared<Stroke>();
    made->kind = 2;
    made->width = static_cast<float>(seed) + 0.1F;
    made->isDashed = seed % 2 == 0;
    for (std::size_t i = 0; i < count; ++i) {
        made->points.push_back({static_cast<double>(i) + 0.25 * seed, static_cast<double>(seed)});
    }
    return made;
}

/// An archive of `strokes` strokes of `points` points under "standardAnnotations".
inline Data strokesArchive(std::size_t strokes, std::size_t points)
{
    KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", "AnnotationModeStandard");
    archiver.encodeArray("standardAnnotations", [&](ArchiveArray &list) {
        for (std::size_t i = 0; i < strokes; ++i) {
            list.addObject(stroke(points, static_cast<int>(i)));
        }
    });
    return archiver.finishEncoding();
}

/// Reads such an archive as a whole; the number of points found.
inline std::size_t readStrokes(const Data &bytes)
{
    KeyedUnarchiver unarchiver(bytes, classes());
    const auto list = unarchiver.decodeNode("standardAnnotations");
    std::size_t points = 0;
    for (std::size_t i = 0; list && i < list->size(); ++i) {
        const auto node = list->at(i);
        if (!node || !node->isObject()) {
            continue;
        }
        if (const auto found = std::dynamic_pointer_cast<Stroke>(node->asObject())) {
            points += found->points.size();
        }
    }
    return points;
}

/// Builds archives by hand, right or wrong ones.
class HandMadeArchive {
public:
    using Ref = BinaryPropertyListWriter::Ref;

    HandMadeArchive() { objects_.push_back(writer_.addString("$null")); }

    BinaryPropertyListWriter &writer() { return writer_; }
    std::uint32_t addObject(Ref value)
    {
        objects_.push_back(value);
        return static_cast<std::uint32_t>(objects_.size() - 1);
    }
    /// For an object that others refer to before it is there.
    void setObject(std::uint32_t uid, Ref value) { objects_.at(uid) = value; }
    Ref uid(std::uint32_t number) { return writer_.addUid(number); }
    Ref dictionary(const std::vector<std::pair<std::string, Ref>> &entries)
    {
        std::vector<Ref> keys;
        std::vector<Ref> values;
        for (const auto &[key, value] : entries) {
            keys.push_back(writer_.addString(key));
            values.push_back(value);
        }
        return writer_.addDictionary(keys, values);
    }
    std::uint32_t addClass(const std::string &name)
    {
        return addObject(dictionary({{"$classname", writer_.addString(name)}}));
    }
    /// An archived array or dictionary part: the list of references to the UIDs.
    Ref uidList(const std::vector<std::uint32_t> &uids)
    {
        std::vector<Ref> refs;
        refs.reserve(uids.size());
        for (const std::uint32_t number : uids) {
            refs.push_back(uid(number));
        }
        return writer_.addArray(refs);
    }
    Ref array(const std::vector<std::uint32_t> &uids, std::uint32_t classUid)
    {
        return dictionary({{"NS.objects", uidList(uids)}, {"$class", uid(classUid)}});
    }
    Data finish(const std::vector<std::pair<std::string, Ref>> &top)
    {
        const Ref topRef = dictionary(top);
        return writer_.finish(dictionary({{"$version", writer_.addInt(100000)},
                                          {"$archiver", writer_.addString("NSKeyedArchiver")},
                                          {"$top", topRef},
                                          {"$objects", writer_.addArray(objects_)}}));
    }

private:
    BinaryPropertyListWriter writer_;
    std::vector<Ref> objects_;
};

} // namespace orv::platform::samples
