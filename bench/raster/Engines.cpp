#include "Engines.h"

#include "platform/raster/BandPainter.h"
#include "platform/raster/DrawingRecorder.h"
#include "platform/raster/ImageConversion.h"
#include "platform/raster/PainterModes.h"
#include "platform/raster/RasterContext.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <agg_conv_dash.h>
#include <agg_conv_stroke.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_scanline.h>
#include <agg_scanline_u.h>

namespace orv::bench {

namespace {

using platform::Path;
using platform::PathElementType;

void drawStroke(platform::GraphicsContext &context, const BenchStroke &stroke)
{
    context.saveState();

    context.setLineCap(platform::LineCap::round);
    context.setLineJoin(platform::LineJoin::round);
    context.setLineWidth(stroke.width);
    context.setLineDash(0.0, stroke.dashes);
    context.setStrokeColor(stroke.color);
    context.strokePath(stroke.path);
    context.restoreState();
}

platform::PixelGrid gridOf(const platform::Image &picture)
{
    return {picture.size(), 1.0};
}

/// The context's y points up, that of the strokes down.
platform::AffineTransform turnedOver(const platform::Image &picture)
{
    return {1.0, 0.0, 0.0, -1.0, 0.0, static_cast<double>(picture.height())};
}

QPainterPath painterPath(const Path &path)
{
    QPainterPath out;
    path.forEach([&out](const Path::Element &element) {
        if (element.type == PathElementType::moveToPoint) {
            out.moveTo(element.points[0].x, element.points[0].y);
        } else {
            out.lineTo(element.points[0].x, element.points[0].y);
        }
    });
    return out;
}

using AggPixels = agg::pixfmt_bgra32_pre;

template <class Source>
void strokeWithAgg(agg::renderer_base<AggPixels> &target, Source &source, const BenchStroke &stroke)
{
    agg::conv_stroke<Source> outline(source);
    outline.width(stroke.width);
    outline.line_cap(agg::round_cap);
    outline.line_join(agg::round_join);
    agg::rasterizer_scanline_aa<> rasterizer;
    agg::scanline_u8 scanline;
    rasterizer.add_path(outline);
    const platform::Color &color = stroke.color;
    agg::rgba8 ink(agg::rgba(color.red(), color.greenComponent(), color.blue(), color.alpha()));
    ink.premultiply();
    agg::render_scanlines_aa_solid(rasterizer, scanline, target, ink);
}

} // namespace

void PainterEngine::paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
                          const std::optional<platform::PixelRect> &clip) const
{
    QImage image(reinterpret_cast<uchar *>(picture.data()), picture.width(), picture.height(),
                 QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (clip) {
        painter.setClipRect(clip->x, clip->y, clip->width, clip->height);
    }
    for (const BenchStroke &stroke : strokes) {
        QPen pen(platform::painterColor(stroke.color), stroke.width, Qt::SolidLine, Qt::RoundCap,
                 Qt::RoundJoin);
        if (!stroke.dashes.empty()) {
            QList<qreal> pattern;
            for (const double length : stroke.dashes) {
                pattern.append(length / stroke.width);
            }
            pen.setDashPattern(pattern);
        }
        painter.setPen(pen);
        painter.drawPath(painterPath(stroke.path));
    }
}

void AggEngine::paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
                      const std::optional<platform::PixelRect> &clip) const
{
    agg::rendering_buffer buffer(reinterpret_cast<agg::int8u *>(picture.data()),
                                 static_cast<unsigned>(picture.width()),
                                 static_cast<unsigned>(picture.height()), picture.width() * 4);
    AggPixels pixels(buffer);
    agg::renderer_base<AggPixels> target(pixels);
    if (clip) {
        target.clip_box(clip->x, clip->y, clip->x + clip->width - 1, clip->y + clip->height - 1);
    }
    for (const BenchStroke &stroke : strokes) {
        agg::path_storage path;
        stroke.path.forEach([&path](const Path::Element &element) {
            if (element.type == PathElementType::moveToPoint) {
                path.move_to(element.points[0].x, element.points[0].y);
            } else {
                path.line_to(element.points[0].x, element.points[0].y);
            }
        });
        if (stroke.dashes.size() >= 2) {
            agg::conv_dash<agg::path_storage> dashed(path);
            dashed.add_dash(stroke.dashes[0], stroke.dashes[1]);
            strokeWithAgg(target, dashed, stroke);
        } else {
            strokeWithAgg(target, path, stroke);
        }
    }
}

void MaskEngine::paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
                       const std::optional<platform::PixelRect> &clip) const
{
    platform::RasterContext context(picture, gridOf(picture), clip);
    context.concatenate(turnedOver(picture));
    for (const BenchStroke &stroke : strokes) {
        drawStroke(context, stroke);
    }
}

void BandsEngine::paint(platform::Image &picture, const std::vector<BenchStroke> &strokes,
                        const std::optional<platform::PixelRect> & /*clip*/) const
{
    const platform::PixelGrid grid = gridOf(picture);
    platform::DrawingRecorder prelude(grid);
    prelude.concatenate(turnedOver(picture));
    std::vector<platform::DrawingRecord> things;
    for (const BenchStroke &stroke : strokes) {
        platform::DrawingRecorder recorder(grid, prelude.state());
        drawStroke(recorder, stroke);
        things.push_back(recorder.take());
    }
    platform::paintThings(picture, grid, prelude.take(), things);
}

} // namespace orv::bench
