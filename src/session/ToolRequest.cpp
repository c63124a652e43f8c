#include "session/ToolRequest.h"

namespace orv {

namespace {

std::uint32_t stampOfSubtype(std::uint16_t subtype)
{
    switch (subtype) {
    case 2:
        return 2;
    case 3:
        return 0;
    case 4:
        return 3;
    case 5:
        return 1;
    case 6:
        return 5;
    default:
        return 4;
    }
}

constexpr float kStampSizeOffset = 100.0F;
constexpr std::uint16_t kArrowSubtype = 2;
constexpr std::int32_t kSingleArrowStyle = 98;
constexpr std::int32_t kPlainLineStyle = 99;

// In single precision, as the sizes and colours of requests are.
double component(std::uint32_t argb, unsigned shift)
{
    return static_cast<float>((argb >> shift) & 0xFFU) / 255.0F;
}

} // namespace

const char *buttonForDrawType(std::uint16_t type)
{
    switch (type) {
    case 1:
        return "highlighterButton";
    case 2:
        return "eraserButton";
    case 3:
        return "rectangleButton";
    case 4:
        return "circleButton";
    case 5:
        return "textButton";
    case 6:
        return "stampButton";
    case 7:
        return "lineButton";
    case 9:
        return nullptr;
    default:
        return "penButton";
    }
}

void applyToolRequest(const ToolRequest &request, AnnotationTool &tool)
{
    float size = request.size;
    std::uint32_t argb = request.ARGB;
    std::int32_t style = 0;
    if (tool.annotationType() == annotation_type::stamp) {
        argb = stampOfSubtype(request.subtype);
        size += kStampSizeOffset;
    } else if (tool.annotationType() == annotation_type::line) {
        style = request.subtype == kArrowSubtype ? kSingleArrowStyle : kPlainLineStyle;
    }
    tool.setFitMode(false);
    tool.setAnnotationSize(size);
    tool.setAnnotationStyle(style);
    tool.setAnnotationDash(request.spacing != 0);
    tool.setAnnotationColor(
        {component(argb, 16), component(argb, 8), component(argb, 0), component(argb, 24)});
}

} // namespace orv
