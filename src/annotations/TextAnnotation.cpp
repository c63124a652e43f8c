#include "annotations/TextAnnotation.h"

#include "OrvAnnotation/Events.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"
#include "platform/foundation/TextConversion.h"
#include "platform/ports/Platform.h"

#include <cmath>

namespace orv {

namespace {

using platform::Point;

constexpr double kLineSpacing = 1.5;
constexpr float kDragThreshold = 5.0F;
constexpr double kBlinkSeconds = 0.5;
constexpr int kSpacesOfTab = 4;

// Shift and Caps Lock are part of typing.
constexpr std::uint64_t kRefusedModifiers =
    platform::modifier::control | platform::modifier::option | platform::modifier::command |
    platform::modifier::numericPad | platform::modifier::function;
static_assert(kRefusedModifiers == 0xbc0000);

namespace character {
constexpr char16_t enter = 3;
constexpr char16_t backspace = 8;
constexpr char16_t tab = 9;
constexpr char16_t carriageReturn = 13;
constexpr char16_t deletion = 127;
} // namespace character

std::vector<std::u16string> readLines(platform::KeyedUnarchiver &coder)
{
    std::vector<std::u16string> lines;
    const auto array = coder.decodeNode("lines");
    const std::size_t count = array ? array->size() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto line = array->at(i);
        lines.push_back(line ? platform::utf16FromUtf8(line->asString()) : std::u16string());
    }
    if (lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

} // namespace

TextAnnotation::TextAnnotation()
{
    setAlphaComponent(1.0);
}

TextAnnotation::TextAnnotation(platform::KeyedUnarchiver &coder)
    : Annotation(coder), lines_(readLines(coder)), textOrigin_{coder.decodeFloat("originX"),
                                                               coder.decodeFloat("originY")},
      textAngle_(coder.decodeFloat("angle"))
{
    TextAnnotation::setSize(static_cast<float>(annotationSize()));
}

std::vector<std::string> TextAnnotation::archiveClassNames() const
{
    return {"TextAnnotation", "Annotation"};
}

void TextAnnotation::encodeWithCoder(platform::KeyedArchiver &coder) const
{
    Annotation::encodeWithCoder(coder);
    coder.encodeArray("lines", [this](platform::ArchiveArray &array) {
        for (const std::u16string &line : lines_) {
            array.addString(platform::utf8FromUtf16(line));
        }
    });
    coder.encodeFloat("originX", static_cast<float>(textOrigin_.x));
    coder.encodeFloat("originY", static_cast<float>(textOrigin_.y));
    coder.encodeFloat("angle", textAngle_);
}

void TextAnnotation::setSize(float size)
{
    Annotation::setSize(size);
    const platform::Font font{"Helvetica", size};
    lineHeight_ = static_cast<float>((capHeight(font) - descender(font)) * kLineSpacing);
}

void TextAnnotation::mouseDownEventAtPoint(Point point)
{
    dragOrigin_ = point;
    updateTextOriginAndAngleBasedOnNewDragPoint(point);
    restartCaretBlink();
    setIsActive(true);
}

void TextAnnotation::mouseUpEventAtPoint(Point /*point*/)
{
    isEnteringText_ = true;
    sendNotifyMeesage("textModeEvent", 1, 0);
}

bool TextAnnotation::dragThresholdExceededByPoint(Point point) const
{
    const auto dx = static_cast<float>(point.x - dragOrigin_.x);
    const auto dy = static_cast<float>(point.y - dragOrigin_.y);
    return std::sqrt(dx * dx + dy * dy) >= kDragThreshold;
}

void TextAnnotation::updateTextOriginAndAngleBasedOnNewDragPoint(Point point)
{
    textOrigin_ = dragOrigin_;
    if (!dragThresholdExceededByPoint(point)) {
        textAngle_ = 0.0F;
    } else if (point.x >= dragOrigin_.x) {
        textAngle_ = angleDefinedByPoint(dragOrigin_, point);
    } else {
        textOrigin_ = point;
        textAngle_ = angleDefinedByPoint(point, dragOrigin_);
    }
}

float TextAnnotation::angleDefinedByPoint(Point from, Point to)
{
    return std::atan2(static_cast<float>(to.y - from.y), static_cast<float>(to.x - from.x));
}

bool TextAnnotation::shouldRedrawWithKeyDownEvent(const platform::Event &event)
{
    if (!isEnteringText_ || (event.modifierFlags & kRefusedModifiers) != 0 ||
        event.characters.empty()) {
        return false;
    }
    // Keeps the caret lit while typing.
    restartCaretBlink();
    takeCharacter(event.characters.front());
    return true;
}

void TextAnnotation::takeCharacter(char16_t character)
{
    switch (character) {
    case character::enter:
    case character::carriageReturn:
        insertNewline();
        break;
    case character::backspace:
    case character::deletion:
        deleteLastCharacter();
        break;
    case character::tab:
        for (int i = 0; i < kSpacesOfTab; ++i) {
            appendCharacter(u' ');
        }
        break;
    default:
        appendCharacter(character);
        break;
    }
}

bool TextAnnotation::isEmpty() const
{
    return lines_.size() == 1 && lines_.front().empty();
}

void TextAnnotation::appendCharacter(char16_t character)
{
    lines_.back() += character;
}

void TextAnnotation::deleteLastCharacter()
{
    if (isEmpty()) {
        return;
    }
    if (lines_.back().empty()) {
        lines_.pop_back();
    } else {
        lines_.back().pop_back();
    }
}

void TextAnnotation::insertNewline()
{
    lines_.emplace_back();
}

void TextAnnotation::restartCaretBlink()
{
    stopCaretBlink();
    caretVisible_ = true;
    caretBlinkTimer_ = platform::Platform::current().mainThread().every(
        kBlinkSeconds, [self = shared_from_this()] { self->toggleCaretVisibility(); });
}

void TextAnnotation::stopCaretBlink()
{
    caretBlinkTimer_.reset();
}

void TextAnnotation::toggleCaretVisibility()
{
    caretVisible_ = !caretVisible_;
    if (const auto view = containerView()) {
        view->setNeedsDisplay(true);
    }
}

bool TextAnnotation::shouldFinalize()
{
    setIsActive(false);
    stopCaretBlink();
    isEnteringText_ = false;
    return !isEmpty();
}

} // namespace orv
