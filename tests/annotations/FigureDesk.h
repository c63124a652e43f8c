#pragma once

#include "annotations/FigureAnnotations.h"
#include "canvas/CanvasDesk.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"
#include "support/RecordingContext.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::test {

/// A tool with a style besides its type and size.
class StyledTool : public FakeTool {
public:
    StyledTool(std::int32_t type, float size, std::int32_t style = 0)
        : FakeTool(type, size), style_(style)
    {
    }
    [[nodiscard]] std::shared_ptr<Annotation>
    createAnnotationInView(const std::shared_ptr<platform::View> &view) const override
    {
        const auto annotation = FakeTool::createAnnotationInView(view);
        annotation->setStyle(style_);
        return annotation;
    }

private:
    std::int32_t style_;
};

/// A canvas that knows the figures, the stamps and the eraser.
class FigureDesk : public CanvasDesk {
protected:
    FigureDesk() { registerFigureAnnotations(AnnotationRegistry::shared()); }

    void use(std::int32_t type, float size, std::int32_t style = 0,
             const platform::Color &color = {1.0, 0.0, 0.0})
    {
        const auto tool = std::make_shared<StyledTool>(type, size, style);
        tool->color = color;
        canvas->setCurrentTool(tool);
    }
    void turnShift(bool on)
    {
        platform::Event event;
        event.type = platform::EventType::flagsChanged;
        event.modifierFlags = on ? platform::modifier::shift : 0;
        canvas->flagsChanged(event);
    }
    /// A display as it was seen once: 0xRRGGBB, y up.
    class Shown {
    public:
        explicit Shown(platform::ImagePtr picture) : picture_(std::move(picture)) {}
        [[nodiscard]] std::uint32_t at(int x, int yUp) const
        {
            return picture_->pixel(x, picture_->height() - 1 - yUp) & 0xFFFFFFU;
        }

    private:
        platform::ImagePtr picture_;
    };
    /// What the display shows once all that waits is drawn.
    [[nodiscard]] Shown shown()
    {
        drain();
        return Shown(desk.desktop().composePicture(1));
    }
    [[nodiscard]] std::uint32_t pixelAt(int x, int yUp) { return shown().at(x, yUp); }
    template <class Kind> [[nodiscard]] std::shared_ptr<Kind> last() const
    {
        return std::dynamic_pointer_cast<Kind>(annotations().back());
    }
};

template <class Kind>
std::shared_ptr<Kind> figure(std::int32_t type, float size, std::int32_t style = 0,
                             const platform::Color &color = {1.0, 0.0, 0.0})
{
    registerFigureAnnotations(AnnotationRegistry::shared());
    StyledTool tool(type, size, style);
    tool.color = color;
    return std::dynamic_pointer_cast<Kind>(tool.createAnnotationInView(nullptr));
}

inline std::vector<std::string> linesOf(Annotation &annotation)
{
    RecordingContext context;
    annotation.draw(context);
    return context.lines;
}

inline std::shared_ptr<platform::Archivable>
archivedAndRead(const std::shared_ptr<const platform::Archivable> &object)
{
    registerFigureAnnotations(AnnotationRegistry::shared());
    platform::KeyedArchiver archiver;
    archiver.encodeObject("root", object);
    platform::KeyedUnarchiver unarchiver(archiver.finishEncoding(),
                                         AnnotationRegistry::shared().classes());
    return unarchiver.decodeObject("root");
}

/// The same for one class; null when another one comes back.
template <class Kind> std::shared_ptr<Kind> archivedAndRead(const std::shared_ptr<Kind> &annotation)
{
    return std::dynamic_pointer_cast<Kind>(
        archivedAndRead(std::shared_ptr<const platform::Archivable>(annotation)));
}

/// What a file may hold in the place of an annotation that this program would write.
class WrittenByHand : public platform::Archivable {
public:
    using Writer = std::function<void(platform::KeyedArchiver &)>;

    WrittenByHand(std::vector<std::string> names, Writer writer)
        : names_(std::move(names)), writer_(std::move(writer))
    {
    }
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override { return names_; }
    void encodeWithCoder(platform::KeyedArchiver &coder) const override { writer_(coder); }

private:
    std::vector<std::string> names_;
    Writer writer_;
};

/// An annotation from a file that holds these keys only.
template <class Kind>
std::shared_ptr<Kind> readFrom(const std::string &name, const WrittenByHand::Writer &writer)
{
    const auto written =
        std::make_shared<WrittenByHand>(std::vector<std::string>{name, "Annotation"}, writer);
    return std::dynamic_pointer_cast<Kind>(
        archivedAndRead(std::shared_ptr<const platform::Archivable>(written)));
}

} // namespace orv::test
