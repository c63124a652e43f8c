#include "SessionDesk.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Effects that note what the session asks for.
class NotedEffects : public CanvasEffects {
public:
    explicit NotedEffects(std::vector<std::string> &calls) : calls_(calls) {}
    void doSpotLight(bool on) override { note("spotlight", on); }
    void toggleSpotlight() override { calls_.emplace_back("toggle spotlight"); }
    void handleSpotlightPichAct(bool begin) override { note("pinch", begin); }
    void handleSpotlightPichMove(std::int32_t length) override
    {
        calls_.push_back("pinch by " + std::to_string(length));
    }
    void doScreenCover(bool on) override { note("cover", on); }
    void toggleScreenCover() override { calls_.emplace_back("toggle cover"); }
    void doLaserPointer(bool on) override { note("laser", on); }
    [[nodiscard]] bool isLaserPointer() const override { return false; }
    void recoveryScreenShade() override { calls_.emplace_back("recovery"); }
    void fileTransferController(bool show) override { note("transfer", show); }
    void updateFileTransferStatusDlg(const std::string &text) override { calls_.push_back(text); }

private:
    void note(const char *what, bool on)
    {
        calls_.push_back(std::string(what) + (on ? " on" : " off"));
    }
    std::vector<std::string> &calls_;
};

class SessionEffects : public SessionDesk {
protected:
    void openWithEffects(std::uint32_t plugin)
    {
        open(plugin);
        canvas().setEffects(std::make_unique<NotedEffects>(calls));
    }
    std::vector<std::string> calls;
};

TEST_F(SessionEffects, ADrawTypeTurnsTheLaserPointerOnOrOff)
{
    openWithEffects(17);
    manager->handleSetToolRequest({9, 0, 0.0F, 0, 0});
    EXPECT_THAT(calls, ElementsAre("laser on"));
    calls.clear();
    manager->handleSetToolRequest({3, 0, 5.0F, 0, 0});
    EXPECT_THAT(calls, ElementsAre("laser off"));
}

TEST_F(SessionEffects, APinchReachesTheSpotlight)
{
    openWithEffects(17);
    manager->handleSpotlightPichAct(true);
    manager->handleSpotlightPichMove(-12);
    manager->handleSpotlightPichAct(false);
    EXPECT_THAT(calls, ElementsAre("pinch on", "pinch by -12", "pinch off"));
}

TEST_F(SessionEffects, ClosingTakesThemAwayInTheSecondGenerationAndInASpecialMode)
{
    openWithEffects(17);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(calls, Contains("recovery"));
    manager->terminate();

    calls.clear();
    openWithEffects(12);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(calls, IsEmpty()) << "what the client started stays";

    manager->openAnnotationToolbox();
    manager->setIsEnterSpecialMode(1);
    manager->closeAnnotationToolbox();
    EXPECT_THAT(calls, ElementsAre("recovery"));
}

TEST_F(SessionEffects, WithoutThemEveryRequestIsHarmless)
{
    open(17);
    manager->handleSetToolRequest({9, 0, 0.0F, 0, 0});
    manager->handleSpotlightPichAct(true);
    manager->handleSpotlightPichMove(3);
    manager->leaveOthersMode();
    manager->closeAnnotationToolbox();
    make(17);
    manager->handleSpotlightPichAct(true);
    manager->leaveOthersMode();
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
} // namespace orv::test
