#include "platform/foundation/ArchiveSamples.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::platform {
namespace {

using samples::classes;
using samples::HandMadeArchive;
using samples::Link;
using testing::HasSubstr;

template <class Body> std::string reasonOf(Body body)
{
    try {
        body();
    } catch (const Exception &exception) {
        return exception.what();
    }
    return "nothing was thrown";
}

Data numberArchive()
{
    KeyedArchiver archiver;
    archiver.encodeInt("int", 5);
    archiver.encodeDouble("real", -2.75);
    archiver.encodeDouble("huge", 1e300);
    archiver.encodeBool("bool", true);
    archiver.encodeString("string", "5");
    archiver.encodeString("null", std::nullopt);
    archiver.encodeArray("array", [](ArchiveArray &array) { array.addInt(1); });
    archiver.encodeObject("link", std::make_shared<Link>("a", nullptr));
    archiver.encodeObject("stroke", samples::stroke(1));
    return archiver.finishEncoding();
}

TEST(KeyedUnarchiver, absentKeysAndNullCountAsNothing)
{
    KeyedUnarchiver unarchiver(numberArchive(), classes());

    EXPECT_EQ(unarchiver.decodeInt("absent"), 0);
    EXPECT_EQ(unarchiver.decodeFloat("absent"), 0.0F);
    EXPECT_EQ(unarchiver.decodeDouble("absent"), 0.0);
    EXPECT_FALSE(unarchiver.decodeBool("absent"));
    EXPECT_FALSE(unarchiver.decodeNode("absent").has_value());
    EXPECT_EQ(unarchiver.decodeObject("absent"), nullptr);
    EXPECT_EQ(unarchiver.decodeObject("null"), nullptr);
    EXPECT_EQ(unarchiver.decodeInt("null"), 0);
    EXPECT_FALSE(unarchiver.decodeNode("null").has_value());
}

TEST(KeyedUnarchiver, numbersStandInForEachOther)
{
    KeyedUnarchiver unarchiver(numberArchive(), classes());

    EXPECT_EQ(unarchiver.decodeInt("real"), -2);
    EXPECT_EQ(unarchiver.decodeInt("bool"), 1);
    EXPECT_EQ(unarchiver.decodeDouble("int"), 5.0);
    EXPECT_TRUE(unarchiver.decodeBool("int"));
    EXPECT_TRUE(unarchiver.decodeBool("real"));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeInt("huge"); }), HasSubstr("1e+300"));
}

TEST(KeyedUnarchiver, aValueOfAnotherTypeIsRefusedByItsKey)
{
    KeyedUnarchiver unarchiver(numberArchive(), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeInt("string"); }), HasSubstr("\"string\""));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeBool("array"); }), HasSubstr("\"array\""));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeString("int"); }), HasSubstr("\"int\""));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeData("link"); }), HasSubstr("\"link\""));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("array"); }), HasSubstr("\"array\""));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObjectOf<Link>("stroke"); }),
                HasSubstr("\"stroke\""));
}

TEST(KeyedUnarchiver, aNodeOfAnotherKindIsRefused)
{
    KeyedUnarchiver unarchiver(numberArchive(), classes());
    const auto array = unarchiver.decodeNode("array");
    const auto number = unarchiver.decodeNode("int");
    ASSERT_TRUE(array && number);

    EXPECT_THAT(reasonOf([&] { (void)array->find("key"); }), HasSubstr("not a dictionary"));
    EXPECT_THAT(reasonOf([&] { (void)array->at(1); }), HasSubstr("no value 1"));
    EXPECT_THAT(reasonOf([&] { (void)number->size(); }), HasSubstr("is a number"));
    EXPECT_THROW((void)number->asString(), Exception);
    EXPECT_THROW((void)number->asData(), Exception);
    EXPECT_THROW((void)number->asObject(), Exception);
    EXPECT_THROW((void)number->at(0), Exception);
    EXPECT_THROW((void)array->asInt(), Exception);
}

TEST(KeyedUnarchiver, anUnknownClassIsNamed)
{
    ClassTable noClasses;
    KeyedUnarchiver unarchiver(numberArchive(), noClasses);

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("stroke"); }),
                HasSubstr("PencilAnnotation"));
    EXPECT_EQ(unarchiver.decodeInt("int"), 5) << "the rest stays readable";
}

