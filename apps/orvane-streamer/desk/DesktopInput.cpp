#include "orvane-streamer/desk/DesktopInput.h"

#include "orvane-streamer/desk/InputRecord.h"
#include "orvane-streamer/desk/KeyLayout.h"
#include "orvane-streamer/desk/PressedInput.h"
#include "orvane-streamer/desk/SpareKeys.h"
#include "orvane-streamer/desk/WindowsKeys.h"
#include "orvane-streamer/desk/XServer.h"

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

namespace orv::apps {

namespace {

using Kind = PressedInput::Kind;

XServer inputServer()
{
    XServer server;
    if (server.isLost()) {
        throw std::runtime_error("The X display cannot be reached for keyboard and mouse.");
    }
    if (!server.has(xcb_test_id)) {
        throw std::runtime_error("The X server has no XTEST extension, so it takes no keyboard and "
                                 "mouse from programs.");
    }
    return server;
}

/// Nothing for control characters that no key makes.
xkb_keysym_t keysymOf(char32_t character)
{
    constexpr char32_t backspace = 8;
    constexpr char32_t tab = 9;
    constexpr char32_t enter = 13;
    constexpr char32_t firstPrinting = 32;
    const bool isKey = character == backspace || character == tab || character == enter;
    return isKey || character >= firstPrinting ? xkb_utf32_to_keysym(character)
                                               : xkb_keysym_t{XKB_KEY_NoSymbol};
}

} // namespace

class DesktopInput::Impl {
public:
    explicit Impl(const Place &place)
        : server_(inputServer()), layout_(server_.get()), spare_(server_.get(), layout_),
          pressed_(server_.get(), server_.screen().root)
    {
        setPlace(place);
    }

    void setPlace(const Place &place)
    {
        place_ = place;
        const XReply<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(
            server_.get(), xcb_get_geometry(server_.get(), server_.screen().root), nullptr));
        if (root) {
            screen_ = {root->width, root->height};
        }
    }

    void take(const InputAction &action)
    {
        std::visit([this](const auto &what) { perform(what); }, action);
        xcb_flush(server_.get());
    }

private:
    void perform(const MouseInput &input)
    {
        pressed_.move(screenPoint(input, place_, screen_));
        switch (input.act) {
        case MouseInput::Act::move:
            break;
        case MouseInput::Act::press:
            pressed_.press(Kind::button, input.button);
            break;
        case MouseInput::Act::release:
            pressed_.release(Kind::button, input.button);
            break;
        case MouseInput::Act::click:
            pressed_.tap(Kind::button, input.button);
            break;
        }
    }

    void perform(const KeyInput &input)
    {
        // The X server repeats by itself what stays down.
        const auto held = held_.find(input.key);
        if ((held != held_.end()) == input.isDown) {
            return;
        }
        if (!input.isDown) {
            const KeyCode key = held->second;
            held_.erase(held);
            // Two codes may mean one key, such as Shift and left Shift.
            if (std::none_of(held_.begin(), held_.end(),
                             [key](const auto &other) { return other.second == key; })) {
                pressed_.release(Kind::key, key);
            }
            return;
        }
        if (const auto key = keyOf(input.key)) {
            held_.emplace(input.key, *key);
            pressed_.press(Kind::key, *key);
            spare_.wasUsed(*key);
        }
    }

    void perform(const TypedUnit &typed)
    {
        if (const auto character = joiner_.add(typed.unit)) {
            const xkb_keysym_t symbol = keysymOf(*character);
            if (symbol != XKB_KEY_NoSymbol) {
                type(symbol);
            }
        }
    }

    void type(xkb_keysym_t symbol)
    {
        const auto stroke = strokeOf(symbol);
        if (!stroke) {
            return;
        }
        const auto shifts = switched(layout_.shift(), stroke->withShift);
        const auto thirdLevels = switched(layout_.thirdLevel(), stroke->withThirdLevel);
        toggle(shifts);
        toggle(thirdLevels);
        pressed_.tap(Kind::key, stroke->key);
        toggle(thirdLevels);
        toggle(shifts);
        spare_.wasUsed(stroke->key);
    }

    /// The keys that have to go up, or down, before a stroke that wants a modifier or does not.
    [[nodiscard]] std::vector<KeyCode> switched(const KeyLayout::Modifier &modifier,
                                                bool isWanted) const
    {
        if (layout_.isDown(modifier) == isWanted) {
            return {};
        }
        if (isWanted) {
            return {modifier.key};
        }
        std::vector<KeyCode> keys = pressed_.keysDown();
        std::erase_if(keys, [&](KeyCode key) { return !layout_.changes(key, modifier); });
        return keys;
    }

    void toggle(const std::vector<KeyCode> &keys)
    {
        for (const KeyCode key : keys) {
            if (pressed_.isDown(Kind::key, key)) {
                pressed_.release(Kind::key, key);
            } else {
                pressed_.press(Kind::key, key);
            }
        }
    }

    std::optional<KeyLayout::Stroke> strokeOf(xkb_keysym_t symbol)
    {
        layout_.refresh();
        auto stroke = layout_.strokeFor(symbol);
        if (!stroke && lend(symbol)) {
            stroke = layout_.strokeFor(symbol);
        }
        return stroke;
    }

    std::optional<KeyCode> keyOf(std::uint32_t windowsKey)
    {
        const auto symbols = keysymsOfWindowsKey(windowsKey);
        if (symbols.empty()) {
            return std::nullopt;
        }
        layout_.refresh();
        const auto key = layout_.keyBearing(symbols);
        return key || !lend(symbols.front()) ? key : layout_.keyBearing(symbols);
    }

    bool lend(xkb_keysym_t symbol)
    {
        return spare_.lend(symbol, [this](KeyCode key) { return pressed_.isDown(Kind::key, key); });
    }

    XServer server_;
    KeyLayout layout_;
    SpareKeys spare_;
    /// Lifts its keys before the spare ones lose their symbols.
    PressedInput pressed_;
    Place place_;
    ScreenSize screen_;
    CharacterJoiner joiner_;
    /// Which key is down for which Windows key.
    std::map<std::uint32_t, KeyCode> held_;
};

DesktopInput::DesktopInput(const Place &place) : impl_(std::make_unique<Impl>(place)) {}

DesktopInput::~DesktopInput() = default;

void DesktopInput::setPlace(const Place &place)
{
    impl_->setPlace(place);
}

void DesktopInput::take(const stCommand_mgs &record)
{
    if (const auto action = inputAction(record)) {
        impl_->take(*action);
    }
}

} // namespace orv::apps
