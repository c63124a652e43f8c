#include "platform/foundation/ArchiveSamples.h"

#include "platform/foundation/AtomicFile.h"
#include "platform/foundation/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace orv::platform {
namespace {

using samples::classes;
using samples::Stroke;

constexpr std::uint64_t kLimit = 1U << 20U;

struct ScriptResult {
    int status = -1;
    std::string output;
};

/// Runs one of the scripts beside this file with Python; the status is 127 without Python.
ScriptResult runScript(const std::string &script, const std::string &argument)
{
    const std::string command =
        "python3 '" ORV_TEST_SCRIPTS "/" + script + "' '" + argument + "' 2>&1";
    std::FILE *pipe = ::popen(command.c_str(), "r");
    ScriptResult result;
    if (pipe == nullptr) {
        return result;
    }
    std::array<char, 4096> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
        result.output.append(part.data(), count);
    }
    const int status = ::pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

TEST(ArchiveInterchange, pythonsPlistlibSeesTheLayoutOfTheKeyedArchiver)
{
    const samples::TemporaryFolder folder;
    const auto shared = samples::stroke(4, 1);
    KeyedArchiver archiver;
    archiver.encodeString("annotationModeKey", "AnnotationModeStandard");
    archiver.encodeArray("standardAnnotations", [&](ArchiveArray &list) {
        list.addObject(shared);
        list.addObject(samples::stroke(1, 2));
        list.addObject(shared);
    });
    archiver.encodeInt("annotationBackdrop", -7);
    archiver.encodeDouble("ratio", 0.1);
    archiver.encodeString("title", "Stra\xC3\x9F"
                                   "e \xF0\x9F\x96\x8D");
    Data bytes(512);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    archiver.encodeData("data", bytes);
    archiver.encodeString("none", std::nullopt);
    archiver.encodeString("dollar", "$null");
    ASSERT_TRUE(writeFileAtomically(folder.path("ours.dat"), archiver.finishEncoding()));

    const ScriptResult result = runScript("check_archive.py", folder.path("ours.dat"));

    EXPECT_EQ(result.status, 0) << "python3 is needed for this test and said: " << result.output;
    EXPECT_EQ(result.output, "as expected\n");
}

class PythonArchive : public testing::Test {
protected:
    void SetUp() override
    {
        const ScriptResult result = runScript("make_archive.py", folder_.path("theirs.dat"));
        ASSERT_EQ(result.status, 0)
            << "python3 is needed for this test and said: " << result.output;
        const auto bytes = readFile(folder_.path("theirs.dat"), kLimit);
        ASSERT_TRUE(bytes);
        unarchiver_ = std::make_unique<KeyedUnarchiver>(*bytes, classes());
    }

    samples::TemporaryFolder folder_;
    std::unique_ptr<KeyedUnarchiver> unarchiver_;
};

TEST_F(PythonArchive, scalarsAreRead)
{
    EXPECT_EQ(unarchiver_->decodeInt("integer"), -12);
    EXPECT_EQ(unarchiver_->decodeInt("large"), 1099511627776);
    EXPECT_EQ(unarchiver_->decodeDouble("real"), 0.1);
    EXPECT_EQ(unarchiver_->decodeFloat("real"), 0.1F) << "64-bit reals are narrowed";
    EXPECT_TRUE(unarchiver_->decodeBool("bool"));
    EXPECT_TRUE(unarchiver_->containsValueForKey("null"));
    EXPECT_FALSE(unarchiver_->decodeNode("null").has_value());
}

TEST_F(PythonArchive, stringsOfEveryFormAreRead)
{
    EXPECT_EQ(unarchiver_->decodeString("plainString"), "plain");
    EXPECT_EQ(unarchiver_->decodeString("nonAsciiString"), "Stra\xC3\x9F"
                                                           "e \xF0\x9F\x96\x8D");
    EXPECT_EQ(unarchiver_->decodeString("immutableString"), "immutable");
    EXPECT_EQ(unarchiver_->decodeString("mutableString"), "mutable");
    EXPECT_EQ(unarchiver_->decodeString("stringByReference"), "referred");
}

TEST_F(PythonArchive, dataOfEveryFormIsRead)
{
    EXPECT_EQ(unarchiver_->decodeData("immutableData"), (Data{'a', 'b', 'c'}));
    EXPECT_EQ(unarchiver_->decodeData("mutableData"), (Data{'d', 'e', 'f'}));
    EXPECT_EQ(unarchiver_->decodeData("dataByReference"), (Data{'g', 'h', 'i'}));
}

TEST_F(PythonArchive, nestedListsAreRead)
{
    const auto nested = unarchiver_->decodeNode("nested");
    ASSERT_TRUE(nested && nested->size() == 1);

    const auto inner = nested->at(0);

    ASSERT_TRUE(inner && inner->size() == 3);
    EXPECT_EQ(inner->at(0)->asInt(), 1);
    EXPECT_EQ(inner->at(1)->asDouble(), 2.5);
    EXPECT_FALSE(inner->at(2).has_value());
}

TEST_F(PythonArchive, strokesOfMutableAndImmutableFormsAreReadAlike)
{
    const std::vector<samples::Coordinates> points{{1.5, 2.5}, {-3.0, 4.25}};
    for (const std::string key : {"immutable", "mutable"}) {
        const auto list = unarchiver_->decodeNode(key);
        ASSERT_TRUE(list && list->size() == 1) << key;

        const auto stroke = std::dynamic_pointer_cast<Stroke>(list->at(0)->asObject());

        ASSERT_NE(stroke, nullptr) << key;
        EXPECT_EQ(stroke->kind, 2) << key;
        EXPECT_EQ(stroke->width, 7.5F) << key;
        EXPECT_EQ(stroke->isDashed, key == "mutable");
        EXPECT_EQ(stroke->points, points) << key;
    }
}

} // namespace
} // namespace orv::platform