TEST(KeyedUnarchiver, aMakerThatFailsLeavesTheScopeWhereItWas)
{
    ClassTable failing;
    failing.add("Link", [](KeyedUnarchiver &) -> std::shared_ptr<Archivable> {
        throw Exception("can't be made");
    });
    KeyedUnarchiver unarchiver(numberArchive(), failing);

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("link"); }), HasSubstr("can't"));
    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("link"); }), HasSubstr("can't"));
    EXPECT_EQ(unarchiver.decodeInt("int"), 5);
}

TEST(KeyedUnarchiver, aMakerThatAnswersNullGivesNull)
{
    ClassTable table;
    table.add("Link", [](KeyedUnarchiver &) { return std::shared_ptr<Archivable>(); });
    KeyedUnarchiver unarchiver(numberArchive(), table);

    EXPECT_EQ(unarchiver.decodeObject("link"), nullptr);
}

TEST(KeyedUnarchiver, foreignBytesAreRefused)
{
    const auto open = [](const Data &bytes) {
        return reasonOf([&] { const KeyedUnarchiver unarchiver(bytes, classes()); });
    };
    BinaryPropertyListWriter number;
    const Data noDictionary = number.finish(number.addInt(1));
    BinaryPropertyListWriter empty;
    const Data noArchive = empty.finish(empty.addDictionary({}, {}));
    const std::string xml = "<?xml version=\"1.0\"?><plist><dict/></plist>";

    EXPECT_THAT(open({}), HasSubstr("bplist00"));
    EXPECT_THAT(open(Data(xml.begin(), xml.end())), HasSubstr("bplist00"));
    EXPECT_THAT(open(Data(100, 0)), HasSubstr("bplist00"));
    EXPECT_THAT(open(noDictionary), HasSubstr("no keyed archive"));
    EXPECT_THAT(open(noArchive), HasSubstr("$archiver"));
}

TEST(KeyedUnarchiver, anotherArchiverOrVersionIsNamed)
{
    const auto open = [](const std::string &archiver, std::int64_t version) {
        BinaryPropertyListWriter writer;
        const std::vector<BinaryPropertyListWriter::Ref> keys{
            writer.addString("$archiver"), writer.addString("$version"), writer.addString("$top"),
            writer.addString("$objects")};
        const std::vector<BinaryPropertyListWriter::Ref> values{
            writer.addString(archiver), writer.addInt(version), writer.addDictionary({}, {}),
            writer.addArray({})};
        const Data bytes = writer.finish(writer.addDictionary(keys, values));
        return reasonOf([&] { const KeyedUnarchiver unarchiver(bytes, classes()); });
    };

    EXPECT_THAT(open("OtherArchiver", 100000), HasSubstr("OtherArchiver"));
    EXPECT_THAT(open("NSKeyedArchiver", 7), HasSubstr("version 7"));
    EXPECT_EQ(open("NSKeyedArchiver", 100000), "nothing was thrown");
}

TEST(KeyedUnarchiver, aReferencePastTheObjectsIsRefused)
{
    HandMadeArchive archive;
    const auto stray = archive.uid(99);
    KeyedUnarchiver unarchiver(archive.finish({{"stray", stray}}), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeNode("stray"); }), HasSubstr("object 99"));
}

TEST(KeyedUnarchiver, aDictionaryWithAnotherKeyThanAStringIsRefused)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSDictionary");
    const auto number = archive.addObject(archive.writer().addInt(3));
    const auto map = archive.addObject(archive.dictionary({
        {"NS.keys", archive.uidList({number})},
        {"NS.objects", archive.uidList({number})},
        {"$class", archive.uid(classUid)},
    }));
    const auto mapRef = archive.uid(map);
    KeyedUnarchiver unarchiver(archive.finish({{"map", mapRef}}), classes());
    const auto node = unarchiver.decodeNode("map");
    ASSERT_TRUE(node);

    EXPECT_THAT(reasonOf([&] { (void)node->find("3"); }), HasSubstr("a number as a key"));
}

