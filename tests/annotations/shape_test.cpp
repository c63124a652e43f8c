#include "FigureDesk.h"

#include "annotations/EllipseAnnotation.h"
#include "annotations/RectangleAnnotation.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using platform::Point;
using platform::Rect;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::uint32_t kInk = 0xFF0000U;
constexpr std::uint32_t kDesktop = 0x3366AAU;

std::shared_ptr<RectangleAnnotation> rectangle(float size = 4.0F)
{
    return figure<RectangleAnnotation>(annotation_type::rectangle, size);
}

platform::Event flags(std::uint64_t modifiers)
{
    platform::Event event;
    event.type = platform::EventType::flagsChanged;
    event.modifierFlags = modifiers;
    return event;
}

TEST(Shape, APressStartsADragWithAnEmptyBox)
{
    const auto shape = rectangle();

    shape->mouseDownEventAtPoint({100.0, 200.0});

    EXPECT_TRUE(shape->isActive());
    EXPECT_EQ(shape->dragOrigin(), (Point{100.0, 200.0}));
    EXPECT_EQ(shape->shapeBoundingBox(), Rect{});
    EXPECT_FALSE(shape->shouldFinalize());
}

TEST(Shape, ADragDownAndToTheRightKeepsThePressAtTheTopLeft)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({100.0, 200.0});

    shape->mouseDraggedEventAtPoint({130.0, 150.0});

    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(100.0, 150.0, 30.0, 50.0));
    EXPECT_EQ(shape->dragDeltaX(), 30.0);
    EXPECT_EQ(shape->dragDeltaY(), -50.0);
}

TEST(Shape, ADragUpAndToTheLeftKeepsThePressAtTheBottomRight)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({100.0, 200.0});

    shape->mouseDraggedEventAtPoint({40.0, 225.0});

    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(40.0, 200.0, 60.0, 25.0));
}

TEST(Shape, ADragTowardsTheOriginHasItsBoxAtTheMouse)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({100.0, 200.0});

    shape->mouseDraggedEventAtPoint({40.0, 125.0});

    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(40.0, 125.0, 60.0, 75.0));
}

TEST(Shape, AReleaseEndsTheDragAtItsOwnPoint)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({10.0, 10.0});
    shape->mouseDraggedEventAtPoint({20.0, 20.0});

    shape->mouseUpEventAtPoint({50.0, 30.0});

    EXPECT_FALSE(shape->isActive());
    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(10.0, 10.0, 40.0, 20.0));
}

TEST(Shape, ShiftMakesASquareOfTheLongerSideFromThePressOn)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({100.0, 200.0});
    shape->mouseDraggedEventAtPoint({130.0, 190.0});

    EXPECT_TRUE(shape->shouldRedrawWithFlagsChangedEvent(flags(platform::modifier::shift)));
    EXPECT_TRUE(shape->constrainDimensions());
    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(100.0, 170.0, 30.0, 30.0));

    shape->mouseDraggedEventAtPoint({90.0, 240.0});
    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(60.0, 200.0, 40.0, 40.0));

    EXPECT_TRUE(shape->shouldRedrawWithFlagsChangedEvent(flags(0)));
    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(90.0, 200.0, 10.0, 40.0));
}

TEST(Shape, OnlyAChangeOfShiftDuringADragAsksForARedraw)
{
    const auto shape = rectangle();
    EXPECT_FALSE(shape->shouldRedrawWithFlagsChangedEvent(flags(platform::modifier::shift)));
    EXPECT_FALSE(shape->constrainDimensions()) << "no drag has begun";

    shape->mouseDownEventAtPoint({0.0, 0.0});
    EXPECT_FALSE(shape->shouldRedrawWithFlagsChangedEvent(flags(0)));
    EXPECT_FALSE(shape->shouldRedrawWithFlagsChangedEvent(flags(~platform::modifier::shift)));
    EXPECT_TRUE(shape->shouldRedrawWithFlagsChangedEvent(flags(platform::modifier::shift)));
    EXPECT_FALSE(shape->shouldRedrawWithFlagsChangedEvent(flags(platform::modifier::shift)));

    shape->mouseUpEventAtPoint({20.0, 10.0});
    EXPECT_FALSE(shape->shouldRedrawWithFlagsChangedEvent(flags(0)));
    EXPECT_TRUE(shape->constrainDimensions()) << "the release leaves it";
    EXPECT_EQ(shape->shapeBoundingBox(), Rect::make(0.0, 0.0, 20.0, 20.0));
}

