#include "platform/foundation/ArchiveSamples.h"

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace orv::platform {
namespace {

using samples::classes;
using samples::Link;
using samples::stroke;
using samples::Stroke;
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

/// How many values of the list satisfy a test.
template <class Test> std::size_t countOf(const Data &bytes, Test test)
{
    const BinaryPropertyList list(bytes);
    std::size_t count = 0;
    for (BinaryPropertyList::Ref ref = 0; ref < list.size(); ++ref) {
        count += test(list, list.item(ref)) ? 1U : 0U;
    }
    return count;
}

std::size_t countOfText(const Data &bytes, const std::string &text)
{
    return countOf(bytes,
                   [&](const auto &list, const auto &item) { return list.isText(item, text); });
}

TEST(KeyedArchiver, scalarsComeBackAsTheyWere)
{
    KeyedArchiver archiver;
    archiver.encodeInt("zero", 0);
    archiver.encodeInt("byte", 200);
    archiver.encodeInt("short", 40000);
    archiver.encodeInt("word", 3000000000);
    archiver.encodeInt("lowest", std::numeric_limits<std::int64_t>::min());
    archiver.encodeInt("highest", std::numeric_limits<std::int64_t>::max());
    archiver.encodeFloat("float", 0.1F);
    archiver.encodeDouble("double", 0.1);
    archiver.encodeBool("yes", true);
    archiver.encodeBool("no", false);

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());

    EXPECT_EQ(unarchiver.decodeInt("zero"), 0);
    EXPECT_EQ(unarchiver.decodeInt("byte"), 200);
    EXPECT_EQ(unarchiver.decodeInt("short"), 40000);
    EXPECT_EQ(unarchiver.decodeInt("word"), 3000000000);
    EXPECT_EQ(unarchiver.decodeInt("lowest"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(unarchiver.decodeInt("highest"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(unarchiver.decodeFloat("float"), 0.1F);
    EXPECT_EQ(unarchiver.decodeDouble("float"), static_cast<double>(0.1F));
    EXPECT_EQ(unarchiver.decodeDouble("double"), 0.1);
    EXPECT_EQ(unarchiver.decodeFloat("double"), 0.1F);
    EXPECT_TRUE(unarchiver.decodeBool("yes"));
    EXPECT_FALSE(unarchiver.decodeBool("no"));
    EXPECT_TRUE(unarchiver.containsValueForKey("no"));
    EXPECT_FALSE(unarchiver.containsValueForKey("maybe"));
}

TEST(KeyedArchiver, stringsAndDataComeBackAsTheyWere)
{
    const std::vector<std::string> texts{"",
                                         "plain",
                                         "Grüße",
                                         "\xF0\x9F\x96\x8D pen",
                                         std::string("a\0b", 3),
                                         std::string(70000, 'x')};
    const Data data{0, 1, 0xFF, 0x80};
    KeyedArchiver archiver;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        archiver.encodeString("text" + std::to_string(i), texts[i]);
    }
    archiver.encodeString("null", std::nullopt);
    archiver.encodeData("data", data);
    archiver.encodeData("empty", {});

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());

    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(unarchiver.decodeString("text" + std::to_string(i)), texts[i]);
    }
    EXPECT_TRUE(unarchiver.containsValueForKey("null"));
    EXPECT_EQ(unarchiver.decodeString("null"), std::nullopt);
    EXPECT_EQ(unarchiver.decodeString("absent"), std::nullopt);
    EXPECT_EQ(unarchiver.decodeData("data"), data);
    EXPECT_EQ(unarchiver.decodeData("empty"), Data{});
    EXPECT_EQ(unarchiver.decodeData("absent"), std::nullopt);
}

TEST(KeyedArchiver, malformedTextIsStoredWithReplacementCharacters)
{
    KeyedArchiver archiver;
    archiver.encodeString("text", "a\xFFz");

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());

    EXPECT_EQ(unarchiver.decodeString("text"), "a\xEF\xBF\xBDz");
}

TEST(KeyedArchiver, keysThatLookLikeTheArchivesOwnStayApart)
{
    const auto link = std::make_shared<Link>("dollar", nullptr);
    KeyedArchiver archiver;
    archiver.encodeInt("$class", 1);
    archiver.encodeInt("$$class", 2);
    archiver.encodeObject("$top", link);

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());

    EXPECT_EQ(unarchiver.decodeInt("$class"), 1);
    EXPECT_EQ(unarchiver.decodeInt("$$class"), 2);
    EXPECT_EQ(unarchiver.decodeObjectOf<Link>("$top")->name, "dollar");
}

