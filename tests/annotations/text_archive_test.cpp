#include "TextDesk.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace orv::test {
namespace {

using platform::Point;
using ::testing::ElementsAre;

TEST_F(TextDesk, WhatWasTypedSoFarIsSavedAndComesBackInactive)
{
    textTool->color = {0.25, 0.5, 0.75, 1.0};
    textTool->dash = true;
    click({100.1, 200.2});
    type(u"a\r\u05D0 ");

    const auto read = readBack(text());

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->annotationType(), annotation_type::text);
    EXPECT_EQ(read->blendMode(), platform::BlendMode::normal);
    EXPECT_EQ(read->color(), platform::Color(0.25, 0.5, 0.75, 1.0));
    EXPECT_TRUE(read->dashMode());
    EXPECT_EQ(read->annotationSize(), 20.0);
    EXPECT_EQ(read->lineHeight(), text()->lineHeight());
    EXPECT_THAT(read->lines(), ElementsAre(u"a", u"\u05D0 "));
    EXPECT_EQ(read->textOrigin(), (Point{double{100.1F}, double{200.2F}}));
    EXPECT_EQ(read->textAngle(), 0.0F);
    EXPECT_FALSE(read->isActive());
    EXPECT_FALSE(read->isEnteringText());
    EXPECT_FALSE(read->caretVisible());
}

TEST_F(TextDesk, ItsKeysFollowThoseOfEveryAnnotation)
{
    click({100.0, 100.0});
    platform::KeyedArchiver archiver;
    archiver.encodeObject("root", text());

    const platform::Data bytes = archiver.finishEncoding();

    const std::string file(bytes.begin(), bytes.end());
    std::size_t last = 0;
    for (const char *key : {"annotationType", "dashMode", "lines", "originX", "originY", "angle"}) {
        const std::size_t at = file.find(key);
        ASSERT_NE(at, std::string::npos) << key;
        EXPECT_GT(at, last) << key;
        last = at;
    }
    EXPECT_THAT(text()->archiveClassNames(), ElementsAre("TextAnnotation", "Annotation"));
}

/// A text as somebody else wrote it.
class ForeignText : public platform::Archivable {
public:
    explicit ForeignText(platform::ArchiveArray::Fill lines) : lines_(std::move(lines)) {}
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return {"TextAnnotation", "Annotation"};
    }
    void encodeWithCoder(platform::KeyedArchiver &coder) const override
    {
        coder.encodeFloat("annotationSize", 20.0F);
        if (lines_) {
            coder.encodeArray("lines", lines_);
        }
        coder.encodeFloat("angle", 0.5F);
    }

private:
    platform::ArchiveArray::Fill lines_;
};

TEST_F(TextDesk, AFileWithoutLinesGivesAnEmptyOne)
{
    EXPECT_THAT(readBack(std::make_shared<ForeignText>(nullptr))->lines(), ElementsAre(u""));

    const auto noLines = std::make_shared<ForeignText>([](platform::ArchiveArray &) {});
    EXPECT_THAT(readBack(noLines)->lines(), ElementsAre(u""));
    EXPECT_EQ(readBack(noLines)->textAngle(), 0.5F);

    const auto nullLine = std::make_shared<ForeignText>(
        [](platform::ArchiveArray &array) { array.addString(std::nullopt); });
    EXPECT_THAT(readBack(nullLine)->lines(), ElementsAre(u""));
}

TEST_F(TextDesk, AFileWithALineThatIsNoTextIsRefused)
{
    const auto number =
        std::make_shared<ForeignText>([](platform::ArchiveArray &array) { array.addInt(7); });

    EXPECT_THROW(static_cast<void>(readBack(number)), platform::Exception);
}

} // namespace
} // namespace orv::test
