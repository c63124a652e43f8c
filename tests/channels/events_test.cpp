#include "OrvAnnotation/Events.h"
#include "OrvAnnotation/Version.h"
#include "channels/AppConstants.h"
#include "channels/EventNames.h"
#include "channels/OrvAnnotationDebugSetting.h"
#include "platform/foundation/NotificationCenter.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <thread>

namespace orv::test {
namespace {

using ::testing::ElementsAre;

class Events : public VirtualDesk {
protected:
    Events() { AppConstants::instance().setAppActUniqueID(16); }
    ~Events() override
    {
        platform::NotificationCenter::local().removeObserver(this);
        AppConstants::destroy();
    }
    void observe(const std::string &shortName)
    {
        platform::NotificationCenter::local().addObserver(
            this, eventName(shortName, 16),
            [this](std::string_view, const EventDictionary &event) { seen.push_back(event); });
    }
    [[nodiscard]] std::int32_t number(const char *key) const
    {
        return getDictIntByKey(&seen.back(), key);
    }

    std::vector<EventDictionary> seen;
};

TEST_F(Events, NamesCarryTheHostAndThePlugInInSixDigitsOrMore)
{
    EXPECT_EQ(eventName("toolboxEvent", 16),
              "com.orvane.Orvane-Streamer.OrvAppAnnotation.toolboxEvent.000016");
    EXPECT_TRUE(eventName("x", 7).ends_with(".000007"));
    EXPECT_TRUE(eventName("x", 1234567).ends_with(".1234567"));
}

TEST_F(Events, ADictionaryHoldsBothNumbersTheProcessAndThePlugIn)
{
    observe("helpRequested");
    sendNotifyMeesage("helpRequested", 1, 0xFFFFFFFF);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].size(), 4U);
    EXPECT_EQ(number("wParam"), 1);
    EXPECT_EQ(number("lParam"), -1) << "numbers are signed";
    EXPECT_EQ(number("pidParam"), ::getpid());
    EXPECT_EQ(number("pluginIDParam"), 16);
    EXPECT_EQ(getDictDataByKey(&seen[0], "rParam"), std::nullopt);
}

TEST_F(Events, PrivateDataTravelsWithTheEvent)
{
    observe("shareFileTransfer");
    const std::vector<std::uint8_t> bytes{1, 2, 3};
    sendNotifyMeesageRes("shareFileTransfer", 1, 0, &bytes);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(getDictDataByKey(&seen[0], "rParam"), bytes);
}

TEST_F(Events, AModeSwitchPacksItsBytesAndFlags)
{
    observe("switchModeEvent");
    sendSwitchModeAckInfo(2, 1, 3, 1, true, true);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(number("wParam"), 2);
    EXPECT_EQ(number("lParam"), 4 + 1 + 2);
    const auto bytes = getDictDataByKey(&seen[0], "rParam").value();
    EXPECT_EQ(bytes.size(), 52U);
    EXPECT_THAT(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + 4),
                ElementsAre(1, 1, 3, 0));
}

TEST_F(Events, OnlyFlipchartAndSnapshotCarryASubMode)
{
    observe("switchModeEvent");
    sendSwitchModeAckInfo(5, 3, 0, 1, true, false);
    EXPECT_EQ(getDictDataByKey(&seen.back(), "rParam").value()[1], 0);
    sendSwitchModeAckInfo(1, 3, 0, 1, true, false);
    EXPECT_EQ(getDictDataByKey(&seen.back(), "rParam").value()[1], 3);
}

TEST_F(Events, AShowOf256IsZeroInItsByteAndSetInTheFlags)
{
    observe("switchModeEvent");
    sendSwitchModeAckInfo(0, 0, 0, 256, false, false);
    EXPECT_EQ(getDictDataByKey(&seen.back(), "rParam").value()[0], 0);
    EXPECT_EQ(number("lParam"), 4);
}

TEST_F(Events, ReceiversRunOnThePostingThreadBeforeThePostReturns)
{
    std::thread::id where;
    platform::NotificationCenter::local().addObserver(
        this, eventName("toolboxEvent", 16), [&where](std::string_view, const EventDictionary &) {
            where = std::this_thread::get_id();
        });
    std::thread::id poster;
    std::thread([&] {
        poster = std::this_thread::get_id();
        sendNotifyMeesage("toolboxEvent", 1, 1);
        EXPECT_EQ(where, poster);
    }).join();
    EXPECT_EQ(where, poster);
}