TEST(Shape, OnePointEachWayIsEnoughToStay)
{
    const auto shape = rectangle();
    shape->mouseDownEventAtPoint({0.0, 0.0});

    shape->mouseDraggedEventAtPoint({1.0, -1.0});
    EXPECT_TRUE(shape->shouldFinalize());
    shape->mouseDraggedEventAtPoint({0.99, 5.0});
    EXPECT_FALSE(shape->shouldFinalize());
    shape->mouseDraggedEventAtPoint({5.0, 0.99});
    EXPECT_FALSE(shape->shouldFinalize());
}

TEST(Shape, ARectangleIsAnOutlineOfItsBox)
{
    const auto shape = rectangle(3.0F);
    shape->mouseDownEventAtPoint({1.0, 2.0});
    shape->mouseDraggedEventAtPoint({11.0, 22.0});

    EXPECT_THAT(linesOf(*shape),
                ElementsAre("save", "blend 0", "stroke color 1 0 0 1", "dash 0", "cap 0", "join 0",
                            "width 3", "stroke 0(1,2) 1(11,2) 1(11,22) 1(1,22) 4", "restore"));
}

TEST(Shape, AnEllipseIsAnOutlineThatTouchesItsBox)
{
    const auto shape = figure<EllipseAnnotation>(annotation_type::ellipse, 10.0F);
    shape->setDashMode(true);
    shape->mouseDownEventAtPoint({10.0, 20.0});
    shape->mouseDraggedEventAtPoint({50.0, 100.0});

    platform::Path oval;
    oval.addEllipse(Rect::make(10.0, 20.0, 40.0, 80.0));
    EXPECT_THAT(linesOf(*shape), ElementsAre("save", "blend 0", "stroke color 1 0 0 1",
                                             "dash 0 30 18", "cap 0", "join 0", "width 10",
                                             "stroke " + RecordingContext::text(oval), "restore"));
}

TEST(Shape, AShapeOfNoKindShowsItsBoxInGrey)
{
    ShapeAnnotation shape;
    shape.setSize(20.0F);
    shape.setColor(platform::Color(1.0, 0.0, 0.0));
    shape.mouseDownEventAtPoint({0.0, 0.0});
    shape.mouseDraggedEventAtPoint({5.0, 6.0});

    EXPECT_THAT(linesOf(shape),
                ElementsAre("save", "blend 0", "dash 0", "stroke color 0.5 0.5 0.5 1", "cap 0",
                            "join 0", "width 1", "stroke 0(0,0) 1(5,0) 1(5,6) 1(0,6) 4",
                            "restore"));
}

TEST(Shape, AFileKeepsTheBoxInFloatsAndForgetsTheDrag)
{
    const auto shape = rectangle(2.88F);
    shape->mouseDownEventAtPoint({0.1, 0.2});
    shape->mouseDraggedEventAtPoint({30.3, 40.7});
    const Rect box = shape->shapeBoundingBox();

    const auto read = archivedAndRead(shape);

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->shapeBoundingBox(),
              Rect::make(static_cast<float>(box.origin.x), static_cast<float>(box.origin.y),
                         static_cast<float>(box.size.width), static_cast<float>(box.size.height)));
    EXPECT_EQ(read->annotationType(), annotation_type::rectangle);
    EXPECT_EQ(read->annotationSize(), double{2.88F});
    EXPECT_EQ(read->dragOrigin(), Point{});
    EXPECT_EQ(read->dragDeltaX(), 0.0);
    EXPECT_EQ(read->dragDeltaY(), 0.0);
    EXPECT_FALSE(read->isActive());
    EXPECT_TRUE(read->shouldFinalize());
}

TEST(Shape, EachKindComesBackFromAFileAsItself)
{
    const auto ellipse = figure<EllipseAnnotation>(annotation_type::ellipse, 4.0F);

    EXPECT_THAT(ellipse->archiveClassNames(),
                ElementsAre("EllipseAnnotation", "ShapeAnnotation", "Annotation"));
    EXPECT_NE(archivedAndRead(ellipse), nullptr);
    EXPECT_THAT(rectangle()->archiveClassNames(),
                ElementsAre("RectangleAnnotation", "ShapeAnnotation", "Annotation"));
    EXPECT_NE(archivedAndRead(rectangle()), nullptr);
}

TEST(Shape, AFileIsReadByTheNamesOfItsKeys)
{
    const auto read =
        readFrom<RectangleAnnotation>("RectangleAnnotation", [](platform::KeyedArchiver &coder) {
            coder.encodeFloat("originX", 1.5F);
            coder.encodeFloat("originY", 2.5F);
            coder.encodeFloat("boxWidth", 3.5F);
            coder.encodeFloat("boxHeight", 4.5F);
        });

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->shapeBoundingBox(), Rect::make(1.5, 2.5, 3.5, 4.5));
}

