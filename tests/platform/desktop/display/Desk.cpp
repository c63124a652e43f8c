#include "platform/desktop/display/Desk.h"

#include "platform/ports/Platform.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orv::platform::test {

namespace {

constexpr int kDeadlineMilliseconds = 10'000;
constexpr int kLookMilliseconds = 5;
constexpr double kLineWidth = 10.0;
constexpr std::uint32_t kGreen = 0x00ff00;

std::unique_ptr<DesktopPlatform> &owned()
{
    static std::unique_ptr<DesktopPlatform> platform;
    return platform;
}

class PlatformEnvironment : public testing::Environment {
public:
    void SetUp() override
    {
        owned() = std::make_unique<DesktopPlatform>(DesktopPlatform::Options{});
    }
    void TearDown() override { owned().reset(); }
};

const auto *const kEnvironment = testing::AddGlobalTestEnvironment(new PlatformEnvironment);

bool isNear(std::uint32_t a, std::uint32_t b)
{
    for (const int shift : {0, 8, 16}) {
        const int difference =
            static_cast<int>((a >> shift) & 0xff) - static_cast<int>((b >> shift) & 0xff);
        if (std::abs(difference) > 2) {
            return false;
        }
    }
    return true;
}

} // namespace

DesktopPlatform &desktop()
{
    return *owned();
}

DesktopPorts &ports()
{
    return dynamic_cast<DesktopPorts &>(Platform::current());
}

bool pumpUntil(const std::function<bool()> &condition)
{
    QTimer look;
    look.start(kLookMilliseconds);
    const QDeadlineTimer deadline(kDeadlineMilliseconds);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

InkWindow::InkWindow(const Rect &frame, int level)
    : frame_(frame), surface_(ports().windowServer().createSurface(*this))
{
    surface_->setFrame(frame);
    surface_->setLevel(level);
}

std::uint64_t InkWindow::pixelsSent() const
{
    return dynamic_cast<const DesktopWindowSurface &>(*surface_).pixelsSent();
}

xcb_window_t InkWindow::nativeWindow() const
{
    return dynamic_cast<const DesktopWindowSurface &>(*surface_).nativeWindow();
}

const Image &InkWindow::picture() const
{
    return dynamic_cast<const DesktopWindowSurface &>(*surface_).picture();
}

void InkWindow::sendEvent(const Event &event)
{
    events.push_back(event);
    if (event.type == EventType::leftMouseDown) {
        line_ = Path();
        line_.moveTo(event.location);
    } else if (event.type == EventType::leftMouseDragged) {
        const Point from = line_.currentPoint();
        line_.lineTo(event.location);
        const Rect segment =
            Rect::make(std::min(from.x, event.location.x), std::min(from.y, event.location.y),
                       std::abs(from.x - event.location.x), std::abs(from.y - event.location.y));
        surface_->setNeedsDisplay(segment.insetBy(-kLineWidth, -kLineWidth));
    }
    if (onEvent) {
        onEvent(event);
    }
}

void InkWindow::draw(GraphicsContext &context, const Rect &dirty)
{
    drawn.push_back(dirty);
    context.setFillColor(background);
    context.fillRect({{}, frame_.size}, CompositingOperation::copy);
    context.setStrokeColor(ink);
    context.setLineWidth(kLineWidth);
    context.strokePath(line_);
    if (onDraw) {
        onDraw(context);
    }
}

PluggedDisplay::PluggedDisplay(const std::string &name, const std::string &geometry, bool isMain)
    : name_(name)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"),
                                {QStringLiteral("--setmonitor"),
                                 QString::fromStdString(isMain ? "*" + name : name),
                                 QString::fromStdString(geometry),
                                 isMain ? QStringLiteral("screen") : QStringLiteral("none")}),
              0);
}

PluggedDisplay::~PluggedDisplay()
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xrandr"),
                                {QStringLiteral("--delmonitor"), QString::fromStdString(name_)}),
              0);
}

void Desk::SetUp()
{
    client.beforeInput = [] { static_cast<void>(ports().x().topLevels()); };
    client.movePointer(1900, 1000);
    // A test that had more displays leaves their end to the loop.
    ASSERT_TRUE(pumpUntil([] { return ports().displays().screens().size() == 1; }));
}

bool Desk::comesToShow(int x, int y, std::uint32_t color)
{
    return pumpUntil([&] { return isNear(client.pixel(x, y), color); });
}

xcb_window_t Desk::showGreenWindow()
{
    const xcb_window_t window = client.showWindow(200, 200, 600, 400, kGreen);
    EXPECT_TRUE(pumpUntil([&] { return client.pixel(500, 400) == kGreen; }));
    return window;
}

} // namespace orv::platform::test
