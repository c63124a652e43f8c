#include "platform/desktop/display/Desk.h"

#include "platform/ports/Applications.h"

#include <QProcess>

#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace orv::platform::test {

namespace {

/// A program that does nothing until the object goes.
class IdleProgram {
public:
    IdleProgram()
    {
        process_.start(QStringLiteral("cat"), QStringList());
        process_.waitForStarted();
    }
    ~IdleProgram()
    {
        process_.closeWriteChannel();
        process_.waitForFinished();
    }
    IdleProgram(const IdleProgram &) = delete;
    IdleProgram &operator=(const IdleProgram &) = delete;

    [[nodiscard]] std::int32_t pid() const
    {
        return static_cast<std::int32_t>(process_.processId());
    }

private:
    QProcess process_;
};

/// Another value of an environment variable for the length of a scope; null for none.
class Environment {
public:
    Environment(const char *name, const char *value) : name_(name)
    {
        if (const char *before = std::getenv(name)) {
            before_ = before;
        }
        value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
    }
    ~Environment() { before_ ? ::setenv(name_, before_->c_str(), 1) : ::unsetenv(name_); }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const char *name_;
    std::optional<std::string> before_;
};

std::string errorOfDisplay(const char *display)
{
    const Environment environment("DISPLAY", display);
    try {
        XConnection::requireUsableDisplay();
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return {};
}

} // namespace

class WithWindowManager : public Desk {};

TEST_F(WithWindowManager, tellsWhoHasTheFrontAndGivesItBack)
{
    const IdleProgram first;
    const IdleProgram second;
    Applications &applications = ports().applications();
    client.showWindow(200, 200, 300, 300, 0x00ff00, false, first.pid());
    ASSERT_TRUE(pumpUntil([&] { return applications.frontProcess() == first.pid(); }));
    client.showWindow(600, 200, 300, 300, 0x0000ff, false, second.pid());
    ASSERT_TRUE(pumpUntil([&] { return applications.frontProcess() == second.pid(); }));

    applications.setFrontProcess(first.pid());
    EXPECT_TRUE(pumpUntil([&] { return applications.frontProcess() == first.pid(); }));

    InkWindow overlay(Rect::make(0, 0, 100, 100));
    overlay.surface().orderFront();
    EXPECT_EQ(applications.frontProcess(), first.pid());
    overlay.surface().makeKey();
    EXPECT_TRUE(pumpUntil([&] { return applications.frontProcess() == ::getpid(); }));
    applications.setFrontProcess(first.pid());
    EXPECT_TRUE(pumpUntil([&] { return applications.frontProcess() == first.pid(); }));
    EXPECT_TRUE(pumpUntil([&] { return !overlay.surface().isKey(); }));
}

class AnyDisplayApplications : public Desk {};

TEST_F(AnyDisplayApplications, namesProcessesByTheirProgramWhereNoDesktopEntryFits)
{
    const IdleProgram program;
    const Applications &applications = ports().applications();

    // Its name is known a moment after it has started.
    EXPECT_TRUE(pumpUntil([&] { return applications.bundleIdentifier(program.pid()) == "cat"; }));
    EXPECT_TRUE(applications.isRunning("cat"));
    EXPECT_FALSE(applications.isRunning("org.example.NotThere"));
    EXPECT_FALSE(applications.isRunning(""));
    EXPECT_EQ(applications.bundleIdentifier(::getpid()), applications.mainBundleIdentifier());
    EXPECT_EQ(applications.bundleIdentifier(0), "");
}

TEST_F(AnyDisplayApplications, hasNoAccessibilityWithoutASessionBus)
{
    const Environment environment("DBUS_SESSION_BUS_ADDRESS", nullptr);
    EXPECT_FALSE(ports().applications().isAccessibilityEnabled());
}

TEST(AnyDisplayConnection, saysInOneSentenceWhyThereIsNoDisplay)
{
    EXPECT_EQ(errorOfDisplay(nullptr),
              "There is no display to draw on: the environment variable DISPLAY is not set.");
    EXPECT_EQ(errorOfDisplay(":4711"),
              "The X display \":4711\" can't be connected to: no server answers there, or it "
              "refuses this user.");
    EXPECT_EQ(errorOfDisplay(std::getenv("DISPLAY")), "");
}

TEST(AnyDisplayConnection, refusesASecondPlatformInOneProcess)
{
    EXPECT_THROW(DesktopPlatform(DesktopPlatform::Options{}), std::runtime_error);
}

} // namespace orv::platform::test
