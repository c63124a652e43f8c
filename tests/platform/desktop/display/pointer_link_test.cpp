#include "platform/desktop/PointerLink.h"

#include "platform/desktop/display/Desk.h"

#include <X11/keysym.h>
#include <gmock/gmock.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEnterEvent>
#include <QGuiApplication>
#include <QWindow>

namespace orv::platform::test {

namespace {

const Rect kWholeScreen = Rect::make(0, 0, 1920, kScreenHeight);
/// In milliseconds, later than all input of a test.
constexpr xcb_timestamp_t kLongAfterwards = 1'000'000;

/// A window that the toolkit knows nothing of, though it is made on the toolkit's connection.
class RawWindow {
public:
    RawWindow() : window_(xcb_generate_id(x().get()))
    {
        constexpr std::uint32_t kOverrideRedirect = 1;
        xcb_create_window(x().get(), XCB_COPY_FROM_PARENT, window_, x().root(), 100, 100, 400, 400,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &kOverrideRedirect);
        xcb_map_window(x().get(), window_);
        x().flush();
    }
    ~RawWindow()
    {
        xcb_destroy_window(x().get(), window_);
        x().flush();
    }
    RawWindow(const RawWindow &) = delete;
    RawWindow &operator=(const RawWindow &) = delete;

    [[nodiscard]] xcb_window_t get() const { return window_; }
    void wantMotions() const
    {
        const struct {
            xcb_input_event_mask_t head;
            std::uint32_t mask;
        } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_MOTION};
        xcb_input_xi_select_events(x().get(), window_, 1, &wanted.head);
    }
    [[nodiscard]] bool wantsMotions() const
    {
        const XReply<xcb_input_xi_get_selected_events_reply_t> reply(
            xcb_input_xi_get_selected_events_reply(
                x().get(), xcb_input_xi_get_selected_events(x().get(), window_), nullptr));
        auto masks = xcb_input_xi_get_selected_events_masks_iterator(reply.get());
        return masks.rem > 0 &&
               *xcb_input_event_mask_mask(masks.data) == XCB_INPUT_XI_EVENT_MASK_MOTION;
    }
    /// Windows inside it, whoever has made them. Also says that the X server has done all it was
    /// asked on this connection.
    [[nodiscard]] std::vector<xcb_window_t> children() const
    {
        const XReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(x().get(), xcb_query_tree(x().get(), window_), nullptr));
        const xcb_window_t *first = xcb_query_tree_children(tree.get());
        return {first, first + tree->children_len};
    }
    [[nodiscard]] std::size_t childCount() const { return children().size(); }

private:
    static const XConnection &x() { return ports().x(); }

    xcb_window_t window_;
};

class NotedPointer final : public PointerReceiver {
public:
    void pointer(const PointerInput &input) override { inputs.push_back(input); }
    void pointerEntered(const QPointF & /*position*/) override {}

    [[nodiscard]] bool hasSeen(PointerInput::Action action) const
    {
        return std::any_of(inputs.begin(), inputs.end(),
                           [action](const PointerInput &input) { return input.action == action; });
    }

    std::vector<PointerInput> inputs;
};

/// Looks at what comes by the toolkit's connection.
class ToolkitEvents final : public QAbstractNativeEventFilter {
public:
    explicit ToolkitEvents(std::function<void(const xcb_generic_event_t &)> seen)
        : seen_(std::move(seen))
    {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
    ~ToolkitEvents() override { QCoreApplication::instance()->removeNativeEventFilter(this); }
    ToolkitEvents(const ToolkitEvents &) = delete;
    ToolkitEvents &operator=(const ToolkitEvents &) = delete;

    bool nativeEventFilter(const QByteArray & /*type*/, void *message,
                           qintptr * /*result*/) override
    {
        seen_(*static_cast<const xcb_generic_event_t *>(message));
        return false;
    }

private:
    std::function<void(const xcb_generic_event_t &)> seen_;
};

/// Runs the loop, but no timers, until `condition` holds; false after ten seconds.
bool comesWithoutTimers(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
    }
    return condition();
}

bool isMotion(const xcb_generic_event_t &event)
{
    const int type = event.response_type & 0x7F;
    return type == XCB_MOTION_NOTIFY ||
           (type == XCB_GE_GENERIC &&
            reinterpret_cast<const xcb_ge_generic_event_t &>(event).event_type == XCB_INPUT_MOTION);
}

} // namespace

