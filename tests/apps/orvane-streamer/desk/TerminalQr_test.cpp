#include "orvane-streamer/desk/TerminalQr.h"

#include <gmock/gmock.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace orv::apps::test {

namespace {

const std::string kAddress = "http://192.168.1.5:8720/?code=0123456789ABCDEF";

using Rows = std::vector<std::vector<bool>>;

/// What a reader of the terminal sees, dark as true.
Rows rowsOf(const std::string &lines)
{
    Rows rows;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        std::vector<bool> upper;
        std::vector<bool> lower;
        for (std::size_t at = 0; at < line.size();) {
            const bool isBlank = line[at] == ' ';
            const std::string block = line.substr(at, isBlank ? 1 : 3);
            EXPECT_THAT(block, testing::AnyOf(" ", "▀", "▄", "█"));
            upper.push_back(block == "▀" || block == "█");
            lower.push_back(block == "▄" || block == "█");
            at += block.size();
        }
        rows.push_back(upper);
        rows.push_back(lower);
    }
    return rows;
}

/// What a decoder reads in a picture of the rows.
std::string decoded(const Rows &rows)
{
    constexpr std::size_t pixelsAModule = 6;
    std::string name = (std::filesystem::temp_directory_path() / "qr-XXXXXX").string();
    const int made = ::mkstemp(name.data());
    if (made < 0) {
        return "no file for the picture";
    }
    std::ofstream picture(name, std::ios::binary);
    picture << "P2 " << rows.front().size() * pixelsAModule << ' ' << rows.size() * pixelsAModule
            << " 255\n";
    for (const auto &row : rows) {
        for (std::size_t again = 0; again < pixelsAModule; ++again) {
            for (const bool isDark : row) {
                for (std::size_t i = 0; i < pixelsAModule; ++i) {
                    picture << (isDark ? "0 " : "255 ");
                }
            }
            picture << '\n';
        }
    }
    picture.close();
    const std::string command = "zbarimg --quiet --raw --nodbus pgm:" + name;
    std::string text;
    if (std::FILE *reader = ::popen(command.c_str(), "r")) {
        for (int c = std::fgetc(reader); c != EOF; c = std::fgetc(reader)) {
            text += static_cast<char>(c);
        }
        ::pclose(reader);
    }
    std::filesystem::remove(name);
    return text;
}

bool isLight(const Rows &rows, std::size_t top, std::size_t left, std::size_t bottom,
             std::size_t right)
{
    for (std::size_t y = top; y < bottom; ++y) {
        for (std::size_t x = left; x < right; ++x) {
            if (rows[y][x]) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

TEST(TerminalQr, isReadAsTheText)
{
    const std::string lines = terminalQr(kAddress, false);

    const std::string text = decoded(rowsOf(lines));

    EXPECT_EQ(text, kAddress + "\n");
}

TEST(TerminalQr, hasFourLightModulesOnEachSideAndFinderPatternsInThreeCorners)
{
    const Rows rows = rowsOf(terminalQr(kAddress, false));

    const std::size_t width = rows.front().size();

    ASSERT_EQ((width - 8 - 17) % 4, 0U);
    // An odd side leaves half a line over.
    ASSERT_EQ(rows.size(), width + 1);
    EXPECT_TRUE(isLight(rows, 0, 0, 4, width));
    EXPECT_TRUE(isLight(rows, width - 4, 0, width + 1, width));
    EXPECT_TRUE(isLight(rows, 0, 0, width, 4));
    EXPECT_TRUE(isLight(rows, 0, width - 4, width, width));
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_TRUE(rows[4][4 + i]);
        EXPECT_TRUE(rows[4][width - 5 - i]);
        EXPECT_TRUE(rows[width - 5][4 + i]);
    }
    EXPECT_FALSE(isLight(rows, 5, 5, 10, 10));
}

TEST(TerminalQr, setsItsColoursOnEachLineAndTakesThemBack)
{
    const std::string before = "\x1b[38;5;16;48;5;231m";
    const std::string after = "\x1b[0m";
    std::istringstream plain(terminalQr(kAddress, false));

    const std::string coloured = terminalQr(kAddress, true);

    std::string expected;
    for (std::string line; std::getline(plain, line);) {
        expected += before + line + after + "\n";
    }
    EXPECT_EQ(coloured, expected);
}

TEST(TerminalQr, hasRoomForALongAddress)
{
    const std::string address = kAddress + std::string(2000, 'x');

    const std::string text = decoded(rowsOf(terminalQr(address, false)));

    EXPECT_EQ(text, address + "\n");
}

TEST(TerminalQr, refusesWhatCannotBeACode)
{
    const std::string tooLong(3000, 'x');
    const std::string cut("ab\0c", 4);

    EXPECT_THROW((void)terminalQr("", false), std::runtime_error);
    EXPECT_THROW((void)terminalQr(tooLong, false), std::runtime_error);
    EXPECT_THROW((void)terminalQr(cut, false), std::runtime_error);
}

} // namespace orv::apps::test
