#pragma once

#include "canvas/AnnotationList.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orv {

/// What is drawn, what was wiped and what can be redone, once for each annotation mode.
///
/// Lists are stacks: the last element is the newest. The lists of a mode exist only between
/// `addLists` and `removeLists`; an operation on a mode without lists does nothing.
/// Thread   main thread only.
class CanvasDocument {
public:
    using List = std::shared_ptr<AnnotationList>;
    using ClearedScreens = std::vector<List>;

    /// Three empty lists for the mode, in place of any that it had.
    void addLists(const std::string &modeKey);
    void removeLists(const std::string &modeKey);

    /// Null for a mode without lists.
    [[nodiscard]] List annotations(const std::string &modeKey) const;
    [[nodiscard]] const ClearedScreens *clearedScreens(const std::string &modeKey) const;
    [[nodiscard]] List undoHistory(const std::string &modeKey) const;
    /// For what comes out of an archive.
    void setAnnotations(const std::string &modeKey, List list);
    void setClearedScreens(const std::string &modeKey, ClearedScreens screens);
    void setUndoHistory(const std::string &modeKey, List list);

    [[nodiscard]] std::size_t annotationCount(const std::string &modeKey) const;
    [[nodiscard]] std::size_t clearedScreenCount(const std::string &modeKey) const;
    [[nodiscard]] std::size_t undoHistoryCount(const std::string &modeKey) const;
    /// The only one that takes input; null when there is none.
    [[nodiscard]] std::shared_ptr<Annotation> lastAnnotation(const std::string &modeKey) const;

    void append(const std::string &modeKey, const std::shared_ptr<Annotation> &annotation);
    void removeLastAnnotation(const std::string &modeKey);
    void emptyUndoHistory(const std::string &modeKey);
    /// Moves the last annotation to the redo stack; on a blank canvas brings the last wiped screen
    /// back and leaves a clear-screen record. False when there is nothing to undo.
    bool undo(const std::string &modeKey);
    /// Takes the newest entry off the redo stack and puts it back on the canvas, unless it is a
    /// clear-screen record. Answers the entry; null on an empty stack.
    std::shared_ptr<Annotation> redo(const std::string &modeKey);
    /// Puts the list aside as it is, even empty, and starts a new one.
    void wipe(const std::string &modeKey);

private:
    std::map<std::string, List> annotations_;
    std::map<std::string, ClearedScreens> clearedScreens_;
    std::map<std::string, List> undoHistory_;
};

} // namespace orv