class AnyDisplayPointerLink : public Desk {
protected:
    void SetUp() override
    {
        Desk::SetUp();
        window.emplace();
        ASSERT_EQ(window->childCount(), 0U);
    }

    void cover()
    {
        ASSERT_TRUE(link.cover(window->get(), receiver));
        ASSERT_EQ(window->childCount(), 1U);
    }

    /// Sends it, and waits until the X server has told everyone.
    void click(int x, int y)
    {
        client.movePointer(x, y);
        client.button(1, true);
        client.button(1, false);
        static_cast<void>(client.focused());
    }

    /// Presses and releases a button round a key, and answers the key as the toolkit's connection
    /// brings it; the link has read nothing by then.
    KeyMoment clickRoundAKey()
    {
        KeyMoment key;
        const ToolkitEvents events([&key](const xcb_generic_event_t &event) {
            if ((event.response_type & 0x7F) == XCB_KEY_PRESS) {
                const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event);
                key = {true, press.detail, press.time};
            }
        });
        client.button(1, true);
        client.key(XK_a, true);
        client.key(XK_a, false);
        client.button(1, false);
        static_cast<void>(client.focused());
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        while (key.time == 0 && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers |
                                            QEventLoop::ExcludeSocketNotifiers);
        }
        return key;
    }

    /// With the pointer in the window, and the keys heard by both connections.
    void coverWithKeys()
    {
        cover();
        client.movePointer(250, 170);
        client.focus(window->get());
        ASSERT_TRUE(pumpUntil([this] { return client.focused() == window->get(); }));
        const std::uint32_t wanted = XCB_EVENT_MASK_KEY_PRESS;
        xcb_change_window_attributes(ports().x().get(), window->get(), XCB_CW_EVENT_MASK, &wanted);
        ASSERT_EQ(window->childCount(), 1U);
        QCoreApplication::processEvents();
    }

    bool penIsThere = false;
    int lots = 0;
    std::optional<RawWindow> window;
    NotedPointer receiver;
    PointerLink link{ports().x(), ports().mainThread(), [this] { return penIsThere; },
                     [this] { ++lots; }};
};

TEST_F(AnyDisplayPointerLink, tellsPlacesInTheWindowAndWhenALotWasHandedOn)
{
    cover();

    click(250, 170);

    ASSERT_TRUE(pumpUntil([this] { return receiver.hasSeen(PointerInput::Action::release); }));
    EXPECT_EQ(receiver.inputs.back().position, QPointF(150, 70));
    EXPECT_GE(lots, 1);
    EXPECT_FALSE(link.isTaking());
}

TEST_F(AnyDisplayPointerLink, leavesThePointerToTheToolkitWhereAPenMayDraw)
{
    window->wantMotions();
    cover();
    ASSERT_FALSE(window->wantsMotions());

    penIsThere = true;

    EXPECT_FALSE(link.cover(window->get(), receiver));
    EXPECT_TRUE(pumpUntil([this] { return window->childCount() == 0; }));
    EXPECT_TRUE(window->wantsMotions());

    penIsThere = false;
    cover();

    EXPECT_FALSE(window->wantsMotions());
}

TEST_F(AnyDisplayPointerLink, isQuietAboutAWindowThatIsUncovered)
{
    cover();
    click(250, 170);

    link.uncover(window->get());
    bool isLater = false;
    ports().mainThread().post([&isLater] { isLater = true; });

    ASSERT_TRUE(pumpUntil([&] { return isLater && lots > 0; }));
    EXPECT_TRUE(receiver.inputs.empty());
}

TEST_F(AnyDisplayPointerLink, waitsForAKeyButNotForever)
{
    cover();
    client.movePointer(250, 170);
    client.focus(window->get());
    ASSERT_TRUE(pumpUntil([this] { return client.focused() == window->get(); }));

    client.key(XK_a, true);
    client.key(XK_a, false);
    click(250, 170);
    const int before = lots;
    ASSERT_TRUE(comesWithoutTimers([&] { return lots > before; }));

    EXPECT_FALSE(receiver.hasSeen(PointerInput::Action::press));
    EXPECT_TRUE(pumpUntil([this] { return receiver.hasSeen(PointerInput::Action::release); }));
}

