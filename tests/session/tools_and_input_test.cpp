#include "SessionDesk.h"

#include "session/KeymapTable.h"
#include "session/ToolSettings.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

platform::Color bytes(int red, int green, int blue)
{
    return {red / 255.0, green / 255.0, blue / 255.0, 1.0};
}

TEST_F(SessionDesk, ThereAreSeventeenToolsWithTheirStartValues)
{
    open(12);
    const ToolTable &tools = manager->tools();
    EXPECT_EQ(tools.size(), 17U);
    const auto expect = [&tools](const char *name, std::int32_t type, platform::Color color,
                                 float size) {
        const auto &tool = tools.at(name);
        EXPECT_EQ(tool->annotationType(), type) << name;
        EXPECT_EQ(tool->annotationColor(), color) << name;
        EXPECT_EQ(tool->annotationSize(), size) << name;
        EXPECT_TRUE(tool->fitMode()) << name;
        EXPECT_FALSE(tool->transient()) << name;
    };
    expect("pen", 2, bytes(220, 0, 0), 0.002F);
    expect("highlighter", 3, bytes(246, 255, 0), 0.01F);
    expect("eraser", 4, bytes(0, 0, 0), 0.005F);
    expect("circle", 5, bytes(0, 144, 255), 0.002F);
    expect("rectangle", 6, bytes(0, 144, 255), 0.002F);
    expect("text", 7, bytes(220, 0, 0), 0.025F);
    expect("line", 8, bytes(0, 144, 255), 0.002F);
    expect("stamp", 9, bytes(0, 0, 1), 1.0F);
    EXPECT_EQ(tools.at("line")->annotationStyle(), 0);
    for (const char *name : {"more", "savess", "snapshot", "gallery", "undo", "redo", "closess",
                             "flipchart", "eraseall"}) {
        EXPECT_TRUE(tools.at(name)->transient()) << name;
        EXPECT_FALSE(tools.at(name)->createsAnnotations()) << name;
    }
}

TEST_F(SessionDesk, ChosenTraitsSurviveARestartInTheFirstGeneration)
{
    open(12);
    applyTraits({2, 3, 0}, *manager->tools().at("pen"));
    applyTraits({1, 2, 3}, *manager->tools().at("line"));
    applyTraits({5, 1, 0}, *manager->tools().at("stamp"));
    manager->closeAnnotationToolbox();
    manager->terminate();

    open(12);

    const ToolTable &tools = manager->tools();
    EXPECT_EQ(tools.at("pen")->annotationColor(), bytes(0, 144, 255));
    EXPECT_EQ(tools.at("pen")->annotationSize(), 0.02F);
    EXPECT_EQ(tools.at("pen")->primaryTraitIndex(), 2);
    EXPECT_EQ(tools.at("pen")->secondaryTraitIndex(), 3);
    EXPECT_EQ(tools.at("line")->annotationStyle(), 3);
    EXPECT_EQ(tools.at("line")->tertiaryTraitIndex(), 3);
    EXPECT_EQ(tools.at("stamp")->annotationColor(), bytes(0, 0, 5));
    EXPECT_EQ(tools.at("highlighter")->annotationColor(), bytes(246, 255, 0)) << "not touched";
}

TEST_F(SessionDesk, TheSecondGenerationLeavesTheToolSettingsAsTheyWere)
{
    open(17);
    const std::string file = saveFile("defaults.dat");
    applyTraits({2, 3, 0}, *manager->tools().at("pen"));
    manager->closeAnnotationToolbox();
    EXPECT_EQ(desk.files().read(file, 10000), std::nullopt);

    const platform::Data bytes = encodeToolSettings(manager->tools());
    ASSERT_TRUE(desk.files().writeAtomically(file, bytes));
    manager->openAnnotationToolbox();
    applyTraits({0, 0, 0}, *manager->tools().at("pen"));
    manager->closeAnnotationToolbox();
    EXPECT_EQ(desk.files().read(file, 10000), bytes);
}

