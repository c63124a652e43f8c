#include "HostOnScreen.h"

#include "platform/raster/Pictures.h"

#include <gmock/gmock.h>

#include <cmath>

// A client takes a snapshot of what the screen really shows, and a flipchart page is saved.

namespace orv::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kWhite = 0xFFFFFF;

class AnyDisplayThatIsCaptured : public HostOnScreen {
protected:
    void stroke()
    {
        send(1, 8, {0, 0, 0, 0, 60, 0, 255, 255, 0, 0});
        clientMouse(5, 300, 300);
        clientMouse(10, 500, 300);
        clientMouse(6, 500, 300);
    }
    /// The first file with this extension in the device's folder of this type; empty for none.
    [[nodiscard]] static std::string fileIn(const char *type, const std::string &extension)
    {
        const fs::path folder = fs::path(AppConstants::instance().AppUserDataPath) / type;
        if (fs::exists(folder)) {
            for (const auto &entry : fs::recursive_directory_iterator(folder)) {
                if (entry.path().extension() == extension) {
                    return entry.path().string();
                }
            }
        }
        return {};
    }
    /// Near enough for a picture of a lossy kind.
    static void expectColor(const std::string &path, int x, int y, std::uint32_t wanted)
    {
        const auto picture = platform::readPicture(path);
        ASSERT_TRUE(picture) << path;
        ASSERT_EQ(picture->width(), 1920);
        const std::uint32_t color = picture->pixel(x, y);
        for (const unsigned shift : {0U, 8U, 16U}) {
            const auto part = [shift](std::uint32_t of) {
                return static_cast<int>((of >> shift) & 0xFFU);
            };
            EXPECT_LE(std::abs(part(color) - part(wanted)), 16)
                << path << " at " << x << ", " << y << std::hex << ": " << color;
        }
    }
};

TEST_F(AnyDisplayThatIsCaptured, GivesASnapshotWithItsInkAndACleanBackgroundWithout)
{
    openSecondGeneration();
    stroke();
    ASSERT_TRUE(comesToShow(400, 300, kRed));

    send(18, 1);
    ASSERT_TRUE(pumpUntil([] { return hasRecord(18); })) << "the client is told";

    const std::string picture = fileIn("Snapshot", ".jpg");
    const std::string background = fileIn("Snapshot", ".RawBG");
    expectColor(picture, 400, 300, kRed);
    expectColor(picture, 400, 360, kGreen);
    expectColor(background, 400, 300, kGreen);
    expectColor(background, 400, 360, kGreen);
    EXPECT_NE(fileIn("Snapshot", ".data"), "");
    EXPECT_TRUE(comesToShow(400, 300, kRed)) << "the screen is as it was";
}

TEST_F(AnyDisplayThatIsCaptured, GivesAFlipchartPageAndComesBackWithTheInkOfTheScreen)
{
    openSecondGeneration();
    stroke();
    ASSERT_TRUE(comesToShow(400, 300, kRed));
    send(0, 1, {1, 0});
    ASSERT_TRUE(comesToShow(400, 300, kWhite)) << "a white sheet covers the screen";
    stroke();
    ASSERT_TRUE(comesToShow(400, 300, kRed));

    send(0, 1, {0, 0});

    ASSERT_TRUE(comesToShow(400, 360, kGreen));
    EXPECT_TRUE(comesToShow(400, 300, kRed)) << "what was drawn on the screen is there again";
    const std::string page = fileIn("Flipchart", ".jpg");
    expectColor(page, 400, 300, kRed);
    expectColor(page, 400, 360, kWhite);
    expectColor(page, 1800, 1000, kWhite);

    manager()->annotationsView()->enterFlipchartEditingModeWithImageFile(page);
    ASSERT_TRUE(comesToShow(400, 360, kWhite));
    EXPECT_TRUE(comesToShow(400, 300, kRed)) << "the page opens again with its ink";
    manager()->annotationsView()->undoAnnotation();
    EXPECT_TRUE(comesToShow(400, 300, kWhite)) << "which can still be undone";
}

} // namespace
} // namespace orv::test
