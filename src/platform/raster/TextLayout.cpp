#include "platform/raster/TextLayout.h"

#include "platform/raster/GuiApplication.h"

#include <QFont>
#include <QPainter>
#include <QTextLine>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace orv::platform {

namespace {

constexpr double kAscent = 0.92;
constexpr double kLineHeight = 1.15;
constexpr double kUnbroken = 1e6;
/// Text set into exactly its own width stays on one line.
constexpr double kWidthSlack = 0.1;
constexpr double kMaxSize = 10000.0;

QFont toolkitFont(const Font &font, int pixelSize)
{
    QFont face(QString::fromStdString(font.family));
    face.setPixelSize(pixelSize);
    face.setBold(font.bold);
    // Letters stand at the same places whatever the scale.
    face.setHintingPreference(QFont::PreferNoHinting);
    return face;
}

Qt::Alignment toolkitAlignment(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::right:
        return Qt::AlignRight;
    case TextAlignment::center:
        return Qt::AlignHCenter;
    case TextAlignment::justified:
        return Qt::AlignJustify;
    case TextAlignment::left:
    case TextAlignment::natural:
        break;
    }
    return Qt::AlignLeft;
}

} // namespace

TextLayout::TextLayout(std::u16string_view text, const Font &font)
    : TextLayout(text, font, TextAlignment::left, 0.0)
{
}

TextLayout::TextLayout(std::u16string_view text, const Font &font, TextAlignment alignment,
                       double width)
    : font_(font)
{
    if (!(font.size > 0.0 && font.size <= kMaxSize)) {
        return;
    }
    ensureGuiApplication();
    const int pixelSize = static_cast<int>(std::ceil(font.size));
    unit_ = font.size / pixelSize;
    const QFont face = toolkitFont(font, pixelSize);
    const bool hasWidth = width > 0.0;
    QTextOption option(hasWidth ? toolkitAlignment(alignment) : Qt::AlignLeft);
    option.setWrapMode(hasWidth ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);

    const QString whole(reinterpret_cast<const QChar *>(text.data()),
                        static_cast<qsizetype>(text.size()));
    for (const QString &paragraph : whole.split(QLatin1Char('\n'))) {
        auto layout = std::make_unique<QTextLayout>(paragraph, face);
        layout->setTextOption(option);
        layout->setCacheEnabled(true);
        breakLines(*layout, width);
        paragraphs_.push_back(std::move(layout));
    }
    size_.height = lineCount_ * kLineHeight * font.size;
}

TextLayout::~TextLayout() = default;

void TextLayout::breakLines(QTextLayout &layout, double width)
{
    const double available = width > 0.0 ? width / unit_ + kWidthSlack : kUnbroken;
    const double lineHeight = kLineHeight * font_.size / unit_;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(available);
        const double baseline = lineCount_ * lineHeight + kAscent * font_.size / unit_;
        line.setPosition({0.0, baseline - line.ascent()});
        size_.width = std::max(size_.width, line.naturalTextWidth() * unit_);
        // Spaces that hang over the width count only for the cursor, which stops at the edge; in
        // a line from right to left that stands at the other end.
        const double cursor = line.cursorToX(line.textStart() + line.textLength());
        end_ = {std::max(line.naturalTextRect().right(), cursor) * unit_, baseline * unit_};
        ++lineCount_;
    }
    layout.endLayout();
}

void TextLayout::paint(QPainter &painter) const
{
    painter.scale(unit_, unit_);
    for (const auto &layout : paragraphs_) {
        layout->draw(&painter, {0.0, 0.0});
    }
}

} // namespace orv::platform
