#include "CanvasDesk.h"
#include "support/RecordingContext.h"

#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using platform::Point;
using ::testing::ElementsAre;

std::string pathOf(const std::shared_ptr<Annotation> &annotation)
{
    return RecordingContext::text(std::dynamic_pointer_cast<PathAnnotation>(annotation)->path());
}

template <class Kind> std::shared_ptr<Kind> archivedAndRead(const std::shared_ptr<Kind> &annotation)
{
    platform::KeyedArchiver archiver;
    archiver.encodeObject("root", annotation);
    platform::KeyedUnarchiver unarchiver(archiver.finishEncoding(),
                                         AnnotationRegistry::shared().classes());
    return std::dynamic_pointer_cast<Kind>(unarchiver.decodeObject("root"));
}

TEST_F(CanvasDesk, AClickLeavesAMoveAndALineOfNoLength)
{
    press({10.0, 20.0});
    release({10.0, 20.0});

    ASSERT_EQ(annotations().size(), 1U);
    EXPECT_EQ(pathOf(annotations()[0]), "0(10,20) 1(10,20)");
    EXPECT_FALSE(annotations()[0]->isActive());
}

TEST_F(CanvasDesk, AClickPaintsARoundDotOfThePensWidth)
{
    const auto brush = std::make_shared<FakeTool>(annotation_type::pen, 10.0F);
    canvas->setCurrentTool(brush);
    press({100.0, 100.0});
    release({100.0, 100.0});
    drain();

    const platform::ImagePtr picture = desk.desktop().composePicture(1);
    const auto at = [&picture](int x, int yUp) {
        return picture->pixel(x, picture->height() - 1 - yUp) & 0xFFFFFFU;
    };
    EXPECT_EQ(at(100, 100), 0xFF0000U);
    EXPECT_EQ(at(96, 100), 0xFF0000U) << "four points to the left is still in the dot";
    EXPECT_EQ(at(106, 100), 0x3366AAU);
    EXPECT_EQ(at(95, 95), 0x3366AAU) << "a square cap would cover the corner";
}

TEST_F(CanvasDesk, ADragAddsEachPointAndAReleaseThereAddsNothing)
{
    stroke({1.0, 2.0}, {3.0, 4.0});

    EXPECT_EQ(pathOf(annotations()[0]), "0(1,2) 1(1,2) 1(3,4)");
}

TEST_F(CanvasDesk, AReleaseAwayFromTheLastPointClosesTheStroke)
{
    press({1.0, 2.0});
    drag({3.0, 4.0});
    release({5.0, 9.0});

    EXPECT_EQ(pathOf(annotations()[0]), "0(1,2) 1(1,2) 1(3,4) 1(5,9) 4");
}

TEST_F(CanvasDesk, AStrokeDrawsItsStateInOrderAndPutsItBack)
{
    const auto annotation = pen->createAnnotationInView(canvas);
    annotation->mouseDownEventAtPoint({1.0, 1.0});
    RecordingContext context;

    annotation->draw(context);

    EXPECT_THAT(context.lines,
                ElementsAre("save", "dash 0", "blend 0", "width 4", "cap 1", "join 1",
                            "stroke color 1 0 0 1", "stroke 0(1,1) 1(1,1)", "restore"));
}

TEST_F(CanvasDesk, ADashedStrokeOfTenPointsHasThirtyOnAndEighteenOff)
{
    FakeTool tool(annotation_type::pen, 10.0F);
    tool.dash = true;
    RecordingContext context;

    tool.createAnnotationInView(canvas)->draw(context);

    EXPECT_THAT(context.lines, ::testing::Contains("dash 0 30 18"));
}

TEST_F(CanvasDesk, TheDashLengthIsRoundedToASingleFloatFirst)
{
    FakeTool tool(annotation_type::pen, 0.7F);
    tool.dash = true;
    RecordingContext context;

    tool.createAnnotationInView(canvas)->draw(context);

    const float on = static_cast<float>(static_cast<double>(0.7F) * 3.0);
    EXPECT_THAT(context.lines,
                ::testing::Contains(fmt::format("dash 0 {} {}", double{on}, on * 0.6)));
}

TEST_F(CanvasDesk, AHighlighterIsHalfTransparentWhateverItsColour)
{
    FakeTool tool(annotation_type::highlighter);
    tool.color = {0.0, 1.0, 0.0, 1.0};

    const auto annotation = tool.createAnnotationInView(canvas);

    EXPECT_EQ(annotation->color(), platform::Color(0.0, 1.0, 0.0, 0.5));
    EXPECT_EQ(annotation->blendMode(), platform::BlendMode::normal);
}

TEST(AnnotationSize, ZeroAndLessGiveOne)
{
    Annotation annotation;
    annotation.setSize(0.0F);
    EXPECT_EQ(annotation.annotationSize(), 1.0);
    annotation.setSize(-3.0F);
    EXPECT_EQ(annotation.annotationSize(), 1.0);
    annotation.setSize(2.5F);
    EXPECT_EQ(annotation.annotationSize(), 2.5);
}