TEST(KeyedArchiver, listsHoldEveryKindOfValue)
{
    KeyedArchiver archiver;
    archiver.encodeArray("list", [](ArchiveArray &list) {
        list.addInt(-7);
        list.addDouble(2.5);
        list.addBool(true);
        list.addString("text");
        list.addString(std::nullopt);
        list.addData(Data{9, 8});
        list.addObject(std::make_shared<Link>("inner", nullptr));
        list.addObject(nullptr);
        list.addArray([](ArchiveArray &inner) { inner.addInt(1); });
        list.addDictionary([](ArchiveDictionary &inner) { inner.setInt("key", 2); });
    });

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    const auto list = unarchiver.decodeNode("list");

    ASSERT_TRUE(list && list->isArray());
    ASSERT_EQ(list->size(), 10U);
    EXPECT_EQ(list->at(0)->asInt(), -7);
    EXPECT_EQ(list->at(1)->asDouble(), 2.5);
    EXPECT_TRUE(list->at(2)->asBool());
    EXPECT_EQ(list->at(3)->asString(), "text");
    EXPECT_FALSE(list->at(4).has_value());
    EXPECT_THAT(list->at(5)->asData(), testing::ElementsAre(9, 8));
    EXPECT_EQ(std::dynamic_pointer_cast<Link>(list->at(6)->asObject())->name, "inner");
    EXPECT_FALSE(list->at(7).has_value());
    EXPECT_EQ(list->at(8)->at(0)->asInt(), 1);
    EXPECT_EQ(list->at(9)->find("key")->asInt(), 2);
}

TEST(KeyedArchiver, dictionariesHoldEveryKindOfValue)
{
    KeyedArchiver archiver;
    archiver.encodeDictionary("map", [](ArchiveDictionary &map) {
        map.setInt("int", 5);
        map.setDouble("double", -0.5);
        map.setBool("bool", false);
        map.setString("string", "s");
        map.setString("nullString", std::nullopt);
        map.setData("data", Data{1});
        map.setObject("object", std::make_shared<Link>("inner", nullptr));
        map.setArray("array", [](ArchiveArray &inner) { inner.addInt(3); });
        map.setDictionary("map", [](ArchiveDictionary &inner) { inner.setInt("deep", 4); });
        map.setInt("$class", 6);
    });

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    const auto map = unarchiver.decodeNode("map");

    ASSERT_TRUE(map && map->isDictionary());
    EXPECT_EQ(map->size(), 10U);
    EXPECT_EQ(map->find("int")->asInt(), 5);
    EXPECT_EQ(map->find("double")->asDouble(), -0.5);
    EXPECT_TRUE(map->find("bool")->isNumber());
    EXPECT_FALSE(map->find("bool")->asBool());
    EXPECT_EQ(map->find("string")->asString(), "s");
    EXPECT_FALSE(map->find("nullString").has_value());
    EXPECT_FALSE(map->find("absent").has_value());
    EXPECT_THAT(map->find("data")->asData(), testing::ElementsAre(1));
    EXPECT_TRUE(map->find("object")->isObject());
    EXPECT_EQ(map->find("array")->at(0)->asInt(), 3);
    EXPECT_EQ(map->find("map")->find("deep")->asInt(), 4);
    EXPECT_EQ(map->find("$class")->asInt(), 6);
}

TEST(KeyedArchiver, aDictionaryOfManyKeysFindsEachOfThem)
{
    constexpr int kCount = 20000;
    KeyedArchiver archiver;
    archiver.encodeDictionary("map", [](ArchiveDictionary &map) {
        for (int i = 0; i < kCount; ++i) {
            map.setInt("key " + std::to_string(i), i);
        }
    });

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    const auto map = unarchiver.decodeNode("map");

    ASSERT_TRUE(map);
    for (int i = 0; i < kCount; ++i) {
        ASSERT_EQ(map->find("key " + std::to_string(i))->asInt(), i);
    }
    EXPECT_FALSE(map->find("key").has_value());
}

