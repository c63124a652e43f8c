#pragma once

#include "canvas/Annotation.h"
#include "platform/ports/MainThread.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

/// Typed text: it outlives the click that placed it and takes keys until something finalises it.
///
/// Owns      its lines and the timer of its caret. While the caret blinks, the timer's task owns
/// the
///           annotation: one that its canvas just drops goes on asking for redraws until the main
///           thread ends.
/// Units     angles in radians, counter-clockwise, single floats.
/// Invariant there is always a line to type on, if an empty one.
class TextAnnotation : public Annotation, public std::enable_shared_from_this<TextAnnotation> {
public:
    TextAnnotation();
    /// What comes back takes no keys. Without any line it is one empty line.
    explicit TextAnnotation(platform::KeyedUnarchiver &coder);

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    /// In 16-bit units, any of which may stand alone.
    [[nodiscard]] const std::vector<std::u16string> &lines() const { return lines_; }
    /// Where the mouse went down.
    [[nodiscard]] platform::Point dragOrigin() const { return dragOrigin_; }
    /// Lower left corner of the first line's rectangle.
    [[nodiscard]] platform::Point textOrigin() const { return textOrigin_; }
    [[nodiscard]] float textAngle() const { return textAngle_; }
    /// From the origin of one line to that of the next.
    [[nodiscard]] float lineHeight() const { return lineHeight_; }
    [[nodiscard]] bool isEnteringText() const { return isEnteringText_; }
    /// The caret is in the lit half of its blink.
    [[nodiscard]] bool caretVisible() const { return caretVisible_; }

    void setSize(float size) override;
    void draw(platform::GraphicsContext &context) override;
    void mouseDownEventAtPoint(platform::Point point) override;
    /// Text does not follow a drag.
    void mouseDraggedEventAtPoint(platform::Point /*point*/) override {}
    /// Opens the text for keys and has the client offer its keyboard; it stays active.
    void mouseUpEventAtPoint(platform::Point point) override;
    /// True when it took the key, even if there was nothing to delete.
    bool shouldRedrawWithKeyDownEvent(const platform::Event &event) override;
    bool shouldFinalize() override;

protected:
    /// At least 5 points away from where the button went down.
    [[nodiscard]] bool dragThresholdExceededByPoint(platform::Point point) const;
    /// Lays the text along the line from the press to `point`, so that it reads left to right.
    void updateTextOriginAndAngleBasedOnNewDragPoint(platform::Point point);
    [[nodiscard]] static float angleDefinedByPoint(platform::Point from, platform::Point to);

private:
    [[nodiscard]] bool isEmpty() const;
    void appendCharacter(char16_t character);
    void deleteLastCharacter();
    void insertNewline();
    void takeCharacter(char16_t character);
    void restartCaretBlink();
    void stopCaretBlink();
    void toggleCaretVisibility();
    /// Level or turned about the middle of its rectangle, whose lower left corner is `position`.
    /// Answers the rectangle's size.
    platform::Size drawUnicodeText(platform::GraphicsContext &context, platform::Point position,
                                   std::u16string_view string) const;
    void drawLines(platform::GraphicsContext &context) const;
    void drawCaret(platform::GraphicsContext &context) const;

    std::vector<std::u16string> lines_{1};
    platform::Point dragOrigin_;
    platform::Point textOrigin_;
    float textAngle_ = 0.0F;
    float lineHeight_ = 0.0F;
    bool isEnteringText_ = false;
    platform::TaskHandle caretBlinkTimer_;
    bool caretVisible_ = false;
};

} // namespace orv
