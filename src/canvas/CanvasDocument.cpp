#include "canvas/CanvasDocument.h"

#include <utility>

namespace orv {

namespace {

template <class Map>
auto valueOf(const Map &map, const std::string &key) -> typename Map::mapped_type
{
    const auto found = map.find(key);
    return found == map.end() ? typename Map::mapped_type{} : found->second;
}

std::size_t countOf(const CanvasDocument::List &list)
{
    return list ? list->size() : 0;
}

} // namespace

void CanvasDocument::addLists(const std::string &modeKey)
{
    annotations_[modeKey] = std::make_shared<AnnotationList>();
    clearedScreens_[modeKey] = {};
    undoHistory_[modeKey] = std::make_shared<AnnotationList>();
}

void CanvasDocument::removeLists(const std::string &modeKey)
{
    annotations_.erase(modeKey);
    clearedScreens_.erase(modeKey);
    undoHistory_.erase(modeKey);
}

CanvasDocument::List CanvasDocument::annotations(const std::string &modeKey) const
{
    return valueOf(annotations_, modeKey);
}

const CanvasDocument::ClearedScreens *
CanvasDocument::clearedScreens(const std::string &modeKey) const
{
    const auto found = clearedScreens_.find(modeKey);
    return found == clearedScreens_.end() ? nullptr : &found->second;
}

CanvasDocument::List CanvasDocument::undoHistory(const std::string &modeKey) const
{
    return valueOf(undoHistory_, modeKey);
}

void CanvasDocument::setAnnotations(const std::string &modeKey, List list)
{
    annotations_[modeKey] = std::move(list);
}

void CanvasDocument::setClearedScreens(const std::string &modeKey, ClearedScreens screens)
{
    clearedScreens_[modeKey] = std::move(screens);
}

void CanvasDocument::setUndoHistory(const std::string &modeKey, List list)
{
    undoHistory_[modeKey] = std::move(list);
}

std::size_t CanvasDocument::annotationCount(const std::string &modeKey) const
{
    return countOf(annotations(modeKey));
}

std::size_t CanvasDocument::clearedScreenCount(const std::string &modeKey) const
{
    const ClearedScreens *screens = clearedScreens(modeKey);
    return screens == nullptr ? 0 : screens->size();
}

std::size_t CanvasDocument::undoHistoryCount(const std::string &modeKey) const
{
    return countOf(undoHistory(modeKey));
}

std::shared_ptr<Annotation> CanvasDocument::lastAnnotation(const std::string &modeKey) const
{
    const List list = annotations(modeKey);
    return countOf(list) == 0 ? nullptr : list->back();
}

void CanvasDocument::append(const std::string &modeKey,
                            const std::shared_ptr<Annotation> &annotation)
{
    if (const List list = annotations(modeKey)) {
        list->push_back(annotation);
    }
}

void CanvasDocument::removeLastAnnotation(const std::string &modeKey)
{
    const List list = annotations(modeKey);
    if (countOf(list) != 0) {
        list->pop_back();
    }
}

void CanvasDocument::emptyUndoHistory(const std::string &modeKey)
{
    if (const List history = undoHistory(modeKey)) {
        history->clear();
    }
}

bool CanvasDocument::undo(const std::string &modeKey)
{
    const List list = annotations(modeKey);
    const List history = undoHistory(modeKey);
    if (!list || !history) {
        return false;
    }
    if (!list->empty()) {
        history->push_back(list->back());
        list->pop_back();
        return true;
    }
    ClearedScreens &screens = clearedScreens_[modeKey];
    if (screens.empty()) {
        return false;
    }
    annotations_[modeKey] = screens.back();
    screens.pop_back();
    history->push_back(Annotation::annotationOfType(annotation_type::clearScreen));
    return true;
}

std::shared_ptr<Annotation> CanvasDocument::redo(const std::string &modeKey)
{
    const List history = undoHistory(modeKey);
    if (countOf(history) == 0) {
        return nullptr;
    }
    std::shared_ptr<Annotation> entry = history->back();
    history->pop_back();
    if (entry->annotationType() != annotation_type::clearScreen) {
        append(modeKey, entry);
    }
    return entry;
}

void CanvasDocument::wipe(const std::string &modeKey)
{
    if (const List list = annotations(modeKey)) {
        clearedScreens_[modeKey].push_back(list);
        annotations_[modeKey] = std::make_shared<AnnotationList>();
    }
}

} // namespace orv
