#include "platform/raster/PainterModes.h"

#include <QRgba64>

namespace orv::platform {

namespace {

float unit(double component)
{
    return component > 0.0 ? static_cast<float>(component < 1.0 ? component : 1.0) : 0.0F;
}

} // namespace

QPainter::CompositionMode painterMode(BlendMode mode)
{
    switch (mode) {
    case BlendMode::normal:
        return QPainter::CompositionMode_SourceOver;
    case BlendMode::multiply:
        return QPainter::CompositionMode_Multiply;
    case BlendMode::screen:
        return QPainter::CompositionMode_Screen;
    case BlendMode::overlay:
        return QPainter::CompositionMode_Overlay;
    case BlendMode::darken:
        return QPainter::CompositionMode_Darken;
    case BlendMode::lighten:
        return QPainter::CompositionMode_Lighten;
    case BlendMode::colorDodge:
        return QPainter::CompositionMode_ColorDodge;
    case BlendMode::colorBurn:
        return QPainter::CompositionMode_ColorBurn;
    case BlendMode::softLight:
        return QPainter::CompositionMode_SoftLight;
    case BlendMode::hardLight:
        return QPainter::CompositionMode_HardLight;
    case BlendMode::difference:
        return QPainter::CompositionMode_Difference;
    case BlendMode::exclusion:
        return QPainter::CompositionMode_Exclusion;
    case BlendMode::clear:
        return QPainter::CompositionMode_Clear;
    case BlendMode::copy:
        return QPainter::CompositionMode_Source;
    case BlendMode::sourceIn:
        return QPainter::CompositionMode_SourceIn;
    case BlendMode::sourceOut:
        return QPainter::CompositionMode_SourceOut;
    case BlendMode::sourceAtop:
        return QPainter::CompositionMode_SourceAtop;
    case BlendMode::destinationOver:
        return QPainter::CompositionMode_DestinationOver;
    case BlendMode::destinationIn:
        return QPainter::CompositionMode_DestinationIn;
    case BlendMode::destinationOut:
        return QPainter::CompositionMode_DestinationOut;
    case BlendMode::destinationAtop:
        return QPainter::CompositionMode_DestinationAtop;
    case BlendMode::exclusiveOr:
        return QPainter::CompositionMode_Xor;
    case BlendMode::plusLighter:
        return QPainter::CompositionMode_Plus;
    }
    return QPainter::CompositionMode_SourceOver;
}

QPainter::CompositionMode painterMode(CompositingOperation operation)
{
    switch (operation) {
    case CompositingOperation::clear:
        return QPainter::CompositionMode_Clear;
    case CompositingOperation::copy:
        return QPainter::CompositionMode_Source;
    case CompositingOperation::sourceOver:
        return QPainter::CompositionMode_SourceOver;
    case CompositingOperation::sourceIn:
        return QPainter::CompositionMode_SourceIn;
    case CompositingOperation::sourceOut:
        return QPainter::CompositionMode_SourceOut;
    case CompositingOperation::sourceAtop:
        return QPainter::CompositionMode_SourceAtop;
    case CompositingOperation::destinationOver:
        return QPainter::CompositionMode_DestinationOver;
    case CompositingOperation::destinationIn:
        return QPainter::CompositionMode_DestinationIn;
    case CompositingOperation::destinationOut:
        return QPainter::CompositionMode_DestinationOut;
    case CompositingOperation::destinationAtop:
        return QPainter::CompositionMode_DestinationAtop;
    case CompositingOperation::exclusiveOr:
        return QPainter::CompositionMode_Xor;
    case CompositingOperation::plusLighter:
        return QPainter::CompositionMode_Plus;
    }
    return QPainter::CompositionMode_SourceOver;
}

QColor painterColor(const Color &color)
{
    return QColor::fromRgbF(unit(color.red()), unit(color.greenComponent()), unit(color.blue()),
                            unit(color.alpha()));
}

std::uint32_t pixelOf(const Color &color)
{
    return painterColor(color).rgba64().premultiplied().toArgb32();
}

QTransform painterTransform(const AffineTransform &transform)
{
    return {transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
}

} // namespace orv::platform
