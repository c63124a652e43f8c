#include "canvas/BackgroundDrawings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace orv::backgrounds {

namespace {

using platform::BlendMode;
using platform::Color;
using platform::CompositingOperation;
using platform::Font;
using platform::GraphicsContext;
using platform::Path;
using platform::Point;
using platform::Rect;
using platform::Size;

constexpr Color kChartColor{0.7411764860153198, 0.8941176533699036, 0.9490196108818054, 1.0};
constexpr double kBaseWidth = 1024.0;
constexpr double kBaseHeight = 768.0;

constexpr double kCircleLine = 10.0;
constexpr float kRadiusOfTwo = 260.0F;
constexpr float kRadiusOfThree = 190.0F;
constexpr double kRootOfThree = 1.732;

constexpr double kAxisShare = 0.85;
constexpr double kTickDistance = 20.0;
constexpr float kTickLength = 20.0F;
constexpr double kTickLine = 5.0;
constexpr double kShaftLine = 10.0;
constexpr double kHeadLine = 2.0;
constexpr double kHeadLength = 12.0;
constexpr double kHeadHalfWidth = 0.8;
constexpr float kTwoHeads = 24.0F;

constexpr double kBelowBand = 0.6699999999999999;
constexpr double kBand = 0.33;
constexpr double kColumns = 3.0;
constexpr double kColumnLine = 5.0;
constexpr double kAboveLetters = 53.0;
constexpr std::array<std::u16string_view, 3> kLetters{u"K", u"W", u"L"};
constexpr const char *kLetterFont = "Helvetica";
constexpr int kLargestLetter = 400;
/// By how many points a character may be narrower than at a smaller size: faces are fitted to
/// pixels. No character is lower than at a smaller size.
constexpr double kUnevenness = 1.0;

float single(double value)
{
    return static_cast<float>(value);
}

/// A white page, and on it the state in which a chart is drawn; it is restored when this goes.
class WhitePage {
public:
    WhitePage(GraphicsContext &context, Size size) : context_(context)
    {
        context_.setFillColor(Color::white());
        context_.fillRect(getImageFrame(size), CompositingOperation::copy);
        context_.saveState();
    }
    ~WhitePage() { context_.restoreState(); }
    WhitePage(const WhitePage &) = delete;
    WhitePage &operator=(const WhitePage &) = delete;

private:
    GraphicsContext &context_;
};

void strokeCircle(GraphicsContext &context, Point corner, double radius)
{
    Path circle;
    circle.addEllipse({corner, {2.0 * radius, 2.0 * radius}});
    context.strokePath(circle);
}

void strokeLine(GraphicsContext &context, Point from, Point to)
{
    Path line;
    line.moveTo(from);
    line.lineTo(to);
    context.strokePath(line);
}

void drawHead(GraphicsContext &context, Point tip, Point left, Point right)
{
    Path head;
    head.moveTo(tip);
    head.lineTo(left);
    head.lineTo(right);
    head.lineTo(tip);
    context.fillPath(head);
    context.strokePath(head);
}

void addTick(Path &ticks, Point from, Point to)
{
    ticks.moveTo(from);
    ticks.lineTo(from);
    ticks.lineTo(to);
}

void addHorizontalTick(Path &ticks, Point center)
{
    addTick(ticks, getAxisXPoint(true, center, kTickLength),
            getAxisXPoint(false, center, kTickLength));
}

void addVerticalTick(Path &ticks, Point center)
{
    addTick(ticks, getAxisYPoint(true, center, kTickLength),
            getAxisYPoint(false, center, kTickLength));
}

Path ticksRound(Point center, float length)
{
    Path ticks;
    const int count = static_cast<int>(length * 0.5 / kTickDistance);
    for (int i = 1; i < count; ++i) {
        const double distance = i * kTickDistance;
        addHorizontalTick(ticks, {center.x, center.y + distance});
        addVerticalTick(ticks, {center.x + distance, center.y});
        addHorizontalTick(ticks, {center.x, center.y - distance});
        addVerticalTick(ticks, {center.x - distance, center.y});
    }
    return ticks;
}

} // namespace

void drawVenn2(GraphicsContext &context, Size size)
{
    const float radius = getScale(size) * kRadiusOfTwo;
    const double r = radius;
    const Point center = getImageCenterPoint(size);
    const WhitePage page(context, size);
    context.setBlendMode(BlendMode::normal);
    context.setStrokeColor(kChartColor);
    context.setLineWidth(kCircleLine);
    strokeCircle(context, {center.x - r - 0.4 * r, center.y - r}, r);
    strokeCircle(context, {center.x - 0.6 * r, center.y - r}, r);
}

void drawVenn3(GraphicsContext &context, Size size)
{
    const float radius = getScale(size) * kRadiusOfThree;
    const double r = radius;
    const double h = kRootOfThree * r;
    const Point center = getImageCenterPoint(size);
    const WhitePage page(context, size);
    context.setBlendMode(BlendMode::normal);
    context.setStrokeColor(kChartColor);
    context.setLineWidth(kCircleLine);
    strokeCircle(context, {center.x - r, center.y - (r - h / 3.0)}, r);
    strokeCircle(context, {center.x - 1.5 * r, center.y - r - h / 6.0}, r);
    strokeCircle(context, {center.x - 0.5 * r, center.y - r - h / 6.0}, r);
}