TEST_F(AnyDisplayPointerLink, goesOnAtOnceWhenTheKeyIsMet)
{
    coverWithKeys();

    link.meet(clickRoundAKey());

    EXPECT_TRUE(receiver.hasSeen(PointerInput::Action::press));
    EXPECT_FALSE(receiver.hasSeen(PointerInput::Action::release));
    EXPECT_TRUE(
        comesWithoutTimers([this] { return receiver.hasSeen(PointerInput::Action::release); }));
    EXPECT_THAT(receiver.inputs, testing::SizeIs(testing::Ge(2U)));
}

TEST_F(AnyDisplayPointerLink, isNotHeldUpByWordOfSomethingElse)
{
    coverWithKeys();
    const KeyMoment key = clickRoundAKey();
    link.meet(key);
    ASSERT_TRUE(pumpUntil([this] { return receiver.hasSeen(PointerInput::Action::release); }));
    receiver.inputs.clear();
    xcb_selection_clear_event_t word{};
    word.response_type = XCB_SELECTION_CLEAR;
    word.time = key.time + kLongAfterwards;
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &word, sizeof word);
    xcb_send_event(ports().x().get(), 0, window->children().front(), XCB_EVENT_MASK_NO_EVENT,
                   bytes.data());
    ASSERT_EQ(window->childCount(), 1U);

    link.meet(clickRoundAKey());

    EXPECT_TRUE(receiver.hasSeen(PointerInput::Action::press));
}

class AnyDisplayPointer : public Desk {};

TEST_F(AnyDisplayPointer, keepsTheOrderOfKeysAndClicks)
{
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    overlay.surface().makeKey();
    client.movePointer(500, 500);
    ASSERT_TRUE(pumpUntil([&] { return !overlay.events.empty(); }));
    overlay.events.clear();
    client.beforeInput = {};

    constexpr int kRounds = 20;
    for (int round = 0; round < kRounds; ++round) {
        client.key(XK_a, true);
        client.button(1, true);
        client.key(XK_a, false);
        client.button(1, false);
    }
    static_cast<void>(client.focused());
    static_cast<void>(ports().x().topLevels());
    ASSERT_TRUE(pumpUntil([&] { return overlay.events.size() == 4 * kRounds; }));

    std::vector<EventType> downs;
    for (const Event &event : overlay.events) {
        if (event.type == EventType::keyDown || event.type == EventType::leftMouseDown) {
            downs.push_back(event.type);
        }
    }
    ASSERT_EQ(downs.size(), 2U * kRounds);
    for (std::size_t i = 0; i < downs.size(); ++i) {
        EXPECT_EQ(downs[i], i % 2 == 0 ? EventType::keyDown : EventType::leftMouseDown) << i;
    }
}

TEST_F(AnyDisplayPointer, isWhereItWasLastSeenWhateverTheToolkitStillTells)
{
    InkWindow overlay(kWholeScreen);
    const auto look = std::make_shared<Image>(8, 8);
    overlay.surface().setCursorRects({{Rect::make(0, 0, 1000, kScreenHeight), look, {}}});
    overlay.surface().orderFront();
    client.movePointer(500, 500);
    ASSERT_TRUE(pumpUntil([&] { return client.pointerLook().width == look->width(); }));
    const auto windows = QGuiApplication::allWindows();
    const auto window = std::find_if(windows.begin(), windows.end(), [&overlay](QWindow *one) {
        return one->handle() != nullptr && one->winId() == overlay.nativeWindow();
    });
    ASSERT_NE(window, windows.end());

    const QPointF stale(1500, 500);
    QEnterEvent entered(stale, stale, stale);
    QCoreApplication::sendEvent(*window, &entered);

    EXPECT_EQ(client.pointerLook().width, look->width());
}

TEST_F(AnyDisplayPointer, costsTheToolkitNothing)
{
    InkWindow overlay(kWholeScreen);
    overlay.surface().orderFront();
    client.movePointer(500, 500);
    client.button(1, true);
    ASSERT_TRUE(pumpUntil([&] { return overlay.events.size() >= 2; }));
    int motions = 0;
    const ToolkitEvents events(
        [&motions](const xcb_generic_event_t &event) { motions += isMotion(event) ? 1 : 0; });

    for (int i = 1; i <= 20; ++i) {
        client.movePointer(500 + i, 500);
    }
    client.button(1, false);

    ASSERT_TRUE(pumpUntil([&] { return overlay.events.back().type == EventType::leftMouseUp; }));
    EXPECT_GE(overlay.events.size(), 23U);
    EXPECT_EQ(motions, 0);
}

} // namespace orv::platform::test
