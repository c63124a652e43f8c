#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/BinaryPropertyListWriter.h"
#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string_view>

namespace orv::platform {
namespace {

using testing::HasSubstr;
using Type = BinaryPropertyList::Type;

/// A property list whose numbers all have widths of our choosing.
struct RawList {
    std::vector<Data> values;
    std::size_t offsetWidth = 1;
    std::uint8_t refWidth = 1;
    std::uint64_t top = 0;

    [[nodiscard]] Data bytes() const
    {
        constexpr std::string_view kMagic = "bplist00";
        Data out(kMagic.begin(), kMagic.end());
        std::vector<std::size_t> offsets;
        for (const Data &value : values) {
            offsets.push_back(out.size());
            out.insert(out.end(), value.begin(), value.end());
        }
        return finish(std::move(out), offsets);
    }
    [[nodiscard]] Data finish(Data out, const std::vector<std::size_t> &offsets) const
    {
        const std::size_t table = out.size();
        for (const std::size_t offset : offsets) {
            put(out, offset, offsetWidth);
        }
        put(out, 0, 6);
        put(out, offsetWidth, 1);
        put(out, refWidth, 1);
        put(out, offsets.size(), 8);
        put(out, top, 8);
        put(out, table, 8);
        return out;
    }
    static void put(Data &out, std::uint64_t value, std::size_t width)
    {
        for (std::size_t i = width; i > 0; --i) {
            out.push_back(i > 8 ? 0 : static_cast<std::uint8_t>(value >> (8 * (i - 1))));
        }
    }
};

std::string refusal(const Data &bytes)
{
    try {
        const BinaryPropertyList list(bytes);
    } catch (const Exception &exception) {
        return exception.what();
    }
    return "nothing was thrown";
}

BinaryPropertyList single(const Data &value)
{
    return BinaryPropertyList(RawList{{value}}.bytes());
}

TEST(BinaryPropertyList, integersOfEveryWidthAreRead)
{
    const auto integer = [](const Data &value) {
        const BinaryPropertyList list = single(value);
        return list.integer(list.item(0));
    };

    EXPECT_EQ(integer({0x10, 0xFF}), 255);
    EXPECT_EQ(integer({0x11, 0xFF, 0xFE}), 65534);
    EXPECT_EQ(integer({0x12, 0xFF, 0xFF, 0xFF, 0xFF}), 4294967295);
    EXPECT_EQ(integer({0x13, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE}), -2);
    Data wide{0x14};
    wide.resize(16, 0);
    wide.push_back(9);
    EXPECT_EQ(integer(wide), 9);
}

TEST(BinaryPropertyList, anIntegerOfMoreThan64BitsIsRefusedWhenItIsRead)
{
    Data wide{0x14, 0, 0, 0, 0, 0, 0, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0};
    const BinaryPropertyList list = single(wide);

    EXPECT_THROW((void)list.integer(list.item(0)), Exception);
}

TEST(BinaryPropertyList, realsOfBothWidthsAreRead)
{
    const auto real = [](const Data &value) {
        const BinaryPropertyList list = single(value);
        return list.real(list.item(0));
    };

    EXPECT_EQ(real({0x22, 0x3F, 0xC0, 0x00, 0x00}), 1.5);
    EXPECT_EQ(real({0x23, 0x3F, 0xF8, 0, 0, 0, 0, 0, 0}), 1.5);
}

TEST(BinaryPropertyList, wideAndNarrowReferencesAndOffsetsAreRead)
{
    for (std::size_t width = 1; width <= 8; ++width) {
        Data array{0xA1};
        RawList::put(array, 1, width);
        RawList raw{{array, {0x10, 42}}, 9 - width, static_cast<std::uint8_t>(width)};
        const BinaryPropertyList list(raw.bytes());

        const auto item = list.item(list.element(list.item(list.top()), 0));

        EXPECT_EQ(list.integer(item), 42);
    }
}

TEST(BinaryPropertyList, impossibleWidthsAreRefused)
{
    RawList raw{{{0x10, 42}}};
    raw.refWidth = 0;
    EXPECT_THAT(refusal(raw.bytes()), HasSubstr("numbers of 1 and 0 bytes"));
    raw.refWidth = 9;
    EXPECT_THAT(refusal(raw.bytes()), HasSubstr("numbers of 1 and 9 bytes"));
    raw.refWidth = 1;
    raw.offsetWidth = 9;
    EXPECT_THAT(refusal(raw.bytes()), HasSubstr("numbers of 9 and 1 bytes"));
}

TEST(BinaryPropertyList, countsBeyondTheBytesAreRefusedBeforeAnythingIsAllocated)
{
    const std::uint8_t kinds[] = {0x4F, 0x5F, 0x6F, 0xAF, 0xCF, 0xDF};
    for (const std::uint8_t kind : kinds) {
        Data value{kind, 0x13};
        RawList::put(value, std::numeric_limits<std::uint64_t>::max(), 8);
        EXPECT_THAT(refusal(RawList{{value}}.bytes()), HasSubstr("more than there are bytes"));
        EXPECT_THAT(refusal(RawList{{{static_cast<std::uint8_t>(kind & 0xFEU)}}}.bytes()),
                    HasSubstr("more than there are bytes"));
        EXPECT_THAT(refusal(RawList{{{kind, 0x14, 0, 0}}}.bytes()), HasSubstr("no valid count"));
        EXPECT_THAT(refusal(RawList{{{kind, 0x23, 0, 0}}}.bytes()), HasSubstr("no valid count"));
        EXPECT_THAT(refusal(RawList{{{kind}}}.bytes()), HasSubstr("no valid count"));
    }
    EXPECT_THAT(refusal(RawList{{{0x13, 0, 0}}}.bytes()), HasSubstr("cut off"));
}

TEST(BinaryPropertyList, aTableThatClaimsMoreValuesThanBytesIsRefused)
{
    Data bytes = RawList{{{0x10, 42}}}.bytes();
    bytes[bytes.size() - 24] = 0x7F;

    EXPECT_THAT(refusal(bytes), HasSubstr("cut off or damaged"));
}

TEST(BinaryPropertyList, aTopValueThatIsNotThereIsRefused)
{
    RawList raw{{{0x10, 42}}};
    raw.top = 1;

    EXPECT_THAT(refusal(raw.bytes()), HasSubstr("top value 1"));
}

TEST(BinaryPropertyList, valuesOutsideTheirPlaceAreRefused)
{
    const RawList raw;
    const Data values{'b', 'p', 'l', 'i', 's', 't', '0', '0', 0x10, 42};

    EXPECT_THAT(refusal(raw.finish(values, {7})), HasSubstr("outside"));
    EXPECT_THAT(refusal(raw.finish(values, {10})), HasSubstr("outside"));
    EXPECT_EQ(refusal(raw.finish(values, {8})), "nothing was thrown");
}

TEST(BinaryPropertyList, valuesThatLieOnTopOfEachOtherAreRefused)
{
    const RawList raw;
    const Data values{'b', 'p', 'l', 'i', 's', 't', '0', '0', 0x11, 0x10, 42};

    EXPECT_THAT(refusal(raw.finish(values, {8, 9})), HasSubstr("on top of each other"));
}

TEST(BinaryPropertyList, unknownKindsOfValuesAreNamed)
{
    EXPECT_THAT(refusal(RawList{{{0x7F}}}.bytes()), HasSubstr("0x7F at byte 8"));
    EXPECT_THAT(refusal(RawList{{{0x21, 0, 0}}}.bytes()), HasSubstr("0x21"));
    EXPECT_THAT(refusal(RawList{{{0x15}}}.bytes()), HasSubstr("0x15"));
}

TEST(BinaryPropertyList, aReferenceToNoValueIsRefusedWhenItIsFollowed)
{
    const BinaryPropertyList list = single({0xA1, 5});

    EXPECT_THROW((void)list.element(list.item(0), 0), Exception);
    EXPECT_THROW((void)list.item(1), Exception);
}

TEST(BinaryPropertyList, aUidOfMoreThan64BitsIsRefused)
{
    Data value{0x8F};
    value.resize(17, 1);
    const BinaryPropertyList list = single(value);

    EXPECT_THROW((void)list.uid(list.item(0)), Exception);
}

TEST(BinaryPropertyList, textsAreComparedInBothEncodings)
{
    BinaryPropertyListWriter writer;
    const auto ascii = writer.addString("plain");
    const auto wide = writer.addString("größe");
    const BinaryPropertyList list(writer.finish(ascii));

    EXPECT_EQ(list.item(ascii).type, Type::asciiString);
    EXPECT_EQ(list.item(wide).type, Type::utf16String);
    EXPECT_TRUE(list.isText(list.item(ascii), "plain"));
    EXPECT_FALSE(list.isText(list.item(ascii), "plai"));
    EXPECT_FALSE(list.isText(list.item(ascii), "plaid"));
    EXPECT_TRUE(list.isText(list.item(wide), "größe"));
    EXPECT_FALSE(list.isText(list.item(wide), "grösse"));
}

TEST(BinaryPropertyList, listsAndKeysAreTheSameOnlyInTheSameOrder)
{
    BinaryPropertyListWriter writer;
    const auto a = writer.addString("a");
    const auto b = writer.addString("b");
    const auto list = writer.addArray(std::array{a, b});
    const auto equal = writer.addArray(std::array{a, b});
    const auto turned = writer.addArray(std::array{b, a});
    const auto otherEnd = writer.addArray(std::array{a, a});
    const auto map = writer.addDictionary(std::array{a, b}, std::array{b, b});
    const BinaryPropertyList read(writer.finish(list));
    const auto areSame = [&read](auto left, auto right) {
        return read.haveSameReferences(read.item(left), read.item(right));
    };

    EXPECT_TRUE(areSame(list, list));
    EXPECT_TRUE(areSame(list, equal));
    EXPECT_FALSE(areSame(list, turned));
    EXPECT_FALSE(areSame(list, otherEnd));
    EXPECT_TRUE(areSame(list, map));
    EXPECT_FALSE(areSame(map, turned));
}

TEST(BinaryPropertyList, foreignBytesInAnAsciiStringAreRefusedWhenTheyAreRead)
{
    const BinaryPropertyList list = single({0x51, 0x80});

    EXPECT_THROW((void)list.text(list.item(0)), Exception);
}

TEST(BinaryPropertyList, aLoneSurrogateBecomesAReplacementCharacter)
{
    const BinaryPropertyList list = single({0x61, 0xD8, 0x00});

    EXPECT_EQ(list.text(list.item(0)), "\xEF\xBF\xBD");
}

} // namespace
} // namespace orv::platform