void drawQuardrant(GraphicsContext &context, Size size)
{
    const float length = single(getSizeMin(size) * kAxisShare);
    const Point center = getImageCenterPoint(size);
    const WhitePage page(context, size);
    context.setStrokeColor(kChartColor);
    drawDoubleArrow(context, getAxisXPoint(true, center, length),
                    getAxisXPoint(false, center, length));
    drawDoubleArrow(context, getAxisYPoint(true, center, length),
                    getAxisYPoint(false, center, length));
    context.setLineWidth(kTickLine);
    context.strokePath(ticksRound(center, length));
}

void drawKWL(GraphicsContext &context, Size size)
{
    const float bandY = single(size.height * kBelowBand + size.height * kBand / 3.0);
    const float column = single(size.width / kColumns);
    const Size area{size.width / kColumns, size.height - bandY - kAboveLetters};
    const WhitePage page(context, size);
    context.setBlendMode(BlendMode::normal);
    context.setStrokeColor(kChartColor);
    context.setLineWidth(getScale(size) * kColumnLine);
    strokeLine(context, {0.0, bandY}, {size.width, bandY});
    for (std::size_t i = 0; i < kLetters.size(); ++i) {
        const float x = static_cast<float>(i + 1) * column;
        strokeLine(context, {x, size.height}, {x, 0.0});
        drawKWLText(context, kLetters.at(i), {x, bandY}, area, 0.0F);
    }
}

bool drawDoubleArrow(GraphicsContext &context, Point start, Point end)
{
    const Point whole = end - start;
    const float distance = single(std::sqrt(whole.x * whole.x + whole.y * whole.y));
    if (!(distance > kTwoHeads)) {
        return false;
    }
    const double share = kHeadLength / distance;
    const float dx = single(whole.x * share);
    const float dy = single(whole.y * share);
    const float px = single(dx * kHeadHalfWidth);
    const float py = single(dy * kHeadHalfWidth);
    const Point shaftStart{start.x + dx, start.y + dy};
    const Point shaftEnd{end.x - dx, end.y - dy};

    context.setLineWidth(kShaftLine);
    strokeLine(context, shaftStart, shaftEnd);
    context.setFillColor(kChartColor);
    context.setStrokeColor(kChartColor);
    context.setLineWidth(kHeadLine);
    drawHead(context, end, {shaftEnd.x - py, shaftEnd.y + px}, {shaftEnd.x + py, shaftEnd.y - px});
    drawHead(context, start, {shaftStart.x + py, shaftStart.y - px},
             {shaftStart.x - py, shaftStart.y + px});
    return true;
}

void drawKWLText(GraphicsContext &context, std::u16string_view text, Point point, Size area,
                 float textSize)
{
    const float size =
        textSize == 0.0F ? fontSizeForAreaSize(context, area, text, kLetterFont) : textSize;
    if (!(size > 0.0F)) {
        return;
    }
    const Font font{kLetterFont, size};
    const Size measured = context.measureText(text, font);
    const Point corner{point.x - (area.width + measured.width) / 2.0,
                       point.y + (area.height - measured.height) / 2.0};
    context.setFillColor(kChartColor);
    context.drawText(text, {corner, measured}, font, platform::TextAlignment::natural);
}

float fontSizeForAreaSize(GraphicsContext &context, Size area, std::u16string_view text,
                          const std::string &fontName)
{
    if (area.width == 0.0 && area.height == 0.0) {
        return 0.0F;
    }
    const auto measured = [&](int size) {
        return context.measureText(text, Font{fontName, static_cast<double>(size), true});
    };
    const double slack = kUnevenness * static_cast<double>(text.size());
    // Below a size that fits with room to spare all fit: a new size costs much to measure.
    int fitting = 0;
    for (int beyond = kLargestLetter + 1; beyond - fitting > 1;) {
        const int middle = (fitting + beyond) / 2;
        const Size size = measured(middle);
        const bool hasRoom = size.width + slack <= area.width && size.height <= area.height;
        (hasRoom ? fitting : beyond) = middle;
    }
    for (; fitting < kLargestLetter; ++fitting) {
        const Size next = measured(fitting + 1);
        if (next.width > area.width || next.height > area.height) {
            break;
        }
    }
    return static_cast<float>(fitting);
}

Rect getImageFrame(Size size)
{
    return {{0.0, 0.0}, size};
}

Point getImageCenterPoint(Size size)
{
    return getImageFrame(size).center();
}

float getScale(Size size)
{
    return single(size.height >= size.width ? size.width / kBaseWidth : size.height / kBaseHeight);
}

float getSizeMin(Size size)
{
    return single(std::min(size.width, size.height));
}

Point getAxisXPoint(bool left, Point center, float length)
{
    const float half = length / 2.0F;
    return {left ? center.x - half : center.x + half, center.y};
}

Point getAxisYPoint(bool lower, Point center, float length)
{
    const float half = length / 2.0F;
    return {center.x, lower ? center.y - half : center.y + half};
}

} // namespace orv::backgrounds