TEST_F(SessionDesk, SettingsThatCannotBeReadOrLieOutsideTheListsLeaveTheDefaults)
{
    make(12);
    const std::string file = saveFile("defaults.dat");
    desk.files().createFolder(AppConstants::instance().DefaultAppDataPath);
    ASSERT_TRUE(desk.files().writeAtomically(file, {1, 2, 3}));
    OrvFrameworkLogger::shared().setStandardOutput(true);
    OrvFrameworkLogger::shared().setLevel("OrvAnnotation", 4);
    manager->showWindow();
    EXPECT_THAT(systemLog, ElementsAre(::testing::HasSubstr("defaults.dat can't be read: ")));
    AnnotationTool &pen = *manager->tools().at("pen");
    applyTraits({5, 4, 0}, pen);
    applyTraits({-1, -1, -1}, pen);
    EXPECT_EQ(pen.annotationColor(), bytes(220, 0, 0));
    EXPECT_EQ(pen.annotationSize(), 0.002F);
}

TEST_F(SessionDesk, APenThatFitsDrawsAFractionOfTheDisplaysWidth)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    const auto stroke = canvas().document().annotations(canvas().annotationModeKey())->front();
    EXPECT_EQ(stroke->annotationSize(), double{static_cast<float>(double{0.002F} * 1440.0)});
    EXPECT_EQ(stroke->annotationSize(), double{2.88F});
}

TEST_F(SessionDesk, APressOnAButtonSelectsItsTool)
{
    open(12);
    const auto button = manager->outlets().button("highlighterButton");
    const platform::Point at =
        button->frameInWindow().center() + manager->outlets().toolboxWindow->frame().origin;
    desk.input().sendMouse(platform::EventType::leftMouseDown, at);
    desk.input().sendMouse(platform::EventType::leftMouseUp, at);
    EXPECT_EQ(manager->currentTool()->name(), "highlighter");
    EXPECT_TRUE(manager->currentTool()->isSelected());
    EXPECT_FALSE(manager->tools().at("pen")->isSelected());
    EXPECT_EQ(canvas().currentTool(), manager->currentTool());
    EXPECT_EQ(annotationCount(), 0U);
}

TEST_F(SessionDesk, ATransientToolNeverBecomesCurrentButIsTheLastSelected)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    manager->selectTool(*manager->outlets().button("undoButton"));
    EXPECT_EQ(manager->currentTool()->name(), "pen");
    EXPECT_EQ(manager->lastSelectedTool()->name(), "undo");
    EXPECT_EQ(annotationCount(), 0U);
    manager->selectTool(*manager->outlets().button("redoButton"));
    EXPECT_EQ(annotationCount(), 1U);
    manager->selectTool(*manager->outlets().button("redoButton"));
    EXPECT_EQ(annotationCount(), 1U) << "an empty redo stack is not touched";
}

TEST_F(SessionDesk, WhileAnAnimationRunsOnlyDrawingToolsCanBeChosen)
{
    open(12);
    localStroke({300.0, 300.0}, {400.0, 400.0});
    manager->setIsAnimating(true);
    manager->selectTool(*manager->outlets().button("undoButton"));
    EXPECT_EQ(annotationCount(), 1U);
    manager->selectTool(*manager->outlets().button("highlighterButton"));
    EXPECT_EQ(manager->currentTool()->name(), "highlighter");
}

TEST_F(SessionDesk, DrawTypesSelectTheirTools)
{
    open(17);
    const std::vector<std::pair<std::uint16_t, const char *>> rows{
        {0, "pen"},    {1, "highlighter"}, {2, "eraser"}, {3, "rectangle"},
        {4, "circle"}, {5, "text"},        {6, "stamp"},  {7, "line"},
        {8, "pen"},    {10, "pen"},        {65535, "pen"}};
    for (const auto &[type, name] : rows) {
        manager->handleSetToolRequest({type, 0, 5.0F, 0, 0xFF102030});
        EXPECT_EQ(manager->currentTool()->name(), name) << type;
    }
    manager->handleSetToolRequest({3, 0, 5.0F, 0, 0});
    manager->handleSetToolRequest({9, 0, 5.0F, 0, 0});
    EXPECT_EQ(manager->currentTool()->name(), "rectangle") << "the laser pointer changes no tool";
}