TEST(KeyedUnarchiver, aDictionaryWithMoreKeysThanValuesIsRefused)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSMutableDictionary");
    const auto key = archive.addObject(archive.writer().addString("key"));
    const auto map = archive.addObject(archive.dictionary({
        {"NS.keys", archive.uidList({key, key})},
        {"NS.objects", archive.uidList({key})},
        {"$class", archive.uid(classUid)},
    }));
    const auto mapRef = archive.uid(map);
    KeyedUnarchiver unarchiver(archive.finish({{"map", mapRef}}), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeNode("map"); }),
                HasSubstr("2 keys and 1 values"));
}

TEST(KeyedUnarchiver, anObjectWithoutAClassIsRefused)
{
    HandMadeArchive archive;
    const auto bare = archive.addObject(archive.dictionary({}));
    const auto bareRef = archive.uid(bare);
    KeyedUnarchiver unarchiver(archive.finish({{"bare", bareRef}}), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeNode("bare"); }), HasSubstr("$class"));
}

TEST(KeyedUnarchiver, anObjectThatContainsItselfIsRefused)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("Link");
    const auto first = archive.addObject(0);
    const auto second = archive.addObject(0);
    archive.setObject(first, archive.dictionary({{"next", archive.uid(second)},
                                                 {"$class", archive.uid(classUid)}}));
    archive.setObject(second, archive.dictionary({{"next", archive.uid(first)},
                                                  {"$class", archive.uid(classUid)}}));
    const auto firstRef = archive.uid(first);
    KeyedUnarchiver unarchiver(archive.finish({{"chain", firstRef}}), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("chain"); }),
                HasSubstr("contains itself"));
}

TEST(KeyedUnarchiver, aCircleThatAnArchiverWroteIsRefusedToo)
{
    const auto first = std::make_shared<Link>("first", nullptr);
    const auto second = std::make_shared<Link>("second", first);
    first->next = second;
    KeyedArchiver archiver;
    archiver.encodeObject("chain", first);
    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    first->next.reset();

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("chain"); }),
                HasSubstr("contains itself"));
}

std::size_t walk(const ArchiveNode &node)
{
    std::size_t visits = 1;
    for (std::size_t i = 0; node.isArray() && i < node.size(); ++i) {
        if (const auto child = node.at(i)) {
            visits += walk(*child);
        }
    }
    return visits;
}

TEST(KeyedUnarchiver, aListThatContainsItselfEndsAtTheDepthLimit)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSMutableArray");
    const auto list = archive.addObject(0);
    archive.setObject(list, archive.array({list}, classUid));
    const auto listRef = archive.uid(list);
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes());
    const auto node = unarchiver.decodeNode("list");
    ASSERT_TRUE(node);

    EXPECT_THAT(reasonOf([&] { (void)walk(*node); }), HasSubstr("128 deep"));
}

TEST(KeyedUnarchiver, aHundredThousandListsInEachOtherEndAtTheDepthLimit)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSArray");
    auto inner = archive.addObject(archive.array({}, classUid));
    for (int i = 0; i < 100000; ++i) {
        inner = archive.addObject(archive.array({inner}, classUid));
    }
    const auto listRef = archive.uid(inner);
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes());
    const auto node = unarchiver.decodeNode("list");
    ASSERT_TRUE(node);

    EXPECT_THAT(reasonOf([&] { (void)walk(*node); }), HasSubstr("128 deep"));
}

TEST(KeyedUnarchiver, aHundredThousandObjectsInEachOtherEndAtTheDepthLimit)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("Link");
    std::uint32_t inner = 0;
    for (int i = 0; i < 100000; ++i) {
        inner = archive.addObject(
            archive.dictionary({{"next", archive.uid(inner)}, {"$class", archive.uid(classUid)}}));
    }
    const auto chainRef = archive.uid(inner);
    KeyedUnarchiver unarchiver(archive.finish({{"chain", chainRef}}), classes());

    EXPECT_THAT(reasonOf([&] { (void)unarchiver.decodeObject("chain"); }), HasSubstr("128 deep"));
}

