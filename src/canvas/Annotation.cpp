#include "canvas/Annotation.h"

#include "canvas/AnnotationRegistry.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

namespace orv {

namespace {

constexpr double kSmallestSize = 1.0;
constexpr double kDashLengthInWidths = 3.0;
constexpr double kGapLengthInDashes = 0.6;

} // namespace

Annotation::Annotation(platform::KeyedUnarchiver &coder)
    : annotationType_(static_cast<std::int32_t>(coder.decodeInt("annotationType"))),
      blendMode_(static_cast<platform::BlendMode>(coder.decodeInt("blendMode"))),
      annotationSize_(coder.decodeFloat("annotationSize")),
      redComponent_(coder.decodeFloat("redComponent")),
      greenComponent_(coder.decodeFloat("greenComponent")),
      blueComponent_(coder.decodeFloat("blueComponent")),
      alphaComponent_(coder.decodeFloat("alphaComponent")),
      dashMode_(coder.containsValueForKey("dashMode") && coder.decodeBool("dashMode"))
{
}

std::shared_ptr<Annotation> Annotation::annotationOfType(std::int32_t type)
{
    std::shared_ptr<Annotation> annotation = AnnotationRegistry::shared().make(type);
    if (!annotation) {
        annotation = std::make_shared<Annotation>();
    }
    annotation->setAnnotationType(type);
    return annotation;
}

std::vector<std::string> Annotation::archiveClassNames() const
{
    return {"Annotation"};
}

void Annotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    coder.encodeInt("annotationType", annotationType_);
    coder.encodeInt("blendMode", static_cast<std::int64_t>(blendMode_));
    coder.encodeFloat("annotationSize", static_cast<float>(annotationSize_));
    coder.encodeFloat("redComponent", static_cast<float>(redComponent_));
    coder.encodeFloat("greenComponent", static_cast<float>(greenComponent_));
    coder.encodeFloat("blueComponent", static_cast<float>(blueComponent_));
    coder.encodeFloat("alphaComponent", static_cast<float>(alphaComponent_));
    coder.encodeBool("dashMode", dashMode_);
}

std::shared_ptr<const platform::Archivable> Annotation::frozen() const
{
    // Shares nothing: the archiver lets go of it before this ends.
    const std::shared_ptr<const platform::Archivable> self(std::shared_ptr<void>(), this);
    platform::KeyedArchiver archiver;
    archiver.encodeObject("root", self);
    platform::KeyedUnarchiver unarchiver(archiver.finishEncoding(),
                                         AnnotationRegistry::shared().classes());
    return unarchiver.decodeObject("root");
}

void Annotation::setSize(float size)
{
    annotationSize_ = size > 0.0F ? static_cast<double>(size) : kSmallestSize;
}

void Annotation::setColor(const std::optional<platform::Color> &color)
{
    if (color) {
        redComponent_ = color->red();
        greenComponent_ = color->greenComponent();
        blueComponent_ = color->blue();
    }
}

void Annotation::setStyle(std::int32_t style)
{
    if (style > 0) {
        annotationStyle_ = style;
    }
}

void Annotation::draw(platform::GraphicsContext & /*context*/) {}
void Annotation::mouseDownEventAtPoint(platform::Point /*point*/) {}
void Annotation::mouseDraggedEventAtPoint(platform::Point /*point*/) {}
void Annotation::mouseUpEventAtPoint(platform::Point /*point*/) {}

bool Annotation::shouldRedrawWithKeyDownEvent(const platform::Event & /*event*/)
{
    return false;
}

bool Annotation::shouldRedrawWithKeyUpEvent(const platform::Event & /*event*/)
{
    return false;
}

bool Annotation::shouldRedrawWithFlagsChangedEvent(const platform::Event & /*event*/)
{
    return false;
}

bool Annotation::shouldFinalize()
{
    return false;
}

void Annotation::updateLineDash(platform::GraphicsContext &context, bool dash) const
{
    if (!dash) {
        context.setLineDash(0.0, {});
        return;
    }
    const auto on = static_cast<float>(annotationSize_ * kDashLengthInWidths);
    context.setLineDash(0.0, {on, on * kGapLengthInDashes});
}

} // namespace orv