TEST_F(SessionDesk, StampAndLineRequestsReadTheirSubTypes)
{
    open(17);
    const std::vector<std::pair<std::uint16_t, int>> stamps{{2, 2}, {3, 0}, {4, 3}, {5, 1},
                                                            {6, 5}, {7, 4}, {0, 4}};
    for (const auto &[subtype, number] : stamps) {
        manager->handleSetToolRequest({6, subtype, 20.0F, 0, 0xFFFFFFFF});
        EXPECT_EQ(manager->currentTool()->annotationColor(),
                  platform::Color(0.0, 0.0, double{static_cast<float>(number) / 255.0F}, 0.0));
        EXPECT_EQ(manager->currentTool()->annotationSize(), 120.0F);
    }
    manager->handleSetToolRequest({7, 2, 4.0F, 1, 0});
    EXPECT_EQ(manager->currentTool()->annotationStyle(), 98);
    EXPECT_TRUE(manager->currentTool()->annotationDash());
    manager->handleSetToolRequest({7, 3, 4.0F, 0, 0});
    EXPECT_EQ(manager->currentTool()->annotationStyle(), 99);
    EXPECT_FALSE(manager->currentTool()->annotationDash());
}

TEST_F(SessionDesk, TheReportedToolHasNumbersOfItsOwn)
{
    open(17);
    const std::vector<std::pair<std::uint16_t, std::uint32_t>> rows{{8, 0}, {1, 1}, {2, 2}, {3, 3},
                                                                    {4, 4}, {5, 5}, {6, 6}, {7, 7}};
    for (const auto &[type, reported] : rows) {
        manager->handleSetToolRequest({type, 0, 2.0F, 0, 0});
        EXPECT_EQ(manager->getCurrentToolType(), reported) << type;
    }
    manager->handleSetToolRequest({8, 0, 12.9F, 0, 0xFFFF0000});
    EXPECT_EQ(manager->getCurrentToolSize(), 12U);
    EXPECT_EQ(manager->getCurrentToolColor(), 0U) << "pure red does not show";
    manager->handleSetToolRequest({8, 0, 12.0F, 0, 0xFF0000FF});
    EXPECT_EQ(manager->getCurrentToolColor(), 255U);
    manager->handleSetToolRequest({8, 0, 12.0F, 0, 0xFF00FF00});
    EXPECT_EQ(manager->getCurrentToolColor(), 255U << 24U);
}

TEST(ClientPictures, AreFittedAndOnlyTheBarsAtTheSidesAreTakenOff)
{
    const platform::Rect display = platform::Rect::make(0.0, 0.0, 1440.0, 900.0);
    const ClientPicture wide{{1440.0, 900.0}, {1024.0, 768.0}};
    EXPECT_EQ(wide.fittedSize(), (platform::Size{1024.0, 640.0}));
    EXPECT_EQ(wide.scaleMouseLocation({0.0, 640.0}, display), (platform::Point{0.0, 900.0}));
    EXPECT_EQ(wide.scaleMouseLocation({0.0, 64.0}, display), (platform::Point{0.0, 90.0}))
        << "the spare rows above are not compensated";

    const ClientPicture tall{{1024.0, 768.0}, {1440.0, 900.0}};
    EXPECT_EQ(tall.fittedSize(), (platform::Size{1200.0, 900.0}));
    EXPECT_EQ(ClientPicture::GetBlankBorderSize(tall.fittedSize(), tall.scaled),
              (platform::Size{120.0, 0.0}));
    EXPECT_EQ(tall.scaleMouseLocation({120.0, 0.0}, display), (platform::Point{0.0, 0.0}));

    const ClientPicture none{};
    EXPECT_EQ(none.scaleMouseLocation({7.0, 8.0}, display), (platform::Point{7.0, 8.0}));
}

