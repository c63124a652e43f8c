#include "Replay.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace orv::apps::test {
namespace {

TEST(FirstLesson, endsWithOneTickOnAWipedBoard)
{
    std::ifstream file(ORV_LESSON);
    std::stringstream script;
    script << file.rdbuf() << "{\"state\": true}\n";

    const Replay replay(script.str());

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &canvas = replay.state().at("canvases").at(0);
    const Json &annotations = annotationsOf(replay.state());
    ASSERT_EQ(annotations.size(), 1U);
    EXPECT_EQ(annotations.at(0).at("class"), "PencilAnnotation");
    EXPECT_EQ(annotations.at(0).at("annotationSize"), 12.0);
    const Json &cleared = canvas.at("clearedScreens").at("AnnotationModeStandard");
    ASSERT_EQ(cleared.size(), 1U);
    EXPECT_EQ(cleared.at(0).size(), 18U);
    EXPECT_EQ(cleared.at(0).at(15).at("class"), "HighlighterAnnotation");
    EXPECT_TRUE(std::filesystem::exists(replay.out("first-lesson-theorem.png")));
    EXPECT_TRUE(std::filesystem::exists(replay.out("first-lesson-end.png")));
}

} // namespace
} // namespace orv::apps::test