TEST(Shape, ABoxThatAFileGivesNegativeSidesIsEmpty)
{
    const auto read =
        readFrom<EllipseAnnotation>("EllipseAnnotation", [](platform::KeyedArchiver &coder) {
            coder.encodeFloat("originX", 5.0F);
            coder.encodeFloat("boxWidth", -3.0F);
            coder.encodeFloat("boxHeight", -4.0F);
        });

    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->shapeBoundingBox(), Rect::make(5.0, 0.0, 0.0, 0.0));
    EXPECT_EQ(linesOf(*read).size(), 9U) << "and it can be drawn";
}

TEST_F(FigureDesk, AShiftPressOrReleaseRedrawsAtOnceWithoutAMove)
{
    use(annotation_type::rectangle, 4.0F);
    press({100.0, 200.0});
    drag({130.0, 190.0});
    ASSERT_EQ(pixelAt(115, 170), kDesktop);
    ASSERT_EQ(pixelAt(115, 190), kInk);

    turnShift(true);
    EXPECT_EQ(pixelAt(115, 170), kInk) << "the square reaches down to here";
    EXPECT_EQ(pixelAt(115, 190), kDesktop);

    turnShift(false);
    EXPECT_EQ(pixelAt(115, 170), kDesktop);
    EXPECT_EQ(pixelAt(115, 190), kInk);
}

TEST_F(FigureDesk, AShiftThatWasDownBeforeThePressIsNotSeenUntilItChanges)
{
    use(annotation_type::rectangle, 4.0F);
    turnShift(true);

    press({100.0, 200.0});
    drag({130.0, 190.0});

    EXPECT_EQ(last<RectangleAnnotation>()->shapeBoundingBox(),
              Rect::make(100.0, 190.0, 30.0, 10.0));
}

TEST_F(FigureDesk, ANarrowRectangleIsDroppedAtTheRelease)
{
    use(annotation_type::rectangle, 4.0F);
    press({10.0, 10.0});
    drag({10.5, 210.0});
    ASSERT_THAT(annotations(), SizeIs(1));

    release({10.5, 210.0});

    EXPECT_THAT(annotations(), IsEmpty());
}

TEST_F(FigureDesk, AClickLeavesNothingInAnyKindOfFigure)
{
    for (const std::int32_t type :
         {annotation_type::ellipse, annotation_type::rectangle, annotation_type::line}) {
        use(type, 4.0F);
        press({50.0, 50.0});
        ASSERT_THAT(annotations(), SizeIs(1)) << type;

        release({50.0, 50.0});

        EXPECT_THAT(annotations(), IsEmpty()) << type;
    }
}

TEST_F(FigureDesk, AFigureIsHollow)
{
    for (const std::int32_t type : {annotation_type::ellipse, annotation_type::rectangle}) {
        use(type, 4.0F);
        stroke({100.0, 100.0}, {200.0, 180.0});

        EXPECT_EQ(pixelAt(150, 100), kInk) << type;
        EXPECT_EQ(pixelAt(150, 179), kInk) << type;
        EXPECT_EQ(pixelAt(199, 140), kInk) << type;
        EXPECT_EQ(pixelAt(150, 140), kDesktop) << type;
        canvas->undoAnnotation();
    }
}

TEST_F(FigureDesk, ARectangleHasCornersAndAnEllipseHasNone)
{
    use(annotation_type::rectangle, 10.0F);
    stroke({100.0, 100.0}, {200.0, 180.0});
    EXPECT_EQ(pixelAt(96, 96), kInk) << "the outline's corner is mitred";
    canvas->undoAnnotation();

    use(annotation_type::ellipse, 10.0F);
    stroke({100.0, 100.0}, {200.0, 180.0});
    EXPECT_EQ(pixelAt(102, 102), kDesktop);
}

TEST(FigureKinds, EachNumberMakesItsClass)
{
    registerFigureAnnotations(AnnotationRegistry::shared());
    const std::vector<std::pair<std::int32_t, std::string>> kinds{
        {4, "EraserAnnotation"}, {5, "EllipseAnnotation"}, {6, "RectangleAnnotation"},
        {7, "TextAnnotation"},   {8, "LineAnnotation"},    {9, "StampAnnotation"}};
    for (const auto &[number, name] : kinds) {
        const auto annotation = Annotation::annotationOfType(number);

        EXPECT_EQ(annotation->className(), name);
        EXPECT_EQ(annotation->annotationType(), number);
        EXPECT_EQ(annotation->alphaComponent(), 1.0) << name;
        EXPECT_EQ(annotation->blendMode(),
                  number == 4 ? platform::BlendMode::clear : platform::BlendMode::normal);
    }
}

} // namespace
} // namespace orv::test
