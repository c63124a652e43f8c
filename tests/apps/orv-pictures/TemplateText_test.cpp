#include "orv-pictures/PictureError.h"
#include "orv-pictures/TemplateText.h"

#include "apps/orv-pictures/Samples.h"

#include <gmock/gmock.h>

namespace orv::pictures::test {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

TEST(TemplateTextTest, fillsInValuesAndTemplatesThatValuesName)
{
    const Samples samples;
    samples.write("outer.svg", "<g a=\"{{a}}{{a}}\">{{+inner}}</g>{{b}}");
    samples.write("glyphs/inner.svg", "[{{b}}]");
    const TemplateText templates(samples.templates());

    const std::string text =
        templates.filled("outer", {{"a", "1"}, {"b", "{{a}}"}, {"inner", "glyphs/inner"}});

    EXPECT_EQ(text, "<g a=\"11\">[{{a}}]</g>{{a}}");
}

TEST(TemplateTextTest, namesTheTemplateThatDoesNotFit)
{
    const Samples samples;
    samples.write("open.svg", "<g>{{a</g>");
    samples.write("round.svg", "{{+again}}");
    const TemplateText templates(samples.templates());

    EXPECT_THAT([&] { static_cast<void>(templates.filled("tile", {})); },
                ThrowsMessage<PictureError>(samples.path("tile.svg") +
                                            ": nothing is given for \"glyph\"."));
    EXPECT_THAT(
        [&] {
            static_cast<void>(templates.filled("tile", {{"glyph", "glyphs/none"}}));
        },
        ThrowsMessage<PictureError>(samples.path("glyphs/none.svg") +
                                    ": there is no such template."));
    EXPECT_THAT(
        [&] {
            static_cast<void>(templates.filled("open", {{"a", "1"}}));
        },
        ThrowsMessage<PictureError>(HasSubstr("open.svg: a placeholder is not closed")));
    EXPECT_THAT(
        [&] {
            static_cast<void>(templates.filled("round", {{"again", "round"}}));
        },
        ThrowsMessage<PictureError>(HasSubstr("round.svg: the template takes itself in")));
}

TEST(TemplateTextTest, takesNoEmptyTemplate)
{
    const Samples samples;
    samples.write("empty.svg", "");

    EXPECT_THAT([&] { const TemplateText templates(samples.templates()); },
                ThrowsMessage<PictureError>(HasSubstr("empty.svg: the template is empty")));
}

TEST(TemplateTextTest, namesAFolderThatIsMissing)
{
    EXPECT_THAT([] { const TemplateText templates("/nowhere/at/all"); },
                ThrowsMessage<PictureError>(HasSubstr("/nowhere/at/all: the folder of templates")));
}

} // namespace
} // namespace orv::pictures::test