TEST(KeyedArchiver, strokesComeBackEqual)
{
    const auto first = stroke(200, 1);
    const auto second = stroke(3, 2);
    KeyedArchiver archiver;
    archiver.encodeArray("list", [&](ArchiveArray &list) {
        list.addObject(first);
        list.addObject(second);
    });

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    const auto list = unarchiver.decodeNode("list");

    ASSERT_TRUE(list);
    ASSERT_EQ(list->size(), 2U);
    const std::vector<std::shared_ptr<Stroke>> written{first, second};
    for (std::size_t i = 0; i < written.size(); ++i) {
        const auto read = std::dynamic_pointer_cast<Stroke>(list->at(i)->asObject());
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(read->kind, written[i]->kind);
        EXPECT_EQ(read->width, written[i]->width);
        EXPECT_EQ(read->isDashed, written[i]->isDashed);
        EXPECT_EQ(read->points, written[i]->points);
    }
}

TEST(KeyedArchiver, anObjectThatIsEncodedTwiceStaysOneObject)
{
    const auto shared = std::make_shared<Link>("shared", nullptr);
    KeyedArchiver archiver;
    archiver.encodeObject("first", std::make_shared<Link>("a", shared));
    archiver.encodeObject("second", std::make_shared<Link>("b", shared));
    archiver.encodeObject("third", shared);
    archiver.encodeObject("twin", std::make_shared<Link>("shared", nullptr));

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), classes());
    const auto first = unarchiver.decodeObjectOf<Link>("first");
    const auto second = unarchiver.decodeObjectOf<Link>("second");
    const auto third = unarchiver.decodeObjectOf<Link>("third");

    EXPECT_EQ(first->next, second->next);
    EXPECT_EQ(first->next, third);
    EXPECT_NE(unarchiver.decodeObjectOf<Link>("twin"), third);
}

TEST(KeyedArchiver, equalLeavesAndClassDescriptionsAreStoredOnce)
{
    constexpr int kCount = 50;
    KeyedArchiver archiver;
    archiver.encodeArray("list", [](ArchiveArray &list) {
        for (int i = 0; i < kCount; ++i) {
            list.addObject(std::make_shared<Link>("one name", nullptr));
            list.addInt(4711);
            list.addDouble(47.11);
            list.addString("one text");
        }
    });
    const Data bytes = archiver.finishEncoding();

    EXPECT_EQ(countOfText(bytes, "one name"), 1U);
    EXPECT_EQ(countOfText(bytes, "one text"), 1U);
    EXPECT_EQ(countOfText(bytes, "Link"), 1U);
    EXPECT_EQ(countOfText(bytes, "$classname"), 1U);
    EXPECT_EQ(countOf(bytes,
                      [](const auto &list, const auto &item) {
                          return item.type == BinaryPropertyList::Type::integer &&
                                 list.integer(item) == 4711;
                      }),
              1U);
    EXPECT_EQ(countOf(bytes,
                      [](const auto &list, const auto &item) {
                          return item.type == BinaryPropertyList::Type::real &&
                                 list.real(item) == 47.11;
                      }),
              1U);
    EXPECT_EQ(countOf(bytes,
                      [](const auto &list, const auto &item) {
                          return item.type == BinaryPropertyList::Type::dictionary &&
                                 list.isText(list.item(list.key(item, 0)), "$classname");
                      }),
              2U)
        << "one description of Link and one of NSArray";
}

