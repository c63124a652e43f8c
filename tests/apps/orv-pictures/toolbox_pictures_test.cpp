#include "orv-pictures/Families.h"

#include "apps/orv-pictures/Samples.h"

#include <QImage>
#include <QtEndian>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

// The pictures as the build has drawn them: their names and sizes, and what can be told of how they
// look.

namespace orv::pictures::test {
namespace {

using Names = std::vector<std::string>;

const Names kInks{"black", "yellow", "blue", "green", "red"};
const Names kMarkers{"purple", "yellow", "blue", "green", "red"};
const Names kStamps{"pointer", "star", "heart", "smile", "check", "x"};
const Names kStyles{"s1", "s2", "s3", "s4"};
const Names kSizes{"1", "2", "3", "4"};
const Names kStates{"_d", "_p", "_f_d", "_f_p"};
const Names kPress{"_d", "_p"};

QImage picture(const std::string &name)
{
    const QImage image(QString::fromStdString(ORV_BUILT_RESOURCES "/pictures/" + name + ".png"));
    EXPECT_FALSE(image.isNull()) << name;
    return image;
}

/// Every name of the first list with every one of the second behind it.
Names with(const Names &begins, const Names &ends, const std::string &between = "")
{
    Names result;
    for (const std::string &begin : begins) {
        for (const std::string &end : ends) {
            result.emplace_back(begin).append(between).append(end);
        }
    }
    return result;
}

void add(std::map<std::string, QSize> &pictures, const Names &names, int width, int height)
{
    for (const std::string &name : names) {
        pictures[name] = QSize(width, height);
    }
}

/// The size in points of every picture that there is to be.
std::map<std::string, QSize> expectedPictures()
{
    std::map<std::string, QSize> all;
    add(all,
        with({"more", "savess", "ss", "gallery", "undo", "redo", "closess", "fb", "eraseall",
              "minimize"},
             kPress),
        52, 52);
    for (const char *tool : {"pen_", "circle_", "rectangle_", "text_"}) {
        add(all, with(with({tool}, kInks), kStates), 52, 52);
    }
    add(all, with(with({"high_"}, kMarkers), kStates), 52, 52);
    add(all, with({"erase"}, kStates), 52, 52);
    add(all, with(with(with({"line_"}, kStyles), kInks, "_"), kStates), 52, 52);
    add(all, with(with({"stamp_"}, kStamps), kStates), 52, 52);
    add(all, with(kInks, kStates), 40, 40);
    add(all, with(kStamps, kStates), 40, 40);
    add(all, with(with({"hl_"}, kMarkers), kStates), 40, 40);
    for (const char *sized : {"dot_", "circle_", "rectangle_", "text_", "line_"}) {
        add(all, with(with(with({sized}, kSizes), kInks, "_"), kStates), 40, 40);
    }
    add(all, with(with(with({"hl_"}, kSizes), kMarkers, "_"), kStates), 40, 40);
    add(all, with(with(with({"stp_"}, kSizes), kStamps, "_"), kStates), 40, 40);
    add(all, with(with({"erase_"}, kSizes), kStates), 40, 40);
    add(all, with(with(with({"linestyle_"}, kStyles), kInks, "_"), kStates), 40, 40);
    add(all, {"cursor_hidden"}, 3, 3);
    add(all, with(kStamps, {"1"}), 32, 32);
    add(all, with(kStamps, {"2"}), 48, 48);
    add(all, with(kStamps, {"3"}), 80, 80);
    add(all, with(kStamps, {"4"}), 128, 128);
    add(all, {"toolbar_standard", "toolbar_snapshot"}, 1008, 56);
    add(all, {"bg_linedpaper", "bg_graphpaper"}, 32, 32);
    return all;
}

int alphaAt(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

TEST(ToolboxPictures, areAllDescribedAndNoOthers)
{
    std::set<std::string> described;
    for (const Family &family : readFamilies(ORV_PICTURE_TEMPLATES "/families.json")) {
        for (const Picture &one : family.pictures) {
            described.insert(one.name);
        }
    }

    std::set<std::string> expected{"Annotation_folder_icon", "Presenter_folder_icon"};
    for (const auto &[name, size] : expectedPictures()) {
        expected.insert(name);
    }

    EXPECT_EQ(expected.size(), 995U);
    EXPECT_EQ(described, expected);
}

TEST(ToolboxPictures, areStagedInBothScalesWithTheirSizes)
{
    for (const auto &[name, size] : expectedPictures()) {
        EXPECT_EQ(picture(name).size(), size) << name;
        EXPECT_EQ(picture(name + "@2x").size(), size * 2) << name;
    }
}

TEST(ToolboxPictures, showEachStateOfAButtonInAnotherWay)
{
    Names buttons;
    for (const auto &[name, size] : expectedPictures()) {
        if (name.ends_with("_d") && !name.ends_with("_f_d")) {
            buttons.push_back(name.substr(0, name.size() - 2));
        }
    }

    EXPECT_EQ(buttons.size(), 246U);
    for (const std::string &button : buttons) {
        const QImage normal = picture(button + "_d");
        const QImage pressed = picture(button + "_p");
        EXPECT_NE(normal, pressed) << button;
        if (expectedPictures().contains(button + "_f_d")) {
            const QImage selected = picture(button + "_f_d");
            const QImage both = picture(button + "_f_p");
            EXPECT_NE(normal, selected) << button;
            EXPECT_NE(selected, both) << button;
            EXPECT_NE(pressed, both) << button;
        }
    }
}

TEST(ToolboxPictures, darkenTheGroundOfAPressedButtonAndTintASelectedOne)
{
    constexpr int x = 8;
    constexpr int y = 26;

    const QRgb normal = picture("undo_d").pixel(x, y);
    const QRgb pressed = picture("undo_p").pixel(x, y);
    const QRgb selected = picture("pen_black_f_d").pixel(x, y);
    const QRgb ring = picture("pen_black_f_d").pixel(3, y);

    EXPECT_GT(qGray(normal), qGray(pressed) + 40);
    EXPECT_GT(qBlue(selected), qRed(selected) + 20);
    EXPECT_GT(qBlue(ring), qRed(ring) + 150);
}

TEST(ToolboxPictures, haveTheColourOfTheInkInTheMiddleOfItsSwatch)
{
    const std::map<std::string, QRgb> colours{
        {"black", qRgb(0, 0, 0)},          {"yellow", qRgb(255, 198, 0)},
        {"blue", qRgb(0, 144, 255)},       {"green", qRgb(135, 213, 0)},
        {"red", qRgb(220, 0, 0)},          {"hl_purple", qRgb(248, 0, 251)},
        {"hl_yellow", qRgb(246, 255, 0)},  {"hl_blue", qRgb(0, 228, 255)},
        {"hl_green", qRgb(92, 255, 35)},   {"hl_red", qRgb(255, 68, 68)},
        {"dot_4_red", qRgb(220, 0, 0)},    {"hl_4_purple", qRgb(248, 0, 251)},
        {"line_2_blue", qRgb(0, 144, 255)}};

    for (const auto &[name, colour] : colours) {
        for (const std::string &state : kStates) {
            EXPECT_EQ(picture(name + state).pixel(20, 20), colour) << name << state;
            EXPECT_EQ(picture(name + state + "@2x").pixel(40, 40), colour) << name << state;
        }
    }
}

TEST(ToolboxPictures, growWithTheirSize)
{
    const auto inked = [](const std::string &name) {
        const QImage image = picture(name);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += qGray(image.pixel(x, y)) < 100 && alphaAt(image, x, y) == 255 ? 1 : 0;
            }
        }
        return count;
    };

