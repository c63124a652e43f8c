#include "Replay.h"

#include "platform/raster/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace orv::apps::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kOpen = R"({"record": {"wparam": 0, "lparam": 0, "ext": "01"}})"
                          "\n";
const std::string kClose = R"({"record": {"wparam": 0, "lparam": 0, "ext": "00"}})"
                           "\n";
const std::string kStroke = R"({"mouse": "down", "at": [100, 100]}
{"mouse": "drag", "at": [300, 100]}
{"mouse": "up", "at": [300, 100]}
)";
const std::string kState = "{\"state\": true}\n";

std::string host(const std::string &keys = "")
{
    return "{\"host\": {" + keys + "}}\n";
}

std::ptrdiff_t placeOf(const std::vector<std::string> &records, const std::string &wanted)
{
    return std::find(records.begin(), records.end(), wanted) - records.begin();
}

TEST(ReplaySession, opensAndSaysSoToTheClient)
{
    const Replay replay(host() + kOpen + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const auto sent = replay.sent();
    const auto mouse = placeOf(sent, "fdef0000 01000000");
    const auto keyboard = placeOf(sent, "feef0000 01000000");
    const auto answer = placeOf(sent, "00800000 00000000 01000101");
    EXPECT_LT(mouse, keyboard);
    EXPECT_LT(keyboard, answer);
    EXPECT_LT(answer, std::ssize(sent));
    EXPECT_THAT(replay.all("presentation"), ElementsAre(1));
    EXPECT_TRUE(replay.state().at("controller").at("m_bInAnnotationMode"));
    EXPECT_EQ(replay.state().at("manager").at("currentTool"), "pen");
}

TEST(ReplaySession, closesAndSaysSoToTheClient)
{
    const Replay replay(host(R"("front": {"pid": 42, "bundle": "org.example.Editor"})") + kOpen +
                        kClose + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    EXPECT_EQ(replay.sent().back(), "00800000 00000000 00000001");
    EXPECT_THAT(replay.all("activate"), ElementsAre(42));
    EXPECT_THAT(replay.all("presentation"), ElementsAre(1, 0));
    EXPECT_TRUE(replay.state().at("canvases").at(0).at("isHidden"));
}

TEST(ReplaySession, timersWaitForTheWait)
{
    const Replay replay(host() + kOpen +
                        "{\"note\": \"before\"}\n{\"wait\": 1.5}\n{\"note\": \"between\"}\n"
                        "{\"wait\": 1}\n{\"note\": \"after\"}\n");

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    std::vector<double> timesAfterBetween;
    bool between = false;
    for (const Json &line : replay.lines()) {
        between = between || line.value("note", "") == "between";
        if (between && line.contains("sent")) {
            timesAfterBetween.push_back(line.at("time"));
        }
    }
    EXPECT_THAT(timesAfterBetween, ElementsAre(2.0));
    EXPECT_THAT(replay.all("note"), ElementsAre("before", "between", "after"));
    EXPECT_EQ(replay.lines().back().at("time"), 2.5);
}

TEST(ReplaySession, drawsWithTheLocalMouse)
{
    const Replay replay(host() + kOpen + kStroke + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &annotations = annotationsOf(replay.state());
    ASSERT_EQ(annotations.size(), 1U);
    const Json &stroke = annotations.at(0);
    EXPECT_EQ(stroke.at("class"), "PencilAnnotation");
    EXPECT_EQ(stroke.at("annotationType"), 2);
    EXPECT_EQ(stroke.at("path"), Json::parse("[[0, 100, 100], [1, 100, 100], [1, 300, 100]]"));
    EXPECT_EQ(stroke.at("annotationSize").get<double>(), static_cast<double>(0.002F * 1440.0F));
    EXPECT_NE(stroke.at("annotationSize").get<double>(), 2.88);
    EXPECT_THAT(replay.sent(), Contains("11000000 00000000 01"));
}

TEST(ReplaySession, undoesRedoesAndWipesAsTheClientAsks)
{
    const std::string undo = "{\"record\": {\"wparam\": 17, \"lparam\": 1}}\n";
    const std::string redo = "{\"record\": {\"wparam\": 17, \"lparam\": 2}}\n";
    const std::string wipe = "{\"record\": {\"wparam\": 19, \"lparam\": 1}}\n{\"wait\": 0.5}\n";

    const Replay replay(host() + kOpen + kStroke + undo + kState + redo + kState + wipe + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const auto states = replay.all("state");
    ASSERT_EQ(states.size(), 3U);
    const auto sizes = [](const Json &state) {
        const Json &canvas = state.at("canvases").at(0);
        const char *mode = "AnnotationModeStandard";
        return std::vector<std::size_t>{canvas.at("annotations").at(mode).size(),
                                        canvas.at("undoHistory").at(mode).size(),
                                        canvas.at("clearedScreens").at(mode).size()};
    };
    EXPECT_THAT(sizes(states[0]), ElementsAre(0, 1, 0));
    EXPECT_THAT(sizes(states[1]), ElementsAre(1, 0, 0));
    EXPECT_THAT(sizes(states[2]), ElementsAre(0, 0, 1));
}

TEST(ReplaySession, drawsAStrokeOfTheClientInItsOwnCoordinates)
{
    const Replay replay(host(R"("client": [720, 450])") + kOpen +
                        R"({"stroke": {"points": [[100, 50], [200, 50]], "seconds": 0.032}})"
                        "\n" +
                        kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &annotations = annotationsOf(replay.state());
    ASSERT_EQ(annotations.size(), 1U);
    EXPECT_EQ(annotations.at(0).at("path"),
              Json::parse("[[0, 200, 800], [1, 200, 800], [1, 300, 800], [1, 400, 800]]"));
    EXPECT_NEAR(replay.lines().back().at("time").get<double>(), 0.032, 1e-9);
}

TEST(ReplaySession, clicksAButtonOfTheToolbox)
{
    const std::string first = host("\"plugin\": 12");
    const std::string open = "{\"record\": {\"wparam\": 0, \"lparam\": 0}}\n";

    const Replay replay(first + open + "{\"click\": \"highlighterButton\"}\n" + kState +
                        "{\"click\": \"penButton@AnnotationManager\"}\n" + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const auto states = replay.all("state");
    EXPECT_EQ(states[0].at("manager").at("currentTool"), "highlighter");
    EXPECT_EQ(states[1].at("manager").at("currentTool"), "pen");
}

TEST(ReplaySession, aHiddenToolboxHasNothingToClick)
{
    const Replay replay(host() + kOpen + "{\"click\": \"penButton\"}\n");

    EXPECT_EQ(replay.status(), 2);
    EXPECT_EQ(replay.errors(), "script:3: \"click\": no visible view is called \"penButton\"\n");
}

TEST(ReplaySession, takesAPictureOfTheDisplay)
{
    const Replay replay(host(R"("desktop": "#102030")") + kOpen + kStroke +
                        "{\"screenshot\": \"pictures/a.png\"}\n");

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const auto picture = platform::readPicture(replay.out("pictures/a.png"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width(), 1440);
    EXPECT_EQ(picture->height(), 900);
    EXPECT_EQ(picture->pixel(200, 800), 0xFFDC0000U);
    EXPECT_EQ(picture->pixel(200, 700), 0xFF102030U);
}

TEST(ReplaySession, listsTheWindowsFromTheFront)
{
    const Replay replay(
        host(
            R"("displays": [{"id": 3, "frame": [0, 0, 1000, 800]}, {"id": 9, "frame": [1000, 0, 640, 480]}])") +
        kOpen + kState);
    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &windows = replay.state().at("windows");
    ASSERT_EQ(windows.size(), 3U);
    EXPECT_EQ(windows.at(0).at("class"), "AnnotationToolboxWindow");
    EXPECT_EQ(windows.at(1).at("class"), "AnnotationOverlayWindow");
    EXPECT_EQ(windows.at(0).at("views").at(0).at("subviews").at(0).at("outlet"),
              "toolSelectionView");
    const Json &canvases = replay.state().at("canvases");
    ASSERT_EQ(canvases.size(), 2U);
    EXPECT_EQ(canvases.at(1).at("displayID"), 9);
    EXPECT_TRUE(canvases.at(0).at("isMain"));
}

TEST(ReplaySession, keepsTheCanvasOfADisplayThatIsUnplugged)
{
    const Replay replay(
        host(
            R"("displays": [{"id": 3, "frame": [0, 0, 1000, 800]}, {"id": 9, "frame": [1000, 0, 640, 480]}])") +
        kOpen + "{\"displays\": [{\"id\": 3, \"frame\": [0, 0, 1000, 800]}]}\n{\"wait\": 0.5}\n" +
        kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    const Json &canvases = replay.state().at("canvases");
    ASSERT_EQ(canvases.size(), 2U);
    EXPECT_TRUE(canvases.at(0).at("enable"));
    EXPECT_FALSE(canvases.at(1).at("enable"));
}

TEST(ReplaySession, writesWhatIsHandedToTheDataSender)
{
    const Replay replay(host() + kOpen + kStroke + kClose +
                        R"({"call": "SendFileToClient", "args": [".", "note.txt"]})"
                        "\n" +
                        kState);
    ASSERT_EQ(replay.status(), 0) << replay.errors();
    EXPECT_THAT(replay.all("data"), IsEmpty());

    std::string saved;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(replay.home("."))) {
        if (entry.is_regular_file()) {
            saved = entry.path().string();
        }
    }
    ASSERT_FALSE(saved.empty()) << "the closing saved nothing";
    const auto name = std::filesystem::path(saved).filename().string();
    const auto folder = std::filesystem::path(saved).parent_path().string();
    const Replay sender(host() + R"({"call": "SendFileToClient", "args": [")" + folder + "\", \"" +
                        name + "\"]}\n");
    ASSERT_EQ(sender.all("data").size(), 1U);
    EXPECT_EQ(sender.all("data")[0].at("file"), "data-1.bin");
    EXPECT_EQ(sender.all("data")[0].at("bytes"), std::filesystem::file_size(saved));
    EXPECT_EQ(std::filesystem::file_size(sender.out("data-1.bin")),
              std::filesystem::file_size(saved));
}

TEST(ReplaySession, passesLogLinesOn)
{
    const Replay replay(host("\"debug\": true") + kOpen);
    const Replay quiet(host("\"debug\": true, \"delegate\": false") + kOpen);

    ASSERT_FALSE(replay.all("log").empty());
    EXPECT_TRUE(replay.all("log")[0].at("level").is_number_integer());
    EXPECT_THAT(quiet.all("log"), IsEmpty());
}

TEST(ReplaySession, withoutSendersNothingIsSent)
{
    const Replay replay(host("\"senders\": false") + kOpen);

    EXPECT_EQ(replay.status(), 0);
    EXPECT_THAT(replay.all("sent"), IsEmpty());
    EXPECT_FALSE(replay.all("log").empty());
}

TEST(ReplaySession, callsTheHostsOperations)
{
    const Replay replay(host() + R"({"call": "setDeviceName", "args": ["Room 7"]}
{"call": "setM_clientDimension", "args": [800, 600]}
{"call": "setM_clientDimension", "args": [[800, 600]]}
{"call": "setDebugDict", "args": [{"pBorderColorHex": "#112233"}]}
{"call": "setDebugDict", "args": [null]}
{"call": "setDebug", "args": [false]}
{"call": "setIsIgnoreMouseEvent", "args": [1]}
{"call": "setM_dpID", "args": [1]}
{"call": "SetActiveOpt", "args": [0, 17]}
{"call": "ToolChanged"}
)" + kOpen + R"({"call": "Createkillmefile"}
{"call": "RecoveryDesktop"}
)" + kState + "{\"call\": \"release\"}\n" +
                        kOpen + kState);

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    EXPECT_EQ(replay.sent().front(), "06000000 01000000");
    EXPECT_EQ(replay.all("process").at(0),
              Json::parse(R"(["/usr/bin/touch", "/tmp/.OrvWhiteboardStatus"])"));
    const auto states = replay.all("state");
    EXPECT_EQ(states[0].at("paths").at("DeviceName"), "Room 7");
    EXPECT_FALSE(states[0].at("controller").at("m_bNotificationsSubscribed"));
    EXPECT_FALSE(states[1].contains("controller"));
    EXPECT_THAT(states[1].at("windows"), IsEmpty());
}

TEST(ReplaySession, postsAnEventAsARecord)
{
    const Replay replay(host() + kOpen +
                        R"({"post": {"event": "spotlightEvent", "wParam": 1, "lParam": 0}})"
                        "\n");

    ASSERT_EQ(replay.status(), 0) << replay.errors();
    EXPECT_EQ(replay.sent().back(), "09000000 01000000");
}

TEST(ReplaySession, setsTheAgeOfAFileBelowHome)
{
    const std::string made = host() + kOpen + kStroke + kClose;
    const Replay replay(made + R"({"age": {"file": "Documents", "seconds": 60}})"
                               "\n");
    const Replay outside(made + R"({"age": {"file": "../out", "seconds": 60}})"
                                "\n");
    const Replay missing(made + R"({"age": {"file": "nothing", "seconds": 60}})"
                                "\n");

    EXPECT_EQ(replay.status(), 0) << replay.errors();
    EXPECT_EQ(outside.status(), 2);
    EXPECT_EQ(outside.errors(),
              "script:7: \"age.file\" is not below the home folder: \"../out\"\n");
    EXPECT_EQ(missing.status(), 2);
}

} // namespace
} // namespace orv::apps::test