TEST(AnnotationStyle, OnlyWhatIsGreaterThanZeroIsStored)
{
    Annotation annotation;
    annotation.setStyle(3);
    annotation.setStyle(0);
    annotation.setStyle(-1);
    EXPECT_EQ(annotation.annotationStyle(), 3);
}

TEST(AnnotationColor, NothingChangesNothingAndTheAlphaIsLeftAlone)
{
    PencilAnnotation annotation;
    annotation.setColor(platform::Color(0.1, 0.2, 0.3, 0.4));
    annotation.setColor(std::nullopt);
    EXPECT_EQ(annotation.color(), platform::Color(0.1, 0.2, 0.3, 1.0));
}

TEST(AnnotationKinds, NumbersOutsideTheTableGiveABareAnnotationThatKeepsItsNumber)
{
    registerStrokeAnnotations(AnnotationRegistry::shared());
    EXPECT_EQ(Annotation::annotationOfType(2)->className(), "PencilAnnotation");
    EXPECT_EQ(Annotation::annotationOfType(3)->className(), "HighlighterAnnotation");
    for (const std::int32_t type : {-1, 0, 1, 10, 4711}) {
        const auto annotation = Annotation::annotationOfType(type);
        EXPECT_EQ(annotation->className(), "Annotation");
        EXPECT_EQ(annotation->annotationType(), type);
        EXPECT_FALSE(annotation->shouldFinalize());
    }
}

TEST_F(CanvasDesk, WhatIsReadBackKeepsEveryFieldNarrowedToFloats)
{
    FakeTool tool(annotation_type::highlighter, 2.88F);
    tool.color = {0.1, 0.7, 1.0 / 3.0, 1.0};
    tool.dash = true;
    const auto annotation =
        std::dynamic_pointer_cast<HighlighterAnnotation>(tool.createAnnotationInView(canvas));
    annotation->mouseDownEventAtPoint({1.25, 2.5});
    annotation->mouseDraggedEventAtPoint({0.1, 1e9});
    annotation->mouseUpEventAtPoint({7.0, 7.0});

    const auto read = archivedAndRead(annotation);

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->annotationType(), 3);
    EXPECT_EQ(read->annotationSize(), double{2.88F});
    EXPECT_EQ(read->color(), platform::Color(double{0.1F}, double{0.7F},
                                             double{static_cast<float>(1.0 / 3.0)}, 0.5));
    EXPECT_TRUE(read->dashMode());
    EXPECT_EQ(read->path(), annotation->path()) << "points keep their full width";
    EXPECT_FALSE(read->isActive());
    EXPECT_EQ(read->containerView(), nullptr);
}

TEST_F(CanvasDesk, AnActiveStrokeComesBackInactive)
{
    const auto annotation =
        std::dynamic_pointer_cast<PencilAnnotation>(pen->createAnnotationInView(canvas));
    annotation->mouseDownEventAtPoint({1.0, 1.0});

    EXPECT_FALSE(archivedAndRead(annotation)->isActive());
}

/// Writes what a file from before dashes holds, and elements that are no freehand stroke's.
class OldStroke : public platform::Archivable {
public:
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override
    {
        return {"PencilAnnotation", "PathAnnotation", "Annotation"};
    }
    void encodeWithCoder(platform::KeyedArchiver &coder) const override
    {
        coder.encodeInt("annotationType", 2);
        coder.encodeFloat("annotationSize", 3.0F);
        coder.encodeFloat("alphaComponent", 0.25F);
        coder.encodeArray("path", [](platform::ArchiveArray &array) {
            add(array, 0, {1.0, 2.0});
            add(array, 3, {3.0, 4.0, 5.0, 6.0, 7.0, 8.0});
            add(array, 2, {3.0, 4.0, 5.0, 6.0});
            add(array, 17, {});
            add(array, 4, {});
        });
    }

private:
    static void add(platform::ArchiveArray &array, int type, const std::vector<double> &numbers)
    {
        std::vector<std::uint8_t> bytes(numbers.size() * sizeof(double));
        if (!numbers.empty()) {
            std::memcpy(bytes.data(), numbers.data(), bytes.size());
        }
        array.addDictionary([&](platform::ArchiveDictionary &dictionary) {
            dictionary.setInt("elementType", type);
            dictionary.setData("elementPoints", bytes);
        });
    }
};

TEST_F(CanvasDesk, AnOlderStrokeWithoutADashReadsAndForeignElementsAreSkipped)
{
    platform::KeyedArchiver archiver;
    archiver.encodeObject("root", std::make_shared<OldStroke>());
    platform::KeyedUnarchiver unarchiver(archiver.finishEncoding(),
                                         AnnotationRegistry::shared().classes());

    const auto read = unarchiver.decodeObjectOf<PencilAnnotation>("root");

    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(read->dashMode());
    EXPECT_EQ(read->alphaComponent(), 0.25) << "the archive decides, not the class";
    EXPECT_EQ(RecordingContext::text(read->path()), "0(1,2) 2(3,4)(5,6) 4");
}

} // namespace
} // namespace orv::test
