#pragma once

#include "canvas/Annotation.h"
#include "platform/values/Path.h"

namespace orv {

/// A freehand stroke: each input event adds a point, nothing is smoothed or thinned out.
class PathAnnotation : public Annotation {
public:
    PathAnnotation() = default;
    /// Moves, lines, quadratic curves and closes come back; other elements are skipped.
    explicit PathAnnotation(platform::KeyedUnarchiver &coder);

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    /// Without a detour through an archive: a stroke in progress may be very long.
    [[nodiscard]] std::shared_ptr<const platform::Archivable> frozen() const override;

    [[nodiscard]] const platform::Path &path() const { return path_; }

    void draw(platform::GraphicsContext &context) override;
    /// A line of no length to the same point makes a click a round dot.
    void mouseDownEventAtPoint(platform::Point point) override;
    void mouseDraggedEventAtPoint(platform::Point point) override;
    /// A release away from the last point closes the outline with a straight line to its start.
    void mouseUpEventAtPoint(platform::Point point) override;
    bool shouldFinalize() override { return true; }

protected:
    /// Shares no point with the other one: each may belong to a thread of its own.
    PathAnnotation(const PathAnnotation &other);

private:
    platform::Path path_;
};

/// Pen: opaque.
class PencilAnnotation : public PathAnnotation {
public:
    PencilAnnotation();
    using PathAnnotation::PathAnnotation;
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
};

/// Highlighter: half transparent.
class HighlighterAnnotation : public PathAnnotation {
public:
    HighlighterAnnotation();
    using PathAnnotation::PathAnnotation;
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
};

} // namespace orv
