#pragma once

#include "platform/ports/WindowServer.h"
#include "platform/values/Geometry.h"
#include "platform/values/Image.h"

#include <QCursor>

#include <vector>

namespace orv::platform {

/// The looks of the pointer over one window, ready to be shown.
///
/// Thread   main thread only, while the GUI application lives.
/// Units    rects and places in window points, y up.
class PointerLooks {
public:
    /// Replaces all of them; costs nothing more while they stay the same.
    void setRects(const std::vector<CursorRect> &rects);
    /// Device pixels a point, 1 at first.
    void setScale(double scale);

    /// By the last rect that holds the place; the arrow where none does.
    [[nodiscard]] const QCursor &at(Point place) const;

private:
    void prepare();

    double scale_ = 1.0;
    std::vector<CursorRect> rects_;
    /// One for each rect.
    std::vector<QCursor> cursors_;
    QCursor arrow_{Qt::ArrowCursor};
};

/// A cursor's pixels on a display of this scale; one without pixels for a picture without any.
[[nodiscard]] Image cursorPixels(const ImagePtr &picture, double scale);

} // namespace orv::platform
