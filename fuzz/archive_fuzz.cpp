#include "annotations/FigureAnnotations.h"
#include "canvas/CanvasArchive.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace orv::platform;

constexpr std::array<const char *, 8> kKeys{"annotationModeKey",
                                            "standardAnnotations",
                                            "standardClearedScreens",
                                            "annotationBackdrop",
                                            "path",
                                            "lines",
                                            "next",
                                            "$class"};
constexpr std::array<const char *, 3> kEntryKeys{"elementType", "elementPoints", "color"};

/// No reader makes more of a file than a multiple of its size; a walk beyond this one is a defect.
constexpr std::size_t kVisitsPerByte = 16;
constexpr std::size_t kSpareVisits = 1U << 18U;

std::size_t visitsLeft = 0;
std::size_t checksum = 0;

void walk(const ArchiveNode &node)
{
    if (visitsLeft-- == 0) {
        std::abort();
    }
    if (node.isNumber()) {
        checksum += node.asBool() ? 1U : 0U;
        checksum += static_cast<std::size_t>(node.asInt());
    } else if (node.isString()) {
        checksum += node.asString().size();
    } else if (node.isData()) {
        const auto data = node.asData();
        checksum += data.empty() ? 0U : data.front() + data.back();
    } else if (node.isObject()) {
        checksum += node.asObject() ? 1U : 0U;
    } else if (node.isArray()) {
        for (std::size_t i = 0; i < node.size(); ++i) {
            if (const auto child = node.at(i)) {
                walk(*child);
            }
        }
    } else {
        for (const char *key : kEntryKeys) {
            if (const auto child = node.find(key)) {
                walk(*child);
            }
        }
    }
}

void readScope(KeyedUnarchiver &coder)
{
    for (const char *key : kKeys) {
        if (const auto node = coder.decodeNode(key)) {
            walk(*node);
        }
    }
}

class AnyAnnotation : public Archivable {
public:
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return {"Annotation"};
    }
    void encodeWithCoder(KeyedArchiver &) const override {}

    static std::shared_ptr<Archivable> decode(KeyedUnarchiver &coder)
    {
        checksum += static_cast<std::size_t>(coder.decodeInt("annotationType"));
        checksum += coder.decodeFloat("annotationSize") > 1.0F ? 1U : 0U;
        checksum += coder.containsValueForKey("dashMode") && coder.decodeBool("dashMode") ? 1U : 0U;
        checksum += coder.decodeString("title").value_or("").size();
        checksum += coder.decodeData("picture").value_or(Data{}).size();
        readScope(coder);
        return std::make_shared<AnyAnnotation>();
    }
};

const ClassTable &classes()
{
    static const ClassTable table = [] {
        ClassTable made;
        for (const char *name : {"Annotation", "PencilAnnotation", "TextAnnotation"}) {
            made.add(name, &AnyAnnotation::decode);
        }
        return made;
    }();
    return table;
}

orv::CanvasDocument documentOf(const orv::SavedLists &lists)
{
    orv::CanvasDocument document;
    document.setAnnotations("", lists.annotations);
    document.setClearedScreens(
        "", lists.clearedScreens.value_or(orv::CanvasDocument::ClearedScreens{}));
    document.setUndoHistory("", lists.undoHistory);
    return document;
}

std::array<std::size_t, 3> countsOf(const orv::SavedLists &lists)
{
    const orv::CanvasDocument document = documentOf(lists);
    return {document.annotationCount(""), document.clearedScreenCount(""),
            document.undoHistoryCount("")};
}

std::optional<orv::SavedCanvas> readCanvas(const std::uint8_t *bytes, std::size_t size)
{
    try {
        return orv::decodeCanvas(Data(bytes, bytes + size));
    } catch (const Exception &) {
        return std::nullopt;
    }
}

/// What was read can be written, and comes back with as much in each list.
void writeAndReadAgain(const orv::SavedCanvas &saved)
{
    orv::FrozenCanvas canvas;
    canvas.annotationModeKey = saved.annotationModeKey;
    canvas.standard = orv::frozenLists(documentOf(saved.standard), "");
    canvas.current = orv::frozenLists(documentOf(saved.current), "");
    const orv::SavedCanvas again = orv::decodeCanvas(orv::encodeDefaultData(canvas));
    if (countsOf(again.standard) != countsOf(saved.standard) ||
        countsOf(again.current) != countsOf(saved.current) ||
        again.annotationModeKey != saved.annotationModeKey) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    visitsLeft = kSpareVisits + kVisitsPerByte * size;
    try {
        KeyedUnarchiver unarchiver(Data(bytes, bytes + size), classes());
        readScope(unarchiver);
    } catch (const Exception &) {
        checksum += 1;
    }
    if (const auto saved = readCanvas(bytes, size)) {
        writeAndReadAgain(*saved);
    }
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    orv::registerStrokeAnnotations(orv::AnnotationRegistry::shared());
    orv::registerFigureAnnotations(orv::AnnotationRegistry::shared());
    return 0;
}
