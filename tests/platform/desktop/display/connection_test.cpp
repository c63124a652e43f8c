#include "platform/desktop/display/Desk.h"
#include "platform/desktop/display/PaintingClient.h"

#include <gmock/gmock.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <future>
#include <thread>

#include <QDeadlineTimer>

namespace orv::platform::test {

namespace {

constexpr std::uint32_t kGround = 0x00ff00;
const QRect kFrame(200, 200, 100, 100);

/// Ours, shown, for input alone.
xcb_window_t showInputOnlyWindow(const XConnection &x)
{
    const xcb_window_t window = xcb_generate_id(x.get());
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(x.get(), 0, window, x.root(), 0, 0, 10, 10, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(x.get(), window);
    return window;
}

} // namespace

class AnyDisplayWindows : public Desk {
protected:
    PaintingClient others;
};

TEST_F(AnyDisplayWindows, areShownWhileTheyAreMappedAndDraw)
{
    const XConnection &x = ports().x();
    const xcb_window_t first = others.show(kFrame, kGround);
    const xcb_window_t hidden = others.show(kFrame, kGround);
    const xcb_window_t gone = others.show(kFrame, kGround);
    const xcb_window_t second = others.show(kFrame, kGround);
    const xcb_window_t inputOnly = showInputOnlyWindow(x);
    others.hide(hidden);
    others.destroy(gone);

    const auto shown = x.shownAmong({second, inputOnly, hidden, first, gone});

    EXPECT_THAT(shown, testing::ElementsAre(second, first));
    xcb_destroy_window(x.get(), inputOnly);
}

TEST_F(AnyDisplayWindows, areAllAskedAboutBeforeAnAnswerIsAwaited)
{
    constexpr std::size_t kQuestions = 100;
    const XConnection &x = ports().x();
    const std::vector<xcb_window_t> windows(kQuestions, others.show(kFrame, kGround));
    x.flush();
    client.grabServer();

    const std::uint64_t before = xcb_total_written(x.get());
    auto shown = std::async(std::launch::async, [&] { return x.shownAmong(windows); });
    const std::uint64_t all = before + kQuestions * sizeof(xcb_get_window_attributes_request_t);
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (xcb_total_written(x.get()) < all && !deadline.hasExpired()) {
        std::this_thread::yield();
    }
    const std::uint64_t written = xcb_total_written(x.get());
    client.ungrabServer();

    EXPECT_GE(written, all);
    EXPECT_EQ(shown.get(), windows);
}

} // namespace orv::platform::test
