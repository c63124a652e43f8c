#include "orvane-streamer/remote/ControlMessages.h"

#include <gtest/gtest.h>

#include <string>
#include <variant>

namespace orv::apps {
namespace {

std::string helloOf(const std::string &name)
{
    return R"({"type":"hello","name":")" + name + R"("})";
}

std::string nameIn(const std::string &text)
{
    const auto message = controlMessage(text);
    const auto *hello = message ? std::get_if<control::Hello>(&*message) : nullptr;
    return hello == nullptr ? "" : hello->name;
}

TEST(ControlMessages, areRead)
{
    EXPECT_EQ(nameIn(R"({"type": "hello", "name": "Anna's tablet"})"), "Anna's tablet");
    EXPECT_EQ(std::get<control::Shown>(*controlMessage(R"({"frame":7,"type":"shown"})")).frame, 7U);
    EXPECT_EQ(std::get<control::GivePen>(*controlMessage(R"({"type":"givePen","to":5})")).to, 5U);
    EXPECT_EQ(
        std::get<control::RefusePen>(*controlMessage(R"({"type":"refusePen","to":4294967295})")).to,
        4294967295U);
    EXPECT_TRUE(std::holds_alternative<control::AskPen>(*controlMessage(R"({"type":"askPen"})")));
    EXPECT_TRUE(std::holds_alternative<control::DropPen>(*controlMessage(R"({"type":"dropPen"})")));
}

TEST(ControlMessages, whatIsNotExactlyOneIsNone)
{
    for (const std::string text : {"",
                                   "null",
                                   "[]",
                                   "{}",
                                   "7",
                                   "\"askPen\"",
                                   "{\"type\":\"askPen\"",
                                   "askPen",
                                   R"({"type":"ask"})",
                                   R"({"type":7})",
                                   R"({"type":"askPen","to":1})",
                                   R"({"type":"dropPen","x":null})",
                                   R"({"type":"hello"})",
                                   R"({"type":"hello","name":7})",
                                   R"({"type":"hello","name":"a","to":1})",
                                   R"({"type":"shown"})",
                                   R"({"type":"shown","frame":"7"})",
                                   R"({"type":"shown","frame":-1})",
                                   R"({"type":"shown","frame":0})",
                                   R"({"type":"shown","frame":1.5})",
                                   R"({"type":"shown","frame":4294967296})",
                                   R"({"type":"shown","frame":1e30})",
                                   R"({"type":"shown","frame":99999999999999999999})",
                                   R"({"type":"shown","to":1})",
                                   R"({"type":"givePen","to":[1]})",
                                   R"({"type":"givePen","to":{}})",
                                   R"({"type":"givePen","frame":1})",
                                   R"({"type":"askPen"} {})",
                                   R"({"type":"askPen","type":"askPen"})",
                                   R"({"type":"givePen","to":1,"to":2})",
                                   R"([{"type":"askPen"}])",
                                   R"({"type":"askPen",})",
                                   R"({'type':'askPen'})",
                                   R"(/**/{"type":"askPen"})"}) {
        EXPECT_FALSE(controlMessage(text)) << text;
    }
    EXPECT_FALSE(controlMessage(std::string("{\"type\":\"askPen\"}\0", 18)));
}

TEST(ControlMessages, deepNestingIsNoMessage)
{
    EXPECT_FALSE(controlMessage(std::string(4000, '[')));
    EXPECT_FALSE(
        controlMessage(R"({"type":)" + std::string(2000, '[') + std::string(2000, ']') + "}"));
}

TEST(ControlMessages, aNameHasOneToSixtyFourCharacters)
{
    std::string wide;
    for (int i = 0; i < 64; ++i) {
        wide += "\xF0\x9F\x96\x8A";
    }

    EXPECT_EQ(nameIn(helloOf("A")), "A");
    EXPECT_EQ(nameIn(helloOf(std::string(64, 'n'))), std::string(64, 'n'));
    EXPECT_EQ(nameIn(helloOf(wide)), wide);
    EXPECT_EQ(nameIn(helloOf("")), "");
    EXPECT_EQ(nameIn(helloOf(std::string(65, 'n'))), "");
    EXPECT_EQ(nameIn(helloOf(wide + "n")), "");
}

TEST(ControlMessages, aNameBreaksNoLine)
{
    for (const std::string part : {"\\n", "\\u0000", "\\u001b", "\\u007f", "\\u0080", "\\u009f",
                                   "\\u2028", "\\u2029", "\n", "\xC2\x85", "\xE2\x80\xA8"}) {
        EXPECT_EQ(nameIn(helloOf("Anna" + part)), "") << part;
    }
    EXPECT_EQ(nameIn(helloOf("\xC2\xA0\xC3\x84nne \xE2\x80\x99")),
              "\xC2\xA0\xC3\x84nne \xE2\x80\x99");
}

TEST(ControlMessages, aNameIsValidText)
{
    for (const std::string part :
         {"\xff", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\\ud800", "\\udc00x"}) {
        EXPECT_EQ(nameIn(helloOf("Anna" + part)), "") << part;
    }
}

TEST(ControlMessages, areWritten)
{
    PenHolder people;
    (void)people.come({3, "Anna's \"tablet\""});
    (void)people.come({5, "Ben"});

    EXPECT_EQ(welcomeText(3, 17, {1920, 1080, 8}),
              R"({"height":1080,"id":3,"plugin":17,"scale":8,"type":"welcome","width":1920})");
    EXPECT_EQ(displayText({1280, 800, 4}),
              R"({"height":800,"scale":4,"type":"display","width":1280})");
    EXPECT_EQ(clientsText(people),
              R"({"list":[{"id":3,"name":"Anna's \"tablet\""},{"id":5,"name":"Ben"}],)"
              R"("pen":3,"type":"clients"})");
    EXPECT_EQ(clientsText(PenHolder()), R"({"list":[],"pen":0,"type":"clients"})");
    EXPECT_EQ(penAskedText({5, "Ben"}), R"({"by":5,"name":"Ben","type":"penAsked"})");
    EXPECT_EQ(penRefusedText(), R"({"type":"penRefused"})");
}

} // namespace
} // namespace orv::apps
