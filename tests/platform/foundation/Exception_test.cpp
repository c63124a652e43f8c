#include "platform/foundation/Exception.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace orv::platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(Exception, describesItselfByReasonAndCallStack)
{
    const Exception exception("The file \"save.dat\" is cut off.");

    EXPECT_STREQ(exception.what(), "The file \"save.dat\" is cut off.");
    EXPECT_THAT(exception.callStack(), Not(IsEmpty()));
    EXPECT_EQ(exception.description(),
              "The file \"save.dat\" is cut off.\n" + exception.callStack());
}

TEST(Guarded, answersTrueAndReportsNothingWhenAllGoesWell)
{
    std::vector<std::string> reports;
    int runs = 0;

    const bool isDone =
        guarded([&] { ++runs; }, [&](const auto &text) { reports.push_back(text); });

    EXPECT_TRUE(isDone);
    EXPECT_EQ(runs, 1);
    EXPECT_THAT(reports, IsEmpty());
}

TEST(Guarded, reportsTheDescriptionOfAnException)
{
    std::vector<std::string> reports;

    const bool isDone = guarded([] { throw Exception("the reason"); },
                                [&](const auto &text) { reports.push_back(text); });

    EXPECT_FALSE(isDone);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_THAT(reports.front(), StartsWith("the reason\n"));
}

TEST(Guarded, reportsTheMessageOfAForeignException)
{
    std::vector<std::string> reports;

    const bool isDone = guarded([] { throw std::out_of_range("far out"); },
                                [&](const auto &text) { reports.push_back(text); });

    EXPECT_FALSE(isDone);
    EXPECT_THAT(reports, ElementsAre("far out"));
}

TEST(Guarded, reportsWhatIsNoException)
{
    std::vector<std::string> reports;

    const bool isDone =
        guarded([] { throw 7; }, [&](const std::string &text) { reports.push_back(text); });

    EXPECT_FALSE(isDone);
    EXPECT_THAT(reports, testing::ElementsAre("an exception of an unknown type"));
}

TEST(Guarded, dropsWhatItsReceiverThrows)
{
    const bool isDone = guarded([] { throw Exception("the reason"); },
                                [](const std::string &) { throw Exception("of the receiver"); });

    EXPECT_FALSE(isDone);
}

} // namespace
} // namespace orv::platform
