#pragma once

#include "platform/foundation/Archivable.h"
#include "platform/ports/GraphicsContext.h"
#include "platform/values/Color.h"
#include "platform/values/Event.h"
#include "platform/values/Geometry.h"
#include "platform/views/View.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orv::platform {
class KeyedUnarchiver;
}

namespace orv {

/// Numbers of the kinds of annotations, as archives and tools carry them.
namespace annotation_type {
constexpr std::int32_t none = 0;
constexpr std::int32_t clearScreen = 1;
constexpr std::int32_t pen = 2;
constexpr std::int32_t highlighter = 3;
constexpr std::int32_t eraser = 4;
constexpr std::int32_t ellipse = 5;
constexpr std::int32_t rectangle = 6;
constexpr std::int32_t text = 7;
constexpr std::int32_t line = 8;
constexpr std::int32_t stamp = 9;
} // namespace annotation_type

/// One drawn item of a canvas; by itself it draws nothing and stands for a wipe in a redo stack.
///
/// Owned by the lists of a canvas. Borrows its canvas, and may outlive it.
/// Thread   main thread only, until it is settled; then any thread may read what archives hold.
/// Units    canvas points, doubles; origin bottom left of the display, y up; never scaled.
class Annotation : public platform::Archivable {
public:
    Annotation() = default;
    /// Reads the keys that `encodeWithCoder` writes; "dashMode" may be missing.
    explicit Annotation(platform::KeyedUnarchiver &coder);
    Annotation &operator=(const Annotation &) = delete;

    /// An instance of the class that the registry knows for the number; for any other number a bare
    /// `Annotation`. The number is stored in both cases.
    static std::shared_ptr<Annotation> annotationOfType(std::int32_t type);

    [[nodiscard]] std::string className() const { return archiveClassNames().front(); }
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    [[nodiscard]] std::int32_t annotationType() const { return annotationType_; }
    void setAnnotationType(std::int32_t type) { annotationType_ = type; }
    [[nodiscard]] std::shared_ptr<platform::View> containerView() const
    {
        return containerView_.lock();
    }
    void setContainerView(const std::shared_ptr<platform::View> &view) { containerView_ = view; }
    [[nodiscard]] platform::BlendMode blendMode() const { return blendMode_; }
    /// Line width in points, text size, or stamp size code.
    [[nodiscard]] double annotationSize() const { return annotationSize_; }
    [[nodiscard]] std::int32_t annotationStyle() const { return annotationStyle_; }
    [[nodiscard]] platform::Color color() const
    {
        return {redComponent_, greenComponent_, blueComponent_, alphaComponent_};
    }
    [[nodiscard]] double alphaComponent() const { return alphaComponent_; }
    /// It still takes input.
    [[nodiscard]] bool isActive() const { return isActive_; }
    /// Neither input nor drawing changes any more what an archive holds of it.
    [[nodiscard]] virtual bool isSettled() const { return !isActive_; }
    /// A copy for an archive, which another thread may write while this one goes on changing.
    /// Throws `platform::Exception` for a kind that is not in the registry.
    [[nodiscard]] virtual std::shared_ptr<const platform::Archivable> frozen() const;
    [[nodiscard]] bool dashMode() const { return dashMode_; }
    void setDashMode(bool dashMode) { dashMode_ = dashMode; }

    /// 0 and less give 1.0.
    virtual void setSize(float size);
    /// Takes red, green and blue and leaves the alpha alone; nothing changes nothing.
    virtual void setColor(const std::optional<platform::Color> &color);
    /// Stored only when greater than 0.
    virtual void setStyle(std::int32_t style);
    virtual void draw(platform::GraphicsContext &context);
    virtual void mouseDownEventAtPoint(platform::Point point);
    virtual void mouseDraggedEventAtPoint(platform::Point point);
    virtual void mouseUpEventAtPoint(platform::Point point);
    virtual bool shouldRedrawWithKeyDownEvent(const platform::Event &event);
    virtual bool shouldRedrawWithKeyUpEvent(const platform::Event &event);
    virtual bool shouldRedrawWithFlagsChangedEvent(const platform::Event &event);
    /// Whether it deserves to stay; asked each time something ends it while it is last.
    virtual bool shouldFinalize();

protected:
    Annotation(const Annotation &) = default;
    /// Off: solid. On: three line widths of ink, then six tenths of that without.
    void updateLineDash(platform::GraphicsContext &context, bool dash) const;
    void setBlendMode(platform::BlendMode mode) { blendMode_ = mode; }
    void setAlphaComponent(double alpha) { alphaComponent_ = alpha; }
    void setIsActive(bool isActive) { isActive_ = isActive; }

private:
    std::int32_t annotationType_ = annotation_type::none;
    std::weak_ptr<platform::View> containerView_;
    platform::BlendMode blendMode_ = platform::BlendMode::normal;
    double annotationSize_ = 0.0;
    std::int32_t annotationStyle_ = 0;
    double redComponent_ = 0.0;
    double greenComponent_ = 0.0;
    double blueComponent_ = 0.0;
    double alphaComponent_ = 0.0;
    bool isActive_ = false;
    bool dashMode_ = false;
};

} // namespace orv