    for (const std::string kind : {"dot_", "circle_", "rectangle_", "text_", "line_"}) {
        for (std::size_t i = 1; i < kSizes.size(); ++i) {
            EXPECT_GT(inked(kind + kSizes[i] + "_black_d"),
                      inked(kind + kSizes[i - 1] + "_black_d"))
                << kind << kSizes[i];
        }
    }
}

TEST(ToolboxPictures, pointWithTheTipInTheTopLeftCorner)
{
    for (const std::string &size : kSizes) {
        for (const char *scale : {"", "@2x"}) {
            const QImage image = picture("pointer" + size + scale);

            EXPECT_GT(alphaAt(image, 0, 0), 127) << size << scale;
            EXPECT_GT(alphaAt(image, 1, 1), 127) << size << scale;
            EXPECT_EQ(alphaAt(image, image.width() / 4, 0), 0) << size << scale;
            EXPECT_EQ(alphaAt(image, 0, image.height() / 4), 0) << size << scale;
        }
    }
}

TEST(ToolboxPictures, leaveTheCornersOfAStarClear)
{
    for (const std::string &size : kSizes) {
        const QImage image = picture("star" + size);
        const int last = image.width() - 1;

        for (const QPoint corner :
             {QPoint(0, 0), QPoint(last, 0), QPoint(0, last), QPoint(last, last)}) {
            EXPECT_EQ(qAlpha(image.pixel(corner)), 0) << size;
        }
        EXPECT_EQ(alphaAt(image, last / 2, last / 2), 255) << size;
    }
}

TEST(ToolboxPictures, keepWithinTheirEdges)
{
    for (const std::string stamp : {"star", "heart", "smile", "check", "x"}) {
        const QImage image = picture(stamp + "4");
        for (int i = 0; i < image.width(); ++i) {
            EXPECT_EQ(alphaAt(image, i, 0), 0) << stamp;
            EXPECT_EQ(alphaAt(image, i, image.height() - 1), 0) << stamp;
            EXPECT_EQ(alphaAt(image, 0, i), 0) << stamp;
            EXPECT_EQ(alphaAt(image, image.width() - 1, i), 0) << stamp;
        }
    }
}

TEST(ToolboxPictures, layPaperWithoutHolesAndSeams)
{
    for (const std::string name :
         {"bg_linedpaper", "bg_linedpaper@2x", "bg_graphpaper", "bg_graphpaper@2x"}) {
        const QImage tile = picture(name);
        const int last = tile.width() - 1;

        std::set<QRgb> colours;
        for (int i = 0; i <= last; ++i) {
            EXPECT_EQ(tile.pixel(i, 0), tile.pixel(i, last)) << name;
            EXPECT_EQ(tile.pixel(0, i), tile.pixel(last, i)) << name;
            for (int j = 0; j <= last; ++j) {
                EXPECT_EQ(alphaAt(tile, i, j), 255) << name;
                colours.insert(tile.pixel(i, j));
            }
        }
        EXPECT_GE(colours.size(), 2U) << name;
    }
}

TEST(ToolboxPictures, markTheHiddenCursorByAFaintDot)
{
    const QImage dot = picture("cursor_hidden");

    const QRgb centre = dot.pixel(1, 1);
    EXPECT_LT(qGray(centre), 100);
    EXPECT_GT(qAlpha(centre), 127);
    EXPECT_GT(qGray(dot.pixel(0, 1)), 200);
    EXPECT_LT(alphaAt(dot, 0, 1), 127);
    EXPECT_LT(alphaAt(dot, 0, 0), 127);
    EXPECT_EQ(picture("cursor_hidden@2x").pixel(2, 2), picture("cursor_hidden@2x").pixel(3, 3));
}

TEST(ToolboxPictures, tellTheSnapshotsStripFromTheStandardOne)
{
    const QRgb standard = picture("toolbar_standard").pixel(504, 28);
    const QRgb snapshot = picture("toolbar_snapshot").pixel(504, 28);

    EXPECT_LT(qGray(standard), 80);
    EXPECT_LT(qAlpha(standard), 255);
    EXPECT_GT(qBlue(snapshot) - qRed(snapshot), qBlue(standard) - qRed(standard) + 20);
    EXPECT_EQ(alphaAt(picture("toolbar_standard"), 0, 0), 0);
}

TEST(ToolboxPictures, packFolderIconsInThreeSizes)
{
    for (const std::string name : {"Annotation", "Presenter"}) {
        const std::string file =
            readAll(ORV_BUILT_RESOURCES "/pictures/" + name + "_folder_icon.icns");
        const auto length = [&file](std::size_t at) {
            return qFromBigEndian<std::uint32_t>(file.data() + at);
        };
        ASSERT_GT(file.size(), 8U);
        EXPECT_EQ(file.substr(0, 4), "icns");
        EXPECT_EQ(length(4), file.size());

        std::map<std::string, QSize> members;
        for (std::size_t at = 8; at < file.size(); at += length(at + 4)) {
            ASSERT_LE(at + length(at + 4), file.size());
            ASSERT_GT(length(at + 4), 8U);
            const QByteArray png(file.data() + at + 8, length(at + 4) - 8);
            members[file.substr(at, 4)] = QImage::fromData(png, "PNG").size();
        }

        const std::map<std::string, QSize> expected{
            {"ic07", QSize(128, 128)}, {"ic08", QSize(256, 256)}, {"ic09", QSize(512, 512)}};
        EXPECT_EQ(members, expected) << name;
    }
}

} // namespace
} // namespace orv::pictures::test
