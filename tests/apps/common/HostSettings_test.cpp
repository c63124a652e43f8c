#include "common/HostSettings.h"

#include "common/ScriptError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;

std::string failureOf(const char *argument)
{
    try {
        (void)hostSettings(Json::parse(argument));
    } catch (const ScriptError &error) {
        return error.what();
    }
    return "no failure";
}

TEST(HostSettings, haveDefaultsForAllKeys)
{
    const HostSettings settings = hostSettings(Json::object());

    EXPECT_EQ(settings.plugin, 17U);
    EXPECT_FALSE(settings.device);
    EXPECT_FALSE(settings.client);
    ASSERT_EQ(settings.displays.size(), 1U);
    EXPECT_EQ(settings.displays[0].width, 1440.0);
    EXPECT_EQ(settings.freeBytes, 1'000'000'000'000U);
    EXPECT_TRUE(settings.senders);
    EXPECT_TRUE(settings.delegate);
}

TEST(HostSettings, takeEveryKey)
{
    const HostSettings settings = hostSettings(Json::parse(R"({
        "plugin": 12, "device": "Room 7", "displayID": 5, "client": [1024, 768],
        "ignoreMouse": 1, "debug": true, "debugDict": {"pBorderColorHex": "#112233"},
        "delegate": false, "senders": false, "bundle": "org.example.Host",
        "displays": [{"id": 5, "frame": [0, 0, 800, 600]}, {"id": 6, "frame": [800, -50, 640, 480]}],
        "front": {"pid": 99, "bundle": "org.example.Front"}, "running": ["a", "b"],
        "accessibility": true, "clock": "2027-05-06 07:08:09", "freeBytes": 1e3,
        "desktop": "#000000"})"));

    EXPECT_EQ(settings.plugin, 12U);
    EXPECT_EQ(settings.device, "Room 7");
    EXPECT_EQ(settings.displayID, 5U);
    EXPECT_EQ(settings.client->height, 768.0);
    EXPECT_EQ(settings.ignoreMouse, 1);
    EXPECT_TRUE(settings.debug);
    EXPECT_EQ(settings.debugDict.at("pBorderColorHex"), "#112233");
    EXPECT_FALSE(settings.delegate);
    EXPECT_FALSE(settings.senders);
    EXPECT_EQ(settings.bundle, "org.example.Host");
    ASSERT_EQ(settings.displays.size(), 2U);
    EXPECT_EQ(settings.displays[1].id, 6U);
    EXPECT_EQ(settings.displays[1].y, -50.0);
    EXPECT_EQ(settings.front.pid, 99);
    EXPECT_EQ(settings.front.bundle, "org.example.Front");
    EXPECT_EQ(settings.running.size(), 2U);
    EXPECT_TRUE(settings.accessibility);
    EXPECT_EQ(settings.clock, "2027-05-06 07:08:09");
    EXPECT_EQ(settings.freeBytes, 1000U);
    EXPECT_EQ(settings.desktop, "#000000");
}

TEST(HostSettings, nameTheKeyAtFault)
{
    EXPECT_THAT(failureOf("[]"), HasSubstr("\"host\" is not an object"));
    EXPECT_THAT(failureOf(R"({"plugn": 17})"), HasSubstr("unknown key \"plugn\""));
    EXPECT_THAT(failureOf(R"({"plugin": "17"})"), HasSubstr("\"host.plugin\""));
    EXPECT_THAT(failureOf(R"({"client": [1]})"), HasSubstr("\"host.client\""));
    EXPECT_THAT(failureOf(R"({"debug": 1})"), HasSubstr("\"host.debug\""));
    EXPECT_THAT(failureOf(R"({"debugDict": {"a": 1}})"), HasSubstr("\"host.debugDict.a\""));
    EXPECT_THAT(failureOf(R"({"displays": [{"id": 1}]})"), HasSubstr("\"host.displays.frame\""));
    EXPECT_THAT(failureOf(R"({"displays": [{"id": 1, "frame": [0, 0, 0, 5]}]})"),
                HasSubstr("\"host.displays.frame\""));
    EXPECT_THAT(failureOf(R"({"displays": [{"id": 1, "frame": [0, 0, 5, 5]},
                                           {"id": 1, "frame": [5, 0, 5, 5]}]})"),
                HasSubstr("two displays of the id 1"));
    EXPECT_THAT(failureOf(R"({"front": {"bundle": "x"}})"), HasSubstr("\"host.front.pid\""));
    EXPECT_THAT(failureOf(R"({"running": [1]})"), HasSubstr("\"host.running\""));
    EXPECT_THAT(failureOf(R"({"freeBytes": -1})"), HasSubstr("\"host.freeBytes\""));
}

} // namespace
} // namespace orv::apps
