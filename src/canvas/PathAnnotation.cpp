#include "canvas/PathAnnotation.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <array>
#include <bit>
#include <cstring>
#include <span>

namespace orv {

namespace {

using platform::PathElementType;
using platform::Point;

constexpr double kPenAlpha = 1.0;
constexpr double kHighlighterAlpha = 0.5;
constexpr std::size_t kPointBytes = 2 * sizeof(double);

static_assert(std::endian::native == std::endian::little, "archives hold little-endian doubles");

using PointBytes = std::array<std::uint8_t, kPointBytes>;

PointBytes bytesOf(Point p)
{
    PointBytes bytes{};
    std::memcpy(bytes.data(), &p.x, sizeof p.x);
    std::memcpy(bytes.data() + sizeof p.x, &p.y, sizeof p.y);
    return bytes;
}

Point pointAt(std::span<const std::uint8_t> bytes, std::size_t index)
{
    if (bytes.size() < (index + 1) * kPointBytes) {
        throw platform::Exception("archive: \"elementPoints\" is too short for its element");
    }
    Point p;
    std::memcpy(&p.x, bytes.data() + index * kPointBytes, sizeof p.x);
    std::memcpy(&p.y, bytes.data() + index * kPointBytes + sizeof p.x, sizeof p.y);
    return p;
}

void replayElement(const platform::ArchiveNode &element, platform::Path &path)
{
    const auto type = element.find("elementType");
    const auto data = element.find("elementPoints");
    const auto kind = type ? type->asInt() : -1;
    const auto points = [&] { return data ? data->asData() : std::span<const std::uint8_t>{}; };
    switch (kind) {
    case static_cast<int>(PathElementType::moveToPoint):
        path.moveTo(pointAt(points(), 0));
        break;
    case static_cast<int>(PathElementType::addLineToPoint):
        path.lineTo(pointAt(points(), 0));
        break;
    case static_cast<int>(PathElementType::addQuadCurveToPoint):
        path.quadCurveTo(pointAt(points(), 0), pointAt(points(), 1));
        break;
    case static_cast<int>(PathElementType::closeSubpath):
        path.close();
        break;
    default:
        break;
    }
}

platform::Path detachedCopy(const platform::Path &path)
{
    platform::Path copy;
    path.forEach([&copy](const platform::Path::Element &element) {
        const Point *points = element.points;
        switch (element.type) {
        case PathElementType::moveToPoint:
            copy.moveTo(points[0]);
            break;
        case PathElementType::addLineToPoint:
            copy.lineTo(points[0]);
            break;
        case PathElementType::addQuadCurveToPoint:
            copy.quadCurveTo(points[0], points[1]);
            break;
        case PathElementType::addCurveToPoint:
            copy.curveTo(points[0], points[1], points[2]);
            break;
        case PathElementType::closeSubpath:
            copy.close();
            break;
        }
    });
    return copy;
}

/// A stroke of any kind as it was at one moment. Kinds of strokes write no keys of their own.
class FrozenStroke final : public PathAnnotation {
public:
    explicit FrozenStroke(const PathAnnotation &stroke)
        : PathAnnotation(stroke), archiveClassNames_(stroke.archiveClassNames())
    {
    }
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return archiveClassNames_;
    }

private:
    std::vector<std::string> archiveClassNames_;
};

} // namespace

PathAnnotation::PathAnnotation(const PathAnnotation &other)
    : Annotation(other), path_(detachedCopy(other.path_))
{
}

std::shared_ptr<const platform::Archivable> PathAnnotation::frozen() const
{
    return std::make_shared<FrozenStroke>(*this);
}

PathAnnotation::PathAnnotation(platform::KeyedUnarchiver &coder) : Annotation(coder)
{
    const auto elements = coder.decodeNode("path");
    const std::size_t count = elements ? elements->size() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (const auto element = elements->at(i)) {
            replayElement(*element, path_);
        }
    }
}

std::vector<std::string> PathAnnotation::archiveClassNames() const
{
    return {"PathAnnotation", "Annotation"};
}

void PathAnnotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    Annotation::encodeWithCoder(coder);
    coder.encodeArray("path", [this](platform::ArchiveArray &array) {
        path_.forEach([&array](const platform::Path::Element &element) {
            array.addDictionary([&element](platform::ArchiveDictionary &dictionary) {
                const Point first = element.points == nullptr ? Point{} : element.points[0];
                dictionary.setInt("elementType", static_cast<std::int64_t>(element.type));
                dictionary.setData("elementPoints", bytesOf(first));
            });
        });
    });
}

void PathAnnotation::draw(platform::GraphicsContext &context)
{
    context.saveState();
    updateLineDash(context, dashMode());
    context.setBlendMode(blendMode());
    context.setLineWidth(annotationSize());
    context.setLineCap(platform::LineCap::round);
    context.setLineJoin(platform::LineJoin::round);
    context.setStrokeColor(color());
    context.strokePath(path_);
    context.restoreState();
}

void PathAnnotation::mouseDownEventAtPoint(Point point)
{
    path_.moveTo(point);
    path_.lineTo(point);
    setIsActive(true);
}

void PathAnnotation::mouseDraggedEventAtPoint(Point point)
{
    path_.lineTo(point);
}

void PathAnnotation::mouseUpEventAtPoint(Point point)
{
    setIsActive(false);
    if (!(path_.currentPoint() == point)) {
        path_.lineTo(point);
        path_.close();
    }
}

PencilAnnotation::PencilAnnotation()
{
    setAlphaComponent(kPenAlpha);
}

std::vector<std::string> PencilAnnotation::archiveClassNames() const
{
    return {"PencilAnnotation", "PathAnnotation", "Annotation"};
}

HighlighterAnnotation::HighlighterAnnotation()
{
    setAlphaComponent(kHighlighterAlpha);
}

std::vector<std::string> HighlighterAnnotation::archiveClassNames() const
{
    return {"HighlighterAnnotation", "PathAnnotation", "Annotation"};
}

} // namespace orv
