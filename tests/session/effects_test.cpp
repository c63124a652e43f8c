#include "SessionDesk.h"

#include "support/NotedEffects.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