TEST(KeyedUnarchiver, listsThatDoubleAtEachLevelAreGivenUp)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSArray");
    auto inner = archive.addObject(archive.array({}, classUid));
    for (int i = 0; i < 60; ++i) {
        inner = archive.addObject(archive.array({inner, inner}, classUid));
    }
    const auto listRef = archive.uid(inner);
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes());
    const auto node = unarchiver.decodeNode("list");
    ASSERT_TRUE(node);

    EXPECT_THAT(reasonOf([&] { (void)walk(*node); }), HasSubstr("over and over"));
}

TEST(KeyedUnarchiver, oneLongTextInEachPlaceOfALongListIsGivenUp)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSArray");
    const auto text = archive.addObject(archive.writer().addString(std::string(100000, 'x')));
    const auto list =
        archive.addObject(archive.array(std::vector<std::uint32_t>(100000, text), classUid));
    const auto listRef = archive.uid(list);
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes());
    const auto node = unarchiver.decodeNode("list");
    ASSERT_TRUE(node);
    std::size_t total = 0;

    EXPECT_THAT(reasonOf([&] {
                    for (std::size_t i = 0; i < node->size(); ++i) {
                        total += node->at(i)->asString().size();
                    }
                }),
                HasSubstr("over and over"));
    EXPECT_LT(total, 20000000U);
}

TEST(KeyedUnarchiver, aLongListOfOneValueIsReadAsAWhole)
{
    HandMadeArchive archive;
    const auto classUid = archive.addClass("NSArray");
    const auto number = archive.addObject(archive.writer().addInt(7));
    const auto list =
        archive.addObject(archive.array(std::vector<std::uint32_t>(100000, number), classUid));
    const auto listRef = archive.uid(list);
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes());
    const auto node = unarchiver.decodeNode("list");
    ASSERT_TRUE(node);

    EXPECT_EQ(walk(*node), 100001U);
}

TEST(KeyedUnarchiver, aFileThatIsCutOffAnywhereIsRefused)
{
    const Data whole = samples::strokesArchive(2, 3);
    ASSERT_EQ(samples::readStrokes(whole), 6U);

    for (std::size_t length = 0; length < whole.size(); ++length) {
        const Data part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_THROW((void)samples::readStrokes(part), Exception) << "after " << length << " bytes";
    }
}

/// Reads a damaged archive; true when it was readable nevertheless.
bool isReadable(const Data &bytes, std::size_t *points)
{
    try {
        *points = samples::readStrokes(bytes);
        return true;
    } catch (const Exception &) {
        return false;
    }
}

TEST(KeyedUnarchiver, everySingleDamagedByteEndsInAnExceptionOrAReadableArchive)
{
    const Data whole = samples::strokesArchive(2, 3);
    std::size_t refused = 0;

    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const std::uint8_t damage : {0x01, 0x10, 0x80, 0xFF}) {
            Data damaged = whole;
            damaged[i] = static_cast<std::uint8_t>(damaged[i] ^ damage);
            std::size_t points = 0;
            if (!isReadable(damaged, &points)) {
                ++refused;
            } else {
                EXPECT_LE(points, 12U) << "byte " << i;
            }
        }
    }

    EXPECT_GT(refused, whole.size());
}

TEST(KeyedUnarchiver, tensOfThousandsOfRandomDamagesEndInAnExceptionOrAReadableArchive)
{
    const Data whole = samples::strokesArchive(3, 4);
    std::uint64_t state = 0x9E3779B97F4A7C15ULL;
    const auto random = [&state](std::size_t bound) {
        state ^= state << 13U;
        state ^= state >> 7U;
        state ^= state << 17U;
        return static_cast<std::size_t>(state % bound);
    };
    std::size_t refused = 0;

    for (int round = 0; round < 30000; ++round) {
        Data damaged = whole;
        for (std::size_t i = 0, count = 1 + random(8); i < count; ++i) {
            damaged[random(damaged.size())] = static_cast<std::uint8_t>(random(256));
        }
        std::size_t points = 0;
        if (!isReadable(damaged, &points)) {
            ++refused;
        }
        ASSERT_LE(points, 100U);
    }

    EXPECT_GT(refused, 10000U);
}

} // namespace
} // namespace orv::platform