TEST(KeyedArchiver, bytesAndValuesGrowWithTheNumberOfPointsAndNoFaster)
{
    // Past 65,536 UIDs, so that all numbers have their final widths.
    const Data once = samples::strokesArchive(200, 200);
    const Data twice = samples::strokesArchive(400, 200);
    const Data thrice = samples::strokesArchive(600, 200);

    const auto firstStep = static_cast<double>(twice.size() - once.size());
    const auto secondStep = static_cast<double>(thrice.size() - twice.size());
    EXPECT_NEAR(secondStep / firstStep, 1.0, 0.05);
    EXPECT_LT(static_cast<double>(thrice.size()) / (600.0 * 200.0), 100.0) << "bytes a point";
    const auto values = [](const Data &bytes) { return BinaryPropertyList(bytes).size(); };
    EXPECT_EQ(values(thrice) - values(twice), values(twice) - values(once));
    // Reading is given up beyond a fixed amount of work for each byte, so it is linear as well.
    EXPECT_EQ(samples::readStrokes(thrice), 600U * 200U);
}

TEST(KeyedArchiver, aKeyThatIsEncodedTwiceIsRefused)
{
    KeyedArchiver archiver;
    archiver.encodeInt("twice", 1);
    archiver.encodeString("once", "x");
    archiver.encodeInt("twice", 2);

    EXPECT_THAT(reasonOf([&] { (void)archiver.finishEncoding(); }), HasSubstr("\"twice\""));
}

TEST(KeyedArchiver, aDictionaryKeyThatIsSetTwiceIsRefused)
{
    KeyedArchiver archiver;

    EXPECT_THAT(reasonOf([&] {
                    archiver.encodeDictionary("map", [](ArchiveDictionary &map) {
                        map.setInt("again", 1);
                        map.setInt("again", 1);
                    });
                }),
                HasSubstr("\"again\""));
}

TEST(KeyedArchiver, afterAFailureNothingHalfWrittenIsHandedOut)
{
    KeyedArchiver archiver;
    EXPECT_THROW(archiver.encodeArray("list", [](ArchiveArray &) { throw Exception("no more"); }),
                 Exception);

    EXPECT_THAT(reasonOf([&] { (void)archiver.finishEncoding(); }),
                HasSubstr("could not be encoded"));
}

TEST(KeyedArchiver, nothingCanFollowTheEnd)
{
    KeyedArchiver archiver;
    archiver.encodeInt("n", 1);
    const Data bytes = archiver.finishEncoding();

    EXPECT_THAT(reasonOf([&] { archiver.encodeInt("late", 1); }), HasSubstr("\"late\""));
    EXPECT_THROW((void)archiver.finishEncoding(), Exception);
    EXPECT_EQ(KeyedUnarchiver(bytes, classes()).decodeInt("n"), 1);
}

TEST(KeyedArchiver, anOuterListIsRefusedWhileAnInnerOneIsFilled)
{
    KeyedArchiver archiver;

    EXPECT_THROW(archiver.encodeArray("list",
                                      [](ArchiveArray &outer) {
                                          outer.addArray(
                                              [&outer](ArchiveArray &) { outer.addInt(1); });
                                      }),
                 Exception);
}

TEST(KeyedArchiver, aKeyCannotBeEncodedIntoAList)
{
    KeyedArchiver archiver;

    EXPECT_THAT(reasonOf([&] {
                    archiver.encodeArray("list",
                                         [&](ArchiveArray &) { archiver.encodeInt("stray", 1); });
                }),
                HasSubstr("\"stray\""));
}

TEST(KeyedArchiver, aChainDeeperThanCanBeReadIsRefused)
{
    const auto chain = [](std::size_t length) {
        std::shared_ptr<Link> head;
        for (std::size_t i = 0; i < length; ++i) {
            head = std::make_shared<Link>(std::to_string(i), head);
        }
        return head;
    };
    KeyedArchiver tooDeep;
    KeyedArchiver deep;
    deep.encodeObject("chain", chain(kMaxArchiveDepth - 1));
    KeyedUnarchiver unarchiver(deep.finishEncoding(), classes());

    EXPECT_THAT(reasonOf([&] { tooDeep.encodeObject("chain", chain(kMaxArchiveDepth)); }),
                HasSubstr("deep"));
    std::size_t length = 0;
    for (auto link = unarchiver.decodeObjectOf<Link>("chain"); link; link = link->next) {
        ++length;
    }
    EXPECT_EQ(length, kMaxArchiveDepth - 1);
}

} // namespace
} // namespace orv::platform
