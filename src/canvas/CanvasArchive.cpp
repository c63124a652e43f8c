#include "canvas/CanvasArchive.h"

#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

namespace orv {

namespace {

constexpr const char *kStandard = AnnotationsView::annotationModeKeyStandard;

void addList(platform::ArchiveArray &array, const CanvasDocument::List &list)
{
    if (list) {
        for (const auto &annotation : *list) {
            array.addObject(annotation);
        }
    }
}

CanvasDocument::List listOf(const platform::ArchiveNode &node)
{
    auto list = std::make_shared<AnnotationList>();
    for (std::size_t i = 0; i < node.size(); ++i) {
        const auto element = node.at(i);
        auto annotation =
            element ? std::dynamic_pointer_cast<Annotation>(element->asObject()) : nullptr;
        if (!annotation) {
            throw platform::Exception("archive: a list of annotations holds something else");
        }
        list->push_back(std::move(annotation));
    }
    return list;
}

CanvasDocument::ClearedScreens screensOf(const platform::ArchiveNode &node)
{
    CanvasDocument::ClearedScreens screens;
    for (std::size_t i = 0; i < node.size(); ++i) {
        const auto element = node.at(i);
        screens.push_back(element ? listOf(*element) : std::make_shared<AnnotationList>());
    }
    return screens;
}

} // namespace

platform::Data encodeCanvas(const CanvasDocument &document, const std::string &annotationModeKey)
{
    platform::KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", annotationModeKey);
    archiver.encodeArray("standardAnnotations", [&](platform::ArchiveArray &array) {
        addList(array, document.annotations(kStandard));
    });
    archiver.encodeArray("standardClearedScreens", [&](platform::ArchiveArray &array) {
        if (const auto *screens = document.clearedScreens(kStandard)) {
            for (const auto &screen : *screens) {
                array.addArray([&](platform::ArchiveArray &inner) { addList(inner, screen); });
            }
        }
    });
    archiver.encodeArray("standardUndoHistory", [&](platform::ArchiveArray &array) {
        addList(array, document.undoHistory(kStandard));
    });
    return archiver.finishEncoding();
}

SavedCanvas decodeCanvas(const platform::Data &bytes)
{
    platform::KeyedUnarchiver unarchiver(bytes, AnnotationRegistry::shared().classes());
    SavedCanvas saved;
    if (const auto node = unarchiver.decodeNode("standardAnnotations")) {
        saved.standardAnnotations = listOf(*node);
    }
    if (const auto node = unarchiver.decodeNode("standardClearedScreens")) {
        saved.standardClearedScreens = screensOf(*node);
    }
    if (const auto node = unarchiver.decodeNode("standardUndoHistory")) {
        saved.standardUndoHistory = listOf(*node);
    }
    saved.annotationModeKey = unarchiver.decodeString("annotationModeKey").value_or("");
    return saved;
}

} // namespace orv
