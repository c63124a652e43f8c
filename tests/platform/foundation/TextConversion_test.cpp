#include "platform/foundation/TextConversion.h"

#include <gtest/gtest.h>

namespace orv::platform {
namespace {

const std::string kReplacement = "\xEF\xBF\xBD";

TEST(TextConversion, textOfOneToFourBytesGoesThereAndBack)
{
    const std::string utf8 = "a\xC3\x9F\xE2\x82\xAC\xF0\x9F\x96\x8D";
    const std::u16string utf16 = u"a\u00DF\u20AC\U0001F58D";

    EXPECT_EQ(utf16FromUtf8(utf8), utf16);
    EXPECT_EQ(utf8FromUtf16(utf16), utf8);
}

TEST(TextConversion, everyCodePointSurvivesTheRoundTrip)
{
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        if (code >= 0xD800 && code < 0xE000) {
            continue;
        }
        std::u16string units;
        if (code >= 0x10000) {
            units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + (code & 0x3FFU));
        } else {
            units += static_cast<char16_t>(code);
        }
        ASSERT_EQ(utf16FromUtf8(utf8FromUtf16(units)), units) << static_cast<unsigned>(code);
    }
}

TEST(TextConversion, emptyTextStaysEmptyAndZeroIsACharacter)
{
    EXPECT_EQ(utf16FromUtf8(""), u"");
    EXPECT_EQ(utf8FromUtf16(u""), "");
    EXPECT_EQ(utf16FromUtf8(std::string(1, '\0')), std::u16string(1, u'\0'));
}

TEST(TextConversion, eachMalformedByteBecomesAReplacement)
{
    EXPECT_EQ(utf16FromUtf8("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(utf16FromUtf8("\x80"), u"\uFFFD") << "a continuation without a start";
    EXPECT_EQ(utf16FromUtf8("\xC3"), u"\uFFFD") << "cut off";
    EXPECT_EQ(utf16FromUtf8("\xC3z"), u"\uFFFDz") << "no continuation";
    EXPECT_EQ(utf16FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD") << "too long for its code";
    EXPECT_EQ(utf16FromUtf8("\xE0\x80\x80"), u"\uFFFD\uFFFD\uFFFD") << "too long for its code";
    EXPECT_EQ(utf16FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD") << "a surrogate";
    EXPECT_EQ(utf16FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond the end";
}

TEST(TextConversion, aSurrogateWithoutItsPartnerBecomesAReplacement)
{
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xD800}), kReplacement);
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xDC00}), kReplacement);
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xD800, u'z'}), kReplacement + "z");
    EXPECT_EQ(utf8FromUtf16(std::u16string{0xDC00, 0xD800}), kReplacement + kReplacement);
}

} // namespace
} // namespace orv::platform
