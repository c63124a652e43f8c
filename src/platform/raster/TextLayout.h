#pragma once

#include "platform/values/Font.h"
#include "platform/values/Geometry.h"

#include <QString>
#include <QTextLayout>

#include <memory>
#include <string_view>
#include <vector>

class QPainter;

namespace orv::platform {

/// Text broken into lines, with its origin at the top left and y down, in points.
///
/// Lines are 1.15 sizes apart and the first baseline lies 0.92 sizes below the top, whatever the
/// face: faces that replace each other have the same widths but not the same heights.
class TextLayout {
public:
    /// Breaks at line feeds only; so it is measured.
    TextLayout(std::u16string_view text, const Font &font);
    /// Breaks at `width`, too, where it is above 0; else all lines begin at the left.
    TextLayout(std::u16string_view text, const Font &font, TextAlignment alignment, double width);
    ~TextLayout();
    TextLayout(const TextLayout &) = delete;
    TextLayout &operator=(const TextLayout &) = delete;

    /// Width of the widest line, spaces at its end included, and height of all of them. Without
    /// height the font has no size, and there is nothing to paint.
    [[nodiscard]] Size size() const { return size_; }
    /// Where the baseline of the last line ends on the right, after its last space.
    [[nodiscard]] Point end() const { return end_; }
    /// With the painter's pen, transform and clip.
    void paint(QPainter &painter) const;

private:
    void breakLines(QTextLayout &layout, double width);

    Font font_;
    /// Points a unit of the layouts: the toolkit's fonts have whole sizes.
    double unit_ = 1.0;
    std::vector<std::unique_ptr<QTextLayout>> paragraphs_;
    int lineCount_ = 0;
    Size size_;
    Point end_;
};

} // namespace orv::platform
