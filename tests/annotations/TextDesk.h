#pragma once

#include "annotations/TextAnnotation.h"
#include "canvas/CanvasDesk.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <memory>
#include <string_view>

namespace orv::test {

/// A canvas with a text tool of 20 points in its hand.
class TextDesk : public CanvasDesk {
protected:
    TextDesk()
    {
        AnnotationRegistry::shared().add<TextAnnotation>(annotation_type::text, "TextAnnotation");
        canvas->setCurrentTool(textTool);
    }

    void click(platform::Point at)
    {
        press(at);
        release(at);
    }
    static platform::Event keyWith(std::u16string_view characters, std::uint64_t modifiers = 0)
    {
        platform::Event event = keyOf(0);
        event.characters = characters;
        event.modifierFlags = modifiers;
        return event;
    }
    /// One key each.
    void type(std::u16string_view characters)
    {
        for (const char16_t character : characters) {
            canvas->keyDown(keyWith({&character, 1}));
        }
    }
    /// The newest annotation, which is a text.
    [[nodiscard]] std::shared_ptr<TextAnnotation> text() const
    {
        return std::dynamic_pointer_cast<TextAnnotation>(annotations().back());
    }
    static std::shared_ptr<TextAnnotation>
    readBack(const std::shared_ptr<platform::Archivable> &object)
    {
        platform::KeyedArchiver archiver;
        archiver.encodeObject("root", object);
        platform::KeyedUnarchiver unarchiver(archiver.finishEncoding(),
                                             AnnotationRegistry::shared().classes());
        return unarchiver.decodeObjectOf<TextAnnotation>("root");
    }
    [[nodiscard]] int redraws()
    {
        return desk.windowServer().surface(window->windowNumber())->drawCount();
    }

    std::shared_ptr<FakeTool> textTool = std::make_shared<FakeTool>(annotation_type::text, 20.0F);
};

} // namespace orv::test
