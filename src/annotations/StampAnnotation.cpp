#include "annotations/StampAnnotation.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"
#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"

#include <fmt/format.h>

#include <array>

namespace orv {

namespace {

using platform::Point;

struct StampKind {
    std::string_view type;
    std::int32_t align;
};

constexpr std::int32_t kCentre = 1;
constexpr std::int32_t kTopLeft = 6;

constexpr std::array<StampKind, 6> kStampKinds{{
    {"pointer", kTopLeft},
    {"star", kCentre},
    {"heart", kCentre},
    {"smile", kCentre},
    {"check", kCentre},
    {"x", kCentre},
}};

constexpr double kStampAlpha = 1.0;
constexpr double kFullComponent = 255.0;
constexpr double kPercentBase = 100.0;
constexpr std::int32_t kSmallestVariant = 1;
constexpr std::int32_t kLargestVariant = 4;

// Components of a file can be any number; one that no byte holds makes the colour no stamp's.
std::uint32_t byteOf(double component)
{
    const double byte = component * kFullComponent;
    const bool isByte = byte > -1.0 && byte < kFullComponent + 1.0;
    return static_cast<std::uint32_t>(isByte ? static_cast<std::int32_t>(byte) : -1);
}

std::int32_t sizeIndexOf(double size)
{
    if (size >= kPercentBase) {
        return kLargestVariant;
    }
    return size >= kSmallestVariant && size < kLargestVariant + 1 ? static_cast<std::int32_t>(size)
                                                                  : kSmallestVariant;
}

} // namespace

StampAnnotation::StampAnnotation()
{
    setAlphaComponent(kStampAlpha);
}

StampAnnotation::StampAnnotation(platform::KeyedUnarchiver &coder)
    : Annotation(coder), dragOrigin_{coder.decodeFloat("originX"), coder.decodeFloat("originY")}
{
    updateStampInfo();
}

std::vector<std::string> StampAnnotation::archiveClassNames() const
{
    return {"StampAnnotation", "Annotation"};
}

void StampAnnotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    Annotation::encodeWithCoder(coder);
    coder.encodeFloat("originX", static_cast<float>(dragOrigin_.x));
    coder.encodeFloat("originY", static_cast<float>(dragOrigin_.y));
}

void StampAnnotation::draw(platform::GraphicsContext &context)
{
    const std::string name = fmt::format("{}{}.png", stampType_, sizeIndex_);
    context.saveState();
    updateLineDash(context, dashMode());
    const auto image =
        platform::Platform::current().pictures().picture(platform::pathForImageResource(name));
    if (image) {
        const float scale =
            annotationSize() > kPercentBase
                ? static_cast<float>((annotationSize() - kPercentBase) / kPercentBase)
                : 1.0F;
        const platform::Size size{image->size().width * scale, image->size().height * scale};
        const Point corner = dragOrigin_ - setStampAlignment(stampAlign_, size);
        context.drawImage(image, {corner, size}, platform::CompositingOperation::sourceOver, 1.0);
    }
    // Only now: a picture goes over what is there, whatever mode a file names.
    context.setBlendMode(blendMode());
    context.restoreState();
}

void StampAnnotation::mouseDownEventAtPoint(Point point)
{
    dragOrigin_ = point;
    updateStampInfo();
}

bool StampAnnotation::shouldRedrawWithKeyDownEvent(const platform::Event & /*event*/)
{
    return true;
}

void StampAnnotation::updateStampInfo()
{
    const std::int32_t number = getRGB();
    if (number < 0 || static_cast<std::size_t>(number) >= kStampKinds.size()) {
        throw platform::Exception(fmt::format("stamp: there is no kind {}, only 0 to {}", number,
                                              kStampKinds.size() - 1));
    }
    const StampKind &kind = kStampKinds[static_cast<std::size_t>(number)];
    stampType_ = kind.type;
    stampAlign_ = kind.align;
    sizeIndex_ = sizeIndexOf(annotationSize());
}

std::int32_t StampAnnotation::getRGB() const
{
    const platform::Color carrier = color();
    const std::uint32_t redAndGreen =
        (byteOf(carrier.red()) << 8U) + byteOf(carrier.greenComponent());
    return static_cast<std::int32_t>((redAndGreen << 16U) + byteOf(carrier.blue()));
}

Point StampAnnotation::setStampAlignment(std::int32_t alignment, platform::Size size)
{
    const double middle = size.width / 2.0;
    const double centre = size.height / 2.0;
    switch (alignment) {
    case 0:
        return {middle, size.height};
    case kCentre:
        return {middle, centre};
    case 2:
        return {middle, 0.0};
    case 3:
        return {size.width, size.height};
    case 4:
        return {size.width, centre};
    case 5:
        return {size.width, 0.0};
    case kTopLeft:
        return {0.0, size.height};
    case 7:
        return {0.0, centre};
    default:
        return {};
    }
}

} // namespace orv
