#include "canvas/CanvasArchive.h"

#include "canvas/AnnotationRegistry.h"
#include "canvas/AnnotationsView.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <utility>

namespace orv {

namespace {

constexpr const char *kStandard = AnnotationsView::annotationModeKeyStandard;
constexpr const char *kSnapshot = AnnotationsView::annotationModeKeySnapshot;
constexpr const char *kFlipchart = AnnotationsView::annotationModeKeyFlipchart;

FrozenLists::List frozenList(const CanvasDocument::List &list)
{
    FrozenLists::List frozen;
    if (list) {
        frozen.reserve(list->size());
        for (const auto &annotation : *list) {
            frozen.push_back(annotation->isSettled() ? annotation : annotation->frozen());
        }
    }
    return frozen;
}

void addList(platform::ArchiveArray &array, const FrozenLists::List &list)
{
    for (const auto &annotation : list) {
        array.addObject(annotation);
    }
}

void encodeLists(platform::KeyedArchiver &archiver, const std::string &mode,
                 const FrozenLists &lists)
{
    archiver.encodeArray(mode + "Annotations", [&lists](platform::ArchiveArray &array) {
        addList(array, lists.annotations);
    });
    archiver.encodeArray(mode + "ClearedScreens", [&lists](platform::ArchiveArray &array) {
        for (const auto &screen : lists.clearedScreens) {
            array.addArray([&screen](platform::ArchiveArray &inner) { addList(inner, screen); });
        }
    });
    archiver.encodeArray(mode + "UndoHistory", [&lists](platform::ArchiveArray &array) {
        addList(array, lists.undoHistory);
    });
}

void encodePath(platform::KeyedArchiver &archiver, const char *key, const std::string &path)
{
    archiver.encodeString(key, path.empty() ? std::nullopt : std::optional(path));
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

SavedLists decodeLists(platform::KeyedUnarchiver &unarchiver, const std::string &mode)
{
    SavedLists lists;
    if (const auto node = unarchiver.decodeNode(mode + "Annotations")) {
        lists.annotations = listOf(*node);
    }
    if (const auto node = unarchiver.decodeNode(mode + "ClearedScreens")) {
        lists.clearedScreens = screensOf(*node);
    }
    if (const auto node = unarchiver.decodeNode(mode + "UndoHistory")) {
        lists.undoHistory = listOf(*node);
    }
    return lists;
}

std::string decodeMode(platform::KeyedUnarchiver &unarchiver)
{
    std::string mode = unarchiver.decodeString("annotationModeKey").value_or("");
    if (mode.empty()) {
        return kStandard;
    }
    if (mode != kStandard && mode != kSnapshot && mode != kFlipchart) {
        throw platform::Exception("archive: there is no annotation mode \"" + mode + "\"");
    }
    return mode;
}

} // namespace

FrozenLists frozenLists(const CanvasDocument &document, const std::string &modeKey)
{
    FrozenLists lists;
    lists.annotations = frozenList(document.annotations(modeKey));
    if (const auto *screens = document.clearedScreens(modeKey)) {
        for (const auto &screen : *screens) {
            lists.clearedScreens.push_back(frozenList(screen));
        }
    }
    lists.undoHistory = frozenList(document.undoHistory(modeKey));
    return lists;
}

platform::Data encodeDefaultData(const FrozenCanvas &canvas)
{
    platform::KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", canvas.annotationModeKey);
    encodeLists(archiver, "standard", canvas.standard);
    if (canvas.annotationModeKey == kFlipchart) {
        encodeLists(archiver, "flipchart", canvas.current);
        archiver.encodeInt("annotationBackdrop", canvas.currentBackdrop);
        encodePath(archiver, "flipchartImageFilePath", canvas.flipchartImageFilePath);
        encodePath(archiver, "backdropImageFilePath", canvas.backdropImageFilePath);
    } else if (canvas.annotationModeKey == kSnapshot) {
        encodeLists(archiver, "snapshot", canvas.current);
        encodePath(archiver, "snapshotImageFilePath", canvas.snapshotImageFilePath);
    }
    return archiver.finishEncoding();
}

platform::Data encodeSnapshotData(const FrozenCanvas &canvas)
{
    platform::KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", kSnapshot);
    archiver.encodeInt("annotationBackdrop", 0);
    encodeLists(archiver, "snapshot", canvas.current);
    encodePath(archiver, "snapshotImageFilePath", canvas.snapshotImageFilePath);
    return archiver.finishEncoding();
}

platform::Data encodeFlipchartData(const FrozenCanvas &canvas)
{
    platform::KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", kFlipchart);
    encodeLists(archiver, "flipchart", canvas.current);
    archiver.encodeInt("annotationBackdrop", canvas.currentBackdrop);
    encodePath(archiver, "backdropImageFilePath", canvas.backdropImageFilePath);
    return archiver.finishEncoding();
}

SavedCanvas decodeCanvas(platform::Data bytes)
{
    platform::KeyedUnarchiver unarchiver(std::move(bytes), AnnotationRegistry::shared().classes());
    const auto path = [&unarchiver](const char *key) {
        return unarchiver.decodeString(key).value_or("");
    };
    SavedCanvas saved;
    saved.standard = decodeLists(unarchiver, "standard");
    saved.annotationModeKey = decodeMode(unarchiver);
    if (saved.annotationModeKey == kFlipchart) {
        saved.annotationBackdrop =
            static_cast<std::int32_t>(unarchiver.decodeInt("annotationBackdrop"));
        saved.flipchartImageFilePath = path("flipchartImageFilePath");
        saved.backdropImageFilePath = path("backdropImageFilePath");
        saved.current = decodeLists(unarchiver, "flipchart");
    } else if (saved.annotationModeKey == kSnapshot) {
        saved.snapshotImageFilePath = path("snapshotImageFilePath");
        saved.current = decodeLists(unarchiver, "snapshot");
    }
    return saved;
}

} // namespace orv
