#include "toolbox/AnnotationMenuUtilities.h"
#include "toolbox/DrawingMenuController.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A tool that notes what its menu sets.
class NotedTool : public MenuTool {
public:
    explicit NotedTool(std::int32_t type) : type_(type) {}
    std::vector<std::string> calls;

    [[nodiscard]] std::int32_t annotationType() const override { return type_; }
    void setAnnotationColor(const platform::Color &color) override
    {
        calls.push_back(
            fmt::format("color {} {} {}", color.red(), color.greenComponent(), color.blue()));
    }
    void setAnnotationSize(float size) override { calls.push_back(fmt::format("size {}", size)); }
    void setAnnotationStyle(std::int32_t style) override
    {
        calls.push_back(fmt::format("style {}", style));
    }
    void selectPrimaryTraitAtIndex(std::int32_t index) override
    {
        calls.push_back(fmt::format("primary {}", index));
    }
    void selectSecondaryTraitAtIndex(std::int32_t index) override
    {
        calls.push_back(fmt::format("secondary {}", index));
    }
    void selectTertiaryTraitAtIndex(std::int32_t index) override
    {
        calls.push_back(fmt::format("tertiary {}", index));
    }
    void selectOnCanvas() override { calls.emplace_back("canvas"); }

private:
    std::int32_t type_;
};

constexpr std::int32_t kPen = 2;
constexpr std::int32_t kText = 7;

LineMenuController lineMenu()
{
    LineMenuController menu;
    menu.setColorValues({{1.0, 0.0, 0.0, 1.0}, {0.0, 1.0, 0.0, 1.0}});
    menu.setSizeValues({0.5F, 0.25F});
    menu.setStyleValues({0, 7});
    return menu;
}

TEST(Menus, AChoiceSetsTheValueThenTheIndex)
{
    NotedTool tool(kPen);
    LineMenuController menu = lineMenu();
    menu.setTool(&tool);

    menu.selectColorAtIndex(1);
    menu.selectSizeAtIndex(1);
    menu.selectStyleAtIndex(1);

    EXPECT_THAT(tool.calls, ElementsAre("color 0 1 0", "primary 1", "size 0.25", "secondary 1",
                                        "style 7", "tertiary 1"));
    EXPECT_EQ(menu.colorIndex(), 1);
    EXPECT_EQ(menu.sizeIndex(), 1);
    EXPECT_EQ(menu.styleIndex(), 1);
}

TEST(Menus, AChoiceForTextGoesToTheCanvasToo)
{
    NotedTool tool(kText);
    LineMenuController menu = lineMenu();
    menu.setTool(&tool);

    menu.selectColorAtIndex(0);
    menu.selectSizeAtIndex(0);
    menu.selectStyleAtIndex(0);

    EXPECT_THAT(tool.calls,
                ElementsAre("color 1 0 0", "primary 0", "canvas", "size 0.5", "secondary 0",
                            "canvas", "style 0", "tertiary 0", "canvas"));
}

TEST(Menus, AnEraserHasASizeAlone)
{
    NotedTool tool(kText);
    EraserMenuController menu;
    menu.setSizeValues({0.5F, 0.25F});
    menu.setTool(&tool);

    menu.selectColorAtIndex(1);
    menu.selectSizeAtIndex(1);
    menu.selectStyleAtIndex(1);

    EXPECT_THAT(tool.calls, ElementsAre("size 0.25", "secondary 1"));
}

TEST(Menus, AnIndexOutsideItsListChangesNothing)
{
    NotedTool tool(kPen);
    LineMenuController menu = lineMenu();
    menu.setTool(&tool);
    for (const std::int32_t index : {-1, 2, 2147483647}) {
        menu.selectColorAtIndex(index);
        menu.selectSizeAtIndex(index);
        menu.selectStyleAtIndex(index);
    }
    EXPECT_THAT(tool.calls, IsEmpty());
    EXPECT_EQ(menu.colorIndex(), 0);
}

TEST(Menus, WithoutAToolOrAPanelNothingHappens)
{
    LineMenuController menu = lineMenu();
    menu.selectColorAtIndex(0);
    menu.selectSizeAtIndex(0);
    menu.selectStyleAtIndex(0);
    menu.toggleMenu();
    menu.showMenu();
    menu.hideMenu();
    EXPECT_EQ(menu.view(), nullptr);
}

TEST(Menus, APanelIsHiddenAtFirstAndTogglesFromThere)
{
    LineMenuController menu;
    const auto panel = std::make_shared<platform::View>(platform::Rect::make(0.0, 0.0, 1.0, 1.0));
    menu.setView(panel);
    EXPECT_TRUE(panel->isHidden());
    menu.toggleMenu();
    EXPECT_FALSE(panel->isHidden());
    menu.showMenu();
    EXPECT_FALSE(panel->isHidden());
    menu.toggleMenu();
    EXPECT_TRUE(panel->isHidden());
    menu.hideMenu();
    EXPECT_TRUE(panel->isHidden());
}

TEST(MenuNames, ArePrefixDescriptorAndSuffixInOrder)
{
    using Utilities = AnnotationMenuUtilities;
    EXPECT_THAT(Utilities::imageNamesWithPrefix("pen_", {"black", "red"}, "_d"),
                ElementsAre("pen_black_d", "pen_red_d"));
    EXPECT_THAT(Utilities::imageNamesWithPrefix("pen_", {}, "_d"), IsEmpty());
    EXPECT_THAT(Utilities::imageNamesWithPrefixArray({"a_", "b_"}, {"1", "2"}, ""),
                ElementsAre("a_1", "a_2", "b_1", "b_2"));
    const auto images = Utilities::imagesWithNames({"x", "y"});
    ASSERT_EQ(images.size(), 2U);
    EXPECT_EQ(images[1]->name(), "y");
}

} // namespace
} // namespace orv::test
