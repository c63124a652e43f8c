#include "platform/foundation/ArchiveSamples.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orv::platform {
namespace {

using testing::ElementsAre;

/// An object with one key too many.
class Twice : public Archivable {
public:
    [[nodiscard]] std::vector<std::string> archiveClassNames() const override { return {"Twice"}; }
    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeInt("again", 1);
        coder.encodeInt("again", 2);
    }
};

TEST(ArchiveKeys, ofEachDictionaryInAListAreItsOwn)
{
    const std::vector<std::vector<std::string>> lists{
        {"type", "size"}, {"size", "type"},        {"tint", "size"}, {"type", "size"}, {},
        {"type"},         {"type", "size", "tint"}};
    KeyedArchiver archiver;
    archiver.encodeArray("list", [&lists](ArchiveArray &array) {
        for (const auto &keys : lists) {
            array.addDictionary([&keys](ArchiveDictionary &dictionary) {
                for (const std::string &key : keys) {
                    dictionary.setString(key, "of " + key);
                }
            });
        }
    });

    KeyedUnarchiver unarchiver(archiver.finishEncoding(), samples::classes());
    const auto list = unarchiver.decodeNode("list");

    ASSERT_TRUE(list && list->size() == lists.size());
    for (std::size_t i = 0; i < lists.size(); ++i) {
        EXPECT_EQ(list->at(i)->size(), lists[i].size()) << i;
        for (const std::string &key : lists[i]) {
            const auto value = list->at(i)->find(key);
            ASSERT_TRUE(value) << i << " " << key;
            EXPECT_EQ(value->asString(), "of " + key) << i;
        }
    }
}

TEST(ArchiveKeys, areFoundInADictionaryUnlikeTheOneBefore)
{
    const std::vector<std::vector<std::string>> lists{{"a", "of"},      {"a", "of"}, {"of", "a"},
                                                      {"b", "of"},      {},          {""},
                                                      {"of", "b", "a"}, {"a", "of"}};
    KeyedArchiver archiver;
    archiver.encodeArray("list", [&lists](ArchiveArray &array) {
        for (const auto &keys : lists) {
            array.addDictionary([&keys](ArchiveDictionary &dictionary) {
                for (std::size_t place = 0; place < keys.size(); ++place) {
                    dictionary.setInt(keys[place], static_cast<std::int64_t>(place));
                }
            });
        }
    });
    KeyedUnarchiver unarchiver(archiver.finishEncoding(), samples::classes());
    const auto list = unarchiver.decodeNode("list");
    const auto placesOf = [&list](const std::string &key) {
        std::vector<std::int64_t> places;
        for (std::size_t i = 0; i < list->size(); ++i) {
            const auto place = list->at(i)->find(key);
            places.push_back(place ? place->asInt() : -1);
        }
        return places;
    };

    EXPECT_THAT(placesOf("a"), ElementsAre(0, 0, 1, -1, -1, -1, 2, 0));
    EXPECT_THAT(placesOf("of"), ElementsAre(1, 1, 0, 1, -1, -1, 0, 1));
    EXPECT_THAT(placesOf("b"), ElementsAre(-1, -1, -1, 0, -1, -1, 1, -1));
    EXPECT_THAT(placesOf(""), ElementsAre(-1, -1, -1, -1, -1, 0, -1, -1));
}

TEST(ArchiveKeys, areFoundInAnObjectUnlikeTheOneBefore)
{
    samples::HandMadeArchive archive;
    const auto name = archive.addClass("Number");
    const auto number = [&](std::int64_t value, std::int64_t other, bool isFirst) {
        std::vector<std::pair<std::string, BinaryPropertyListWriter::Ref>> entries{
            {"value", archive.writer().addInt(value)}, {"other", archive.writer().addInt(other)}};
        if (!isFirst) {
            std::swap(entries.front(), entries.back());
        }
        entries.emplace_back("$class", archive.uid(name));
        return archive.addObject(archive.dictionary(entries));
    };
    const std::vector<std::uint32_t> numbers{number(10, 1, true), number(20, 2, false),
                                             number(30, 3, false), number(40, 4, true)};
    const auto list = archive.addObject(archive.array(numbers, archive.addClass("NSArray")));
    const auto listRef = archive.uid(list);
    ClassTable classes;
    std::vector<std::int64_t> values;
    classes.add("Number", [&values](KeyedUnarchiver &coder) {
        values.push_back(coder.decodeInt("value"));
        return nullptr;
    });
    KeyedUnarchiver unarchiver(archive.finish({{"list", listRef}}), classes);

    const auto node = unarchiver.decodeNode("list");
    for (std::size_t i = 0; i < node->size(); ++i) {
        (void)node->at(i)->asObject();
    }

    EXPECT_THAT(values, ElementsAre(10, 20, 30, 40));
}

/// A dictionary's keys are references to strings; an object's are strings, and nothing else.
TEST(ArchiveKeys, ofADictionaryAreNoneOfAnObject)
{
    samples::HandMadeArchive archive;
    auto &writer = archive.writer();
    const auto reference = archive.uid(archive.addObject(writer.addString("key")));
    const std::array keys{reference, writer.addString("$class")};
    const std::array values{writer.addInt(1), archive.uid(archive.addClass("Key"))};
    const auto object = archive.uid(archive.addObject(writer.addDictionary(keys, values)));
    const auto map = archive.uid(archive.addObject(
        archive.dictionary({{"NS.keys", writer.addArray(keys)},
                            {"NS.objects", writer.addArray(values)},
                            {"$class", archive.uid(archive.addClass("NSDictionary"))}})));
    ClassTable classes;
    bool hasKey = true;
    classes.add("Key", [&hasKey](KeyedUnarchiver &coder) {
        hasKey = coder.containsValueForKey("key");
        return nullptr;
    });
    KeyedUnarchiver unarchiver(archive.finish({{"map", map}, {"object", object}}), classes);

    const auto inMap = unarchiver.decodeNode("map")->find("key");
    (void)unarchiver.decodeObject("object");

    ASSERT_TRUE(inMap);
    EXPECT_EQ(inMap->asInt(), 1);
    EXPECT_FALSE(hasKey);
}

/// The first value of the second object stands where the last key of the first one does.
TEST(ArchiveKeys, areNotFoundAmongTheValues)
{
    samples::HandMadeArchive archive;
    const auto name = archive.uid(archive.addClass("Key"));
    const auto key = archive.writer().addString("key");
    const auto full = archive.uid(
        archive.addObject(archive.dictionary({{"a", key}, {"$class", name}, {"key", key}})));
    const auto lacking =
        archive.uid(archive.addObject(archive.dictionary({{"a", key}, {"$class", name}})));
    ClassTable classes;
    std::vector<bool> haveKey;
    classes.add("Key", [&haveKey](KeyedUnarchiver &coder) {
        haveKey.push_back(coder.containsValueForKey("key"));
        return nullptr;
    });
    KeyedUnarchiver unarchiver(archive.finish({{"full", full}, {"lacking", lacking}}), classes);

    (void)unarchiver.decodeObject("full");
    (void)unarchiver.decodeObject("lacking");

    EXPECT_THAT(haveKey, ElementsAre(true, false));
}

TEST(ArchiveKeys, thatAnObjectEncodesTwiceAreRefused)
{
    KeyedArchiver archiver;

    EXPECT_THROW(archiver.encodeObject("root", std::make_shared<Twice>()), Exception);
}

} // namespace
} // namespace orv::platform