TEST_F(SessionDesk, AFirstWordOfZeroMeansThatTheSecondCarriesBothHalves)
{
    open(16);
    manager->handleControlMouseEvent({5, 0, 0x00C80064});
    manager->handleControlMouseEvent({6, 0, 0x00C80064});
    ASSERT_EQ(annotationCount(), 1U);
    const auto stroke = std::dynamic_pointer_cast<PathAnnotation>(
        canvas().document().annotations(canvas().annotationModeKey())->front());
    EXPECT_EQ(stroke->path().currentPoint(), (platform::Point{100.0, 900.0 - 200.0}));
}

TEST_F(SessionDesk, ButtonsHeldDecideWhatAMoveIs)
{
    open(16);
    const auto status = [this] { return manager->remoteInput().mouseButtonStatus(); };
    manager->handleControlMouseEvent({8, 500, 500});
    manager->handleControlMouseEvent({5, 500, 500});
    EXPECT_EQ(status(), 3);
    manager->handleControlMouseEvent({10, 600, 600});
    manager->handleControlMouseEvent({6, 600, 600});
    EXPECT_EQ(status(), 2);
    manager->handleControlMouseEvent({9, 600, 600});
    EXPECT_EQ(status(), 0);
    EXPECT_EQ(manager->remoteInput().m_nEventNumber(), 5);
    manager->handleControlMouseEvent({3, 1, 1});
    manager->handleControlMouseEvent({11, 1, 1});
    EXPECT_EQ(manager->remoteInput().m_nEventNumber(), 5) << "skipped";
    manager->handleControlMouseEvent({4, 1, 1});
    manager->handleControlMouseEvent({7, 1, 1});
    EXPECT_EQ(status(), 0);
    EXPECT_EQ(annotationCount(), 1U);
}

TEST_F(SessionDesk, AGestureThatBeginsOnTheToolboxStaysThere)
{
    open(12);
    const auto button = manager->outlets().button("highlighterButton");
    const platform::Point up =
        button->frameInWindow().center() + manager->outlets().toolboxWindow->frame().origin;
    const auto x = static_cast<std::uint32_t>(up.x);
    const auto y = static_cast<std::uint32_t>(900.0 - up.y);
    manager->handleControlMouseEvent({5, x, y});
    manager->handleControlMouseEvent({10, 500, 500});
    manager->handleControlMouseEvent({6, 500, 500});
    EXPECT_EQ(annotationCount(), 0U);
    EXPECT_EQ(manager->currentTool()->name(), "pen") << "released off the button";

    manager->handleControlMouseEvent({5, x, y});
    manager->handleControlMouseEvent({6, x, y});
    EXPECT_EQ(manager->currentTool()->name(), "highlighter");
    EXPECT_EQ(annotationCount(), 0U);
}

TEST_F(SessionDesk, WhereTheStripHasSlidAwayAPressIsInk)
{
    for (const std::uint32_t plugin : {16U, 17U}) {
        open(plugin);
        ASSERT_TRUE(manager->outlets().toolboxWindow->isIconized());
        const platform::Rect strip = manager->outlets().toolboxWindow->frame();

        const auto x = static_cast<std::uint32_t>(strip.center().x);
        manager->handleControlMouseEvent({5, x, 20});
        manager->handleControlMouseEvent({6, x, 20});

        ASSERT_EQ(annotationCount(), 1U) << plugin;
        const auto stroke = std::dynamic_pointer_cast<PathAnnotation>(
            canvas().document().annotations(canvas().annotationModeKey())->front());
        EXPECT_EQ(stroke->path().currentPoint(),
                  (platform::Point{static_cast<double>(x), 900.0 - 20.0}))
            << plugin;
        manager->terminate();
        manager.reset();
        AppConstants::destroy();
    }
}

