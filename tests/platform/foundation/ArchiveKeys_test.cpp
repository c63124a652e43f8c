#include "platform/foundation/ArchiveSamples.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedArchiver.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orv::platform {
namespace {

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

TEST(ArchiveKeys, thatAnObjectEncodesTwiceAreRefused)
{
    KeyedArchiver archiver;

    EXPECT_THROW(archiver.encodeObject("root", std::make_shared<Twice>()), Exception);
}

} // namespace
} // namespace orv::platform
