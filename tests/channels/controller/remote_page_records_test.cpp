#include "HostDesk.h"

#include "OrvAnnotation/Events.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <map>

// The records that the remote page makes and reads, byte for byte as its own tests have them.

namespace orv::test {
namespace {

using Json = nlohmann::json;

stCommand_mgs recordOf(const std::string &digits)
{
    constexpr int kHexadecimal = 16;
    stCommand_mgs record;
    std::array<std::uint8_t, sizeof record> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes.at(i) =
            static_cast<std::uint8_t>(std::stoi(digits.substr(2 * i, 2), nullptr, kHexadecimal));
    }
    std::memcpy(&record, bytes.data(), bytes.size());
    return record;
}

std::string digitsOf(const stCommand_mgs &record)
{
    std::array<std::uint8_t, sizeof record> bytes{};
    std::memcpy(bytes.data(), &record, bytes.size());
    std::string digits;
    for (const std::uint8_t byte : bytes) {
        digits += fmt::format("{:02x}", byte);
    }
    return digits;
}

class RemotePageRecords : public HostDesk {
protected:
    RemotePageRecords()
    {
        std::ifstream file(ORV_RECORD_VECTORS);
        for (Json &vector : Json::parse(file)) {
            const std::string name = vector["name"];
            vectors_[name] = std::move(vector);
        }
        // As a host for pages does: eight units a pixel.
        controller->setM_clientDimension({1440.0 * 8.0, 900.0 * 8.0});
        usePlugin(17);
    }
    void give(const std::string &name)
    {
        controller->CommandClient2App(recordOf(bytes(name)));
        drain();
    }
    [[nodiscard]] std::string bytes(const std::string &name) const
    {
        return vectors_.at(name)["bytes"];
    }
    [[nodiscard]] const std::map<std::string, Json> &vectors() const { return vectors_; }
    /// All records since the last call.
    std::vector<std::string> sent()
    {
        drain();
        std::vector<std::string> digits;
        for (const stCommand_mgs &record : mailbox().records) {
            digits.push_back(digitsOf(record));
        }
        mailbox().records.clear();
        return digits;
    }

private:
    std::map<std::string, Json> vectors_;
};

/// What the library calls the tool that the page calls so.
std::string toolName(const std::string &type)
{
    return type == "laser" ? "pen" : type;
}

TEST_F(RemotePageRecords, ToolsAreChosenAsThePageShowsThem)
{
    give("open annotation");
    int seen = 0;
    for (const auto &[name, vector] : vectors()) {
        const Json &what = vector["what"];
        if (vector["direction"] != "to library" || what["record"] != "tool" ||
            what["type"] == "laser") {
            continue;
        }
        give(name);
        const auto tool = manager()->currentTool();
        const bool isStamp = what["type"] == "stamp";
        EXPECT_EQ(tool->name(), toolName(what["type"])) << name;
        EXPECT_EQ(tool->annotationSize(), what["size"].get<float>() + (isStamp ? 100.0F : 0.0F))
            << name;
        EXPECT_EQ(tool->annotationDash(), what["dashed"].get<bool>()) << name;
        if (!isStamp) {
            const auto channel = [&](int index) {
                return what["color"][index].get<float>() / 255.0F;
            };
            EXPECT_EQ(tool->annotationColor(),
                      (platform::Color{channel(0), channel(1), channel(2), 1.0}))
                << name;
        }
        ++seen;
    }
    EXPECT_EQ(seen, 15);
    give("arrow, dashed");
    EXPECT_EQ(manager()->currentTool()->annotationStyle(), 98);
    give("stamp: star");
    EXPECT_EQ(manager()->currentTool()->annotationColor().blue(), double{1.0F / 255.0F});
}

TEST_F(RemotePageRecords, PointsLieWhereThePageHasThem)
{
    give("open annotation");
    give("pen, red");
    const auto strokeAt = [this](const std::string &press, platform::Point at) {
        give(press);
        send(0xEFFD, 6, {0, 0, 0, 0, 0, 0, 0, 0});
        const auto view = manager()->annotationsView();
        const auto stroke = std::dynamic_pointer_cast<PathAnnotation>(
            view->document().annotations(view->annotationModeKey())->back());
        platform::Point first;
        bool isFirst = true;
        stroke->path().forEach([&](const platform::Path::Element &element) {
            first = isFirst ? element.points[0] : first;
            isFirst = false;
        });
        EXPECT_EQ(first, at) << press;
    };

    strokeAt("press in the middle", {960.0, 900.0 - 540.0});
    strokeAt("press at the top edge", {960.0, 900.0});
    strokeAt("press at the corner", {0.0, 900.0});
}

TEST_F(RemotePageRecords, UndoRedoWipeAndTextArrive)
{
    give("open annotation");
    give("pen, red");
    give("press in the middle");
    give("move, fractions of a pixel round");
    give("release at the left edge, y packed");
    ASSERT_EQ(annotationCount(), 1U);
    give("undo");
    EXPECT_EQ(annotationCount(), 0U);
    give("redo");
    EXPECT_EQ(annotationCount(), 1U);
    give("flipchart on");
    EXPECT_EQ(manager()->annotationsView()->annotationModeKey(), "AnnotationModeFlipchart");
    give("flipchart off");
    EXPECT_EQ(manager()->annotationsView()->annotationModeKey(), "AnnotationModeStandard");
    give("close annotation");
    EXPECT_FALSE(manager()->annotationsView()->getWindow()->isVisible());
}

TEST_F(RemotePageRecords, WhatTheLibraryReportsIsWhatThePageReads)
{
    give("open annotation");
    wait(3.0);
    const std::vector<std::string> opened = sent();
    EXPECT_THAT(opened,
                testing::Contains(bytes("annotation is open with its toolbar, as an answer")));
    EXPECT_THAT(opened, testing::Contains(bytes("mouse input is taken")));
    EXPECT_THAT(opened, testing::Contains(bytes("keyboard input is taken")));
    const auto expectOne = [this](const std::string &name) {
        EXPECT_THAT(sent(), testing::ElementsAre(bytes(name)));
    };

    sendNotifyMeesage("undoreoEvent", 258, 3);
    expectOne("counts of undo and redo");
    sendNotifyMeesage("textModeEvent", 1, 0);
    expectOne("open the keyboard");
    sendNotifyMeesage("textModeEvent", 0, 0);
    expectOne("close the keyboard");
    sendNotifyMeesage("snapshotTaken", 0, 0);
    expectOne("snapshot saved");
    sendNotifyMeesage("helpRequested", 1, 0);
    expectOne("help is wanted");
    sendNotifyMeesage("shadeModeEvent", 1, 0);
    expectOne("cover on");
    sendNotifyMeesage("spotlightEvent", 1, 0);
    expectOne("spotlight on");
    sendNotifyMeesage("pagebtnStatus", 0, 0);
    expectOne("page buttons off");
    sendNotifyMeesage("mouseEventHandle", 0, 0);
    expectOne("mouse input is not taken");
    sendNotifyMeesage("videoRecording", 0x8015, 0x10000);
    expectOne("recording runs, as an answer");
    sendNotifyMeesage("videoRecording", 0x8015, 513);
    expectOne("recording failed");
}

} // namespace
} // namespace orv::test