TEST(EventDictionaries, MissingDictionariesKeysAndOtherTypesReadAsNothing)
{
    const EventDictionary dictionary{{"number", 7}, {"data", std::vector<std::uint8_t>{9}}};
    EXPECT_EQ(getDictIntByKey(nullptr, "number"), 0);
    EXPECT_EQ(getDictIntByKey(&dictionary, "none"), 0);
    EXPECT_EQ(getDictIntByKey(&dictionary, "data"), 0);
    EXPECT_EQ(getDictIntByKey(&dictionary, "number"), 7);
    EXPECT_EQ(getDictDataByKey(nullptr, "data"), std::nullopt);
    EXPECT_EQ(getDictDataByKey(&dictionary, "number"), std::nullopt);
    const EventDictionary event{{"wParam", 3}, {"lParam", 4}};
    EXPECT_EQ(getNotifyParam(&event), 4);
}

TEST(AppNames, PlugInIDsSelectTheirVariants)
{
    struct Row {
        std::uint32_t id;
        bool presenter, iap, annotation2, multi, viewOnly;
    };
    const std::vector<Row> rows{
        {12, true, false, false, false, false}, {16, false, true, true, false, false},
        {17, false, false, true, true, false},  {18, false, false, true, true, true},
        {0, false, false, false, false, false}, {15, false, false, false, false, false},
        {19, false, false, false, false, false}};
    AppConstants &constants = AppConstants::instance();
    for (const Row &row : rows) {
        constants.setAppActUniqueID(row.id);
        EXPECT_EQ(constants.isPresenter(), row.presenter) << row.id;
        EXPECT_EQ(constants.isIAP(), row.iap) << row.id;
        EXPECT_EQ(constants.isAnnotation2(), row.annotation2) << row.id;
        EXPECT_EQ(constants.isSupportMultiScreen(), row.multi) << row.id;
        EXPECT_EQ(constants.isViewOnly(), row.viewOnly) << row.id;
    }
    AppConstants::destroy();
    EXPECT_EQ(AppConstants::instance().AppActUniqueID(), 0U);
    AppConstants::destroy();
}

TEST(AppNames, DeviceNamesBecomeSafeFolderNames)
{
    EXPECT_EQ(AppConstants::SanitizeName("Tablet/One: 2"), "Tablet:One\xEF\xBC\x9A 2");
    EXPECT_EQ(AppConstants::SanitizeName("a\tb\\c\n"), "a\\tb\\\\c\\n");
    EXPECT_EQ(AppConstants::SanitizeName("\xC3\xA9t\xC3\xA9"), "\xC3\xA9t\xC3\xA9");
    EXPECT_EQ(AppConstants::RestoreName("Tablet:One"), "Tablet/One");
    EXPECT_EQ(AppConstants::RestoreName("a\\t"), "a\\\\t") << "the way back escapes once more";
    AppConstants::instance().setDeviceName("A/B");
    AppConstants::instance().setDeviceName(std::nullopt);
    EXPECT_EQ(AppConstants::instance().DeviceName(), "A/B");
    EXPECT_EQ(AppConstants::instance().SanitizeDeviceName(), "A:B");
    AppConstants::destroy();
}

TEST(DebugSetting, EmptyColoursAreOrangeAndGreenAndAHashMakesNoDifference)
{
    OrvAnnotationDebugSetting setting;
    EXPECT_EQ(setting.pBorderColor(), platform::Color::orange());
    EXPECT_EQ(setting.pDebugInfoColor(), platform::Color::green());
    setting.setPDebugInfoColorHex("#ff8000");
    const platform::Color withHash = setting.pDebugInfoColor();
    setting.setPDebugInfoColorHex("ff8000");
    EXPECT_EQ(setting.pDebugInfoColor(), withHash);
    EXPECT_EQ(withHash, platform::Color(1.0, 128.0 / 255.0, 0.0));
    setting.setPBorderColorHex("nonsense");
    EXPECT_EQ(setting.pBorderColor(), platform::Color(0.0, 0.0, 0.0));
}

TEST(Version, TextAndNumberAreThere)
{
    EXPECT_GT(OrvAnnotationVersionNumber, 0.0);
    const std::string text(reinterpret_cast<const char *>(OrvAnnotationVersionString));
    EXPECT_TRUE(text.starts_with("OrvAnnotation ")) << text;
}

} // namespace
} // namespace orv::test
