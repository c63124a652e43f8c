#include "StorageDesk.h"

#include "annotations/TextAnnotation.h"
#include "canvas/CanvasSaver.h"

#include <gmock/gmock.h>

// Saves in the middle of the work: what they hold, and which one of them stays.

namespace orv::test {
namespace {

using ::testing::ElementsAre;

TEST_F(StorageDesk, AStrokeInProgressIsSavedAsItStandsAndGoesOn)
{
    press({10.0, 10.0});
    drag({20.0, 20.0});
    canvas->saveDefaultAnnotationData();
    drag({30.0, 30.0});
    drain();

    makeCanvas();
    canvas->loadDefaultAnnotationData();

    ASSERT_EQ(counts(standard), "1 0 0");
    const auto read = std::dynamic_pointer_cast<PencilAnnotation>(annotations()[0]);
    EXPECT_EQ(read->path().elementCount(), 3U) << "a move, a line of no length, one drag";
    EXPECT_FALSE(read->isActive());
    EXPECT_EQ(read->containerView(), nullptr);
}

TEST_F(StorageDesk, ATextInProgressComesBackFinished)
{
    use(annotation_type::text);
    press({10.0, 10.0});
    release({10.0, 10.0});
    platform::Event key = keyOf(0);
    key.characters = u"h";
    canvas->keyDown(key);
    canvas->saveDefaultAnnotationData();
    key.characters = u"i";
    canvas->keyDown(key);
    drain();

    restart();

    const auto read = std::dynamic_pointer_cast<TextAnnotation>(annotations().at(0));
    EXPECT_THAT(read->lines(), ElementsAre(u"h"));
    EXPECT_FALSE(read->isActive());
    EXPECT_FALSE(read->isEnteringText());
    EXPECT_FALSE(read->caretVisible());
}

TEST_F(StorageDesk, ASaveFinalisesNothing)
{
    press({10.0, 10.0});
    canvas->saveDefaultAnnotationDataAndWait();

    EXPECT_TRUE(annotations()[0]->isActive());
    drag({20.0, 20.0});
    EXPECT_EQ(std::dynamic_pointer_cast<PencilAnnotation>(annotations()[0])->path().elementCount(),
              3U);
}

TEST_F(StorageDesk, AnAutosaveIsWrittenByAWorkerAndHoldsTheMomentItWasAskedFor)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationData();
    EXPECT_FALSE(desk.files().exists(defaultFile()));
    stroke({3.0, 3.0}, {4.0, 4.0});
    canvas->clearAnnotations(nullptr);
    drain();

    restart();

    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(StorageDesk, AnAutosaveThatStillWaitsNeverReplacesALaterSave)
{
    stroke({1.0, 1.0}, {2.0, 2.0});
    canvas->saveDefaultAnnotationData();
    stroke({3.0, 3.0}, {4.0, 4.0});
    canvas->saveDefaultAnnotationDataAndWait();
    drain();

    restart();

    EXPECT_EQ(counts(standard), "2 0 0");
}

TEST_F(StorageDesk, AnAutosaveOfAClosedCanvasNeverReplacesOneOfItsSuccessor)
{
    canvas->saveDefaultAnnotationData();
    makeCanvas();
    canvas->setAnnotationModeKey(standard);
    stroke({3.0, 3.0}, {4.0, 4.0});
    canvas->saveDefaultAnnotationDataAndWait();
    drain();

    restart();

    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(StorageDesk, OfTwoAutosavesThatWaitTheOlderOneIsDropped)
{
    canvas->saveDefaultAnnotationData();
    stroke({3.0, 3.0}, {4.0, 4.0});
    canvas->saveDefaultAnnotationData();
    drain();

    restart();

    EXPECT_EQ(counts(standard), "1 0 0");
}

TEST_F(StorageDesk, ASaveThatIsDroppedIsNotEncodedEither)
{
    std::vector<int> encoded;
    const auto saveOf = [&encoded](const std::string &path, int number) {
        return CanvasSave{path, "test", [&encoded, number] {
                              encoded.push_back(number);
                              return platform::Data{static_cast<std::uint8_t>(number)};
                          }};
    };
    saveOnWorker(saveOf(defaultFile("a"), 1));
    saveOnWorker(saveOf(defaultFile("a"), 2));
    saveOnWorker(saveOf(defaultFile("b"), 3));
    saveOnWorker(saveOf(defaultFile("a"), 4));
    drain();
    saveOnWorker(saveOf(defaultFile("a"), 5));
    drain();

    EXPECT_THAT(encoded, ElementsAre(3, 4, 5));
    EXPECT_EQ(bytesOf(defaultFile("a")), platform::Data{5});
    EXPECT_EQ(bytesOf(defaultFile("b")), platform::Data{3});
}

} // namespace
} // namespace orv::test
