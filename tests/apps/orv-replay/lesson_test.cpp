#include "Replay.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orv::apps::test {
namespace {

TEST(FirstLesson, wipesItsTheoremAndEndsWithEveryToolUnderATick)
{
    std::ifstream file(ORV_LESSON);
    std::stringstream script;
    script << file.rdbuf() << "{\"state\": true}\n";

    const Replay replay(script.str());

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &canvas = replay.state().at("canvases").at(0);
    std::vector<std::string> classes;
    for (const Json &annotation : annotationsOf(replay.state())) {
        classes.push_back(annotation.at("class"));
    }
    const std::string stamp = "StampAnnotation";
    EXPECT_THAT(classes,
                ::testing::ElementsAre("RectangleAnnotation", "EllipseAnnotation", "LineAnnotation",
                                       "LineAnnotation", stamp, stamp, stamp, stamp, stamp, stamp,
                                       "TextAnnotation", "HighlighterAnnotation",
                                       "EraserAnnotation", "EraserAnnotation", "PencilAnnotation"));
    const Json &text = annotationsOf(replay.state()).at(10);
    EXPECT_EQ(text.at("lines"), Json::parse(R"(["Begin with the plan.", "Never without it!"])"));
    const Json &cleared = canvas.at("clearedScreens").at("AnnotationModeStandard");
    ASSERT_EQ(cleared.size(), 1U);
    EXPECT_EQ(cleared.at(0).size(), 18U);
    EXPECT_EQ(cleared.at(0).at(15).at("class"), "HighlighterAnnotation");
    for (const char *picture :
         {"first-lesson-theorem.png", "first-lesson-tools.png", "first-lesson-end.png"}) {
        EXPECT_TRUE(std::filesystem::exists(replay.out(picture))) << picture;
    }
}

} // namespace
} // namespace orv::apps::test
