#include "Engines.h"
#include "platform/raster/GuiApplication.h"
#include "platform/raster/ImageConversion.h"
#include "platform/raster/Pictures.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <iostream>
#include <memory>
#include <vector>

// A picture of what engines make of the same strokes, side by side, to look at:
//
//   stroke_sheet FILE.png

namespace {

using namespace orv;
using bench::BenchStroke;
using platform::Color;
using platform::Image;
using platform::Path;
using platform::Point;

constexpr int kCellWidth = 560;
constexpr int kMargin = 24;
constexpr double kInk = 0.55;

Path wave(Point from, double length, double height)
{
    Path path;
    path.moveTo(from);
    constexpr double step = 3.0;
    for (int i = 1; i * step <= length; ++i) {
        path.lineTo({from.x + i * step, from.y + height * std::sin(i * step * 0.06)});
    }
    return path;
}

Path zigzag(Point from, double step, double height, int count)
{
    Path path;
    path.moveTo(from);
    for (int i = 1; i <= count; ++i) {
        path.lineTo({from.x + i * step, from.y + (i % 2 == 0 ? 0.0 : height)});
    }
    return path;
}

Path loop(Point center, double radius)
{
    Path path;
    for (int i = 0; i <= 90; ++i) {
        const double turn = i * 0.11;
        const double r = radius * (1.0 - i / 260.0);
        const Point p{center.x + r * std::cos(turn), center.y + r * std::sin(turn)};
        i == 0 ? path.moveTo(p) : path.lineTo(p);
    }
    return path;
}

Path dot(Point at)
{
    Path path;
    path.moveTo(at);
    path.lineTo(at);
    return path;
}

Path arrow(Point from, Point to, double head)
{
    Path path;
    path.moveTo(from);
    path.lineTo(to);
    path.moveTo({to.x - head, to.y - head * 0.7});
    path.lineTo(to);
    path.lineTo({to.x - head, to.y + head * 0.7});
    return path;
}

std::vector<BenchStroke> rowOf(double width, double top, double height)
{
    const double middle = top + height / 2.0;
    const Color pen(0.1, 0.2, 0.6);
    const Color marker(0.9, 0.7, 0.0, kInk);
    const double swing = height / 2.0 - width / 2.0 - 4.0;
    return {
        {wave({30.0, middle}, 110.0, swing), width, pen, {}},
        {zigzag({170.0, middle - swing}, 9.0, swing * 2.0, 6), width, pen, {}},
        {dot({260.0, middle}), width, pen, {}},
        {wave({300.0, middle}, 90.0, swing), width, pen, {width * 2.0 + 2.0, width * 1.5 + 3.0}},
        {loop({430.0, middle}, swing), width, marker, {}},
        {arrow({490.0, middle + swing / 2.0}, {530.0, middle - swing / 2.0}, 8.0 + width / 4.0),
         width,
         pen,
         {}},
    };
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::cerr << "usage: stroke_sheet FILE.png\n";
        return 2;
    }
    platform::ensureGuiApplication();
    const std::vector<double> widths{0.5, 1.0, 2.0, 4.0, 8.0, 15.0, 25.0, 40.0};
    std::vector<BenchStroke> strokes;
    double top = kMargin;
    for (const double width : widths) {
        const double height = 44.0 + width * 1.5;
        const auto row = rowOf(width, top, height);
        strokes.insert(strokes.end(), row.begin(), row.end());
        top += height;
    }
    const std::vector<std::unique_ptr<bench::Engine>> engines = [] {
        std::vector<std::unique_ptr<bench::Engine>> all;
        all.push_back(std::make_unique<bench::PainterEngine>());
        all.push_back(std::make_unique<bench::AggEngine>());
        all.push_back(std::make_unique<bench::MaskEngine>());
        return all;
    }();
    Image sheet(kCellWidth * static_cast<int>(engines.size()), static_cast<int>(top));
    std::fill_n(sheet.data(), sheet.width() * sheet.height(), 0xFFFFFFFFU);
    for (std::size_t i = 0; i < engines.size(); ++i) {
        Image cell(kCellWidth, sheet.height());
        engines[i]->paint(cell, strokes, std::nullopt);
        QImage target = QImage(reinterpret_cast<uchar *>(sheet.data()), sheet.width(),
                               sheet.height(), QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&target);
        painter.drawImage(static_cast<int>(i) * kCellWidth, 0, platform::viewOf(cell));
        painter.drawText(static_cast<int>(i) * kCellWidth + 30, kMargin - 8,
                         QString::fromStdString(engines[i]->name()));
    }
    if (!platform::writePng(argv[1], sheet)) {
        std::cerr << argv[1] << ": can't be written\n";
        return 1;
    }
    return 0;
}