TEST_F(SessionDesk, KeysTranslateThroughTheTable)
{
    EXPECT_EQ(keymapTable()[13].mac_vkey, 76U) << "the keypad's row comes last";
    EXPECT_EQ(keymapTable()[0xFF].mac_vkey, 0U) << "no row: the letter A";
    EXPECT_EQ(keymapTable()[0].mac_vkey, 255U);
    EXPECT_EQ(keymapTable()[44].mac_vkey, 255U);
    EXPECT_EQ(keymapTable()[65].win_scancode, (30U << 16U) + 1U);
    EXPECT_EQ(charactersOfVirtualKey(76, 0), u"\x03");
    EXPECT_EQ(charactersOfVirtualKey(51, 0), u"\x7f");
    EXPECT_EQ(charactersOfVirtualKey(48, 0), u"\x09");
    EXPECT_EQ(charactersOfVirtualKey(255, 0), u"");
    EXPECT_EQ(charactersOfVirtualKey(0, 0), u"a");
    EXPECT_EQ(charactersOfVirtualKey(0, platform::modifier::shift), u"A");
    EXPECT_EQ(charactersOfVirtualKey(18, platform::modifier::capsLock), u"1");
    EXPECT_EQ(ownFlagsOfVirtualKey(123), 0xA00000U);
    EXPECT_EQ(ownFlagsOfVirtualKey(122), 0x800000U);
    EXPECT_EQ(ownFlagsOfVirtualKey(0), 0U);
}

TEST_F(SessionDesk, ModifiersHoldUntilTheyAreReleasedAndCapsLockRepeatsTheLastOne)
{
    open(16);
    const auto flags = [this] { return manager->remoteInput().gFlag(); };
    constexpr std::uint32_t shift = 160;
    constexpr std::uint32_t caps = 20;
    manager->handleControlKeyboardEvent({1, shift, 0});
    EXPECT_EQ(flags(), 0x20000U);
    manager->handleControlKeyboardEvent({2, shift, 0});
    EXPECT_EQ(flags(), 0U);
    manager->handleControlKeyboardEvent({1, caps, 0});
    EXPECT_EQ(flags(), 0x30000U) << "the shift that was released is applied once more";
    manager->handleControlKeyboardEvent({2, caps, 0});
    EXPECT_EQ(flags(), 0x10000U);
    manager->handleControlKeyboardEvent({1, caps, 0});
    EXPECT_EQ(flags(), 0x20000U);
    for (const auto &[key, flag] : std::vector<std::pair<std::uint32_t, std::uint64_t>>{
             {162, 0x40000}, {164, 0x80000}, {91, 0x100000}, {165, 0x80000}, {92, 0x100000}}) {
        manager->handleControlKeyboardEvent({1, key, 0});
        EXPECT_EQ(flags() & flag, flag) << key;
        EXPECT_EQ(manager->remoteInput().gMask(), flag) << key;
    }
}

TEST_F(SessionDesk, TheClientsEscapeClosesTheSessionWhateverTheUpperBitsOfItsCode)
{
    open(16);
    manager->handleControlKeyboardEvent({1, 0x100 + 27, 0});
    EXPECT_TRUE(canvas().isHidden());
}

TEST_F(SessionDesk, TheClientIsToldWhetherItsInputIsWelcome)
{
    open(16);
    EventLog log(16, {"mouseEventHandle", "keyboardEventHandle"});
    manager->controlMouseAndKeyboardEvent(true);
    manager->controlMouseAndKeyboardEvent(false);
    EXPECT_THAT(log.events, ElementsAre("mouseEventHandle 1 0", "keyboardEventHandle 1 0",
                                        "mouseEventHandle 0 0", "keyboardEventHandle 0 0"));
    manager->handleControlMouseEvent({5, 500, 500});
    EXPECT_EQ(annotationCount(), 1U) << "records after it are handled all the same";
}

} // namespace
} // namespace orv::test
