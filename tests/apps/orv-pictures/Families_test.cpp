#include "orv-pictures/Families.h"
#include "orv-pictures/PictureError.h"

#include "apps/orv-pictures/Samples.h"

#include <gmock/gmock.h>

namespace orv::pictures::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;

class FamiliesTest : public ::testing::Test {
protected:
    [[nodiscard]] std::vector<Family> read() const
    {
        return readFamilies(samples.path("families.json"));
    }
    void expectRefusal(const std::string &old, const std::string &now, const std::string &message)
    {
        const std::string before = readAll(samples.path("families.json"));
        samples.replace("families.json", old, now);
        EXPECT_THAT([this] { static_cast<void>(read()); },
                    ThrowsMessage<PictureError>(
                        AllOf(StartsWith(samples.path("families.json")), HasSubstr(message))))
            << now;
        samples.write("families.json", before);
    }
    static std::vector<std::string> names(const Family &family)
    {
        std::vector<std::string> result;
        for (const Picture &picture : family.pictures) {
            result.push_back(picture.name);
        }
        return result;
    }

    Samples samples;
};

TEST_F(FamiliesTest, goesThroughTheListsOfAPatternTheLastOneFirst)
{
    samples.replace("families.json", "\"lists\": {",
                    R"("lists": {"n": [{"id": "1"}, {"id": "2"}],)");
    samples.replace("families.json", "\"{ink}\"", "\"a_{n}_{ink}_z\"");

    const auto families = read();

    ASSERT_EQ(families.size(), 1U);
    EXPECT_THAT(names(families[0]),
                ElementsAre("a_1_red_z", "a_1_blue_z", "a_2_red_z", "a_2_blue_z"));
}

TEST_F(FamiliesTest, keepsOfAListWhatTheFamilyKeeps)
{
    samples.replace("families.json", "\"{ink}\"", R"("{ink}", "only": {"ink": ["blue"]})");

    const auto families = read();

    ASSERT_EQ(families.size(), 1U);
    EXPECT_THAT(names(families[0]), ElementsAre("blue"));
}

TEST_F(FamiliesTest, putsAnEntrysValueBeforeTheFamilysAndThatBeforeTheFrames)
{
    samples.replace("families.json", R"("id": "blue")", R"("id": "blue", "width": 7, "b": 0.25)");
    samples.replace("families.json", R"("values": {)", R"("values": {"height": 5, "b": 1, )");

    const auto families = read();

    const Picture &red = families.at(0).pictures.at(0);
    const Picture &blue = families.at(0).pictures.at(1);
    EXPECT_EQ(std::pair(red.width, red.height), std::pair(4, 5));
    EXPECT_EQ(std::pair(blue.width, blue.height), std::pair(7, 5));
    EXPECT_EQ(red.values.at("b"), "1");
    EXPECT_EQ(blue.values.at("b"), "0.25");
    EXPECT_EQ(blue.values.at("ink"), "#0000FF");
    EXPECT_EQ(blue.templateName, "tile");
}

TEST_F(FamiliesTest, wantsNoSizeForAnIcon)
{
    samples.replace("families.json", R"("width": 4, "height": 4)", R"("container": "icns")");

    const auto families = read();

    EXPECT_EQ(families.at(0).container, Container::icns);
    EXPECT_EQ(families.at(0).pictures.at(0).width, 0);
}

TEST_F(FamiliesTest, saysWhichFamilyDoesNotFit)
{
    expectRefusal("\"{ink}\"", "\"{paper}\"", "the family \"Squares\": \"paper\" is missing");
    expectRefusal("\"{ink}\"", "\"{ink\"", "the family \"Squares\": the pattern \"{ink\" does not");
    expectRefusal("\"{ink}\"", "\"../{ink}\"", "\"../red\" is no name for a picture");
    expectRefusal("\"id\": \"blue\"", "\"id\": \"red\"", "\"red\" is there twice");
    expectRefusal("\"frame\": \"tile\"", "\"frame\": \"til\"", "\"til\" is missing");
    expectRefusal("\"values\"", "\"valeus\"", "\"valeus\" is not known");
    expectRefusal("\"glyphs/square\"", "[1]", "\"glyph\" is neither a text nor a number");
    expectRefusal("\"width\": 4", "\"width\": 0", "the width of \"red\"");
    expectRefusal("\"width\": 4", "\"width\": 4097", "the width of \"red\"");
    expectRefusal("\"height\": 4", "\"height\": \"tall\"", "the height of \"red\"");
    expectRefusal(", \"height\": 4", "", "the height of \"red\"");
    expectRefusal("\"template\": \"tile\"", "\"template\": 3", "\"template\" is missing or of the");
    expectRefusal("\"template\"", "\"container\": \"gif\", \"template\"", "the container \"gif\"");
    expectRefusal("{\"id\": \"red\"", "7, {\"id\": \"red\"", "an entry of a list is no object");
    expectRefusal("\"families\": [", "\"families\": [4, ", "a family is no object");
    expectRefusal("\"frames\"", "\"fames\"", "\"fames\" is not known");
}

TEST_F(FamiliesTest, saysWhenThereIsNoJson)
{
    expectRefusal("{", "[", "is no JSON object");
    std::filesystem::remove(samples.path("families.json"));

    EXPECT_THAT([this] { static_cast<void>(read()); },
                ThrowsMessage<PictureError>(HasSubstr("families.json: the description of the")));
}

} // namespace
} // namespace orv::pictures::test
