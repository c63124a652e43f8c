#include "orvane-streamer/remote/PenHolder.h"

#include <gtest/gtest.h>

namespace orv::apps {
namespace {

class PenHolderTest : public ::testing::Test {
protected:
    void threeCome()
    {
        (void)pen.come({1, "Anna"});
        (void)pen.come({2, "Ben"});
        (void)pen.come({3, "Cleo"});
    }
    static bool isNothing(const PenHolder::Step &step)
    {
        return !step.listChanged && !step.penPassed && step.askedHolder == 0 && step.refused == 0;
    }

    PenHolder pen;
};

TEST_F(PenHolderTest, theFirstWhoComesHasIt)
{
    const auto first = pen.come({1, "Anna"});
    const auto second = pen.come({2, "Ben"});

    EXPECT_TRUE(first.penPassed);
    EXPECT_TRUE(first.listChanged);
    EXPECT_FALSE(second.penPassed);
    EXPECT_TRUE(second.listChanged);
    EXPECT_EQ(pen.holder(), 1U);
    EXPECT_EQ(pen.holderName(), "Anna");
    EXPECT_EQ(pen.people(), (std::vector<RemotePerson>{{1, "Anna"}, {2, "Ben"}}));
}

TEST_F(PenHolderTest, theHolderIsAskedOnceUntilItAnswers)
{
    threeCome();

    const auto asked = pen.ask(2);
    EXPECT_EQ(asked.askedHolder, 1U);
    EXPECT_EQ(asked.asker, (RemotePerson{2, "Ben"}));
    EXPECT_TRUE(isNothing(pen.ask(2)));
    EXPECT_EQ(pen.ask(3).askedHolder, 1U);

    EXPECT_EQ(pen.refuse(1, 2).refused, 2U);
    EXPECT_TRUE(isNothing(pen.refuse(1, 2)));
    EXPECT_EQ(pen.ask(2).askedHolder, 1U);
}

TEST_F(PenHolderTest, theHolderGivesIt)
{
    threeCome();
    (void)pen.ask(3);

    const auto given = pen.give(1, 2);

    EXPECT_TRUE(given.penPassed);
    EXPECT_TRUE(given.listChanged);
    EXPECT_EQ(pen.holder(), 2U);
    EXPECT_EQ(pen.ask(3).askedHolder, 2U);
}

TEST_F(PenHolderTest, onlyTheHolderDecides)
{
    threeCome();
    (void)pen.ask(3);

    EXPECT_TRUE(isNothing(pen.give(2, 3)));
    EXPECT_TRUE(isNothing(pen.refuse(2, 3)));
    EXPECT_TRUE(isNothing(pen.drop(2)));
    EXPECT_TRUE(isNothing(pen.give(1, 1)));
    EXPECT_TRUE(isNothing(pen.give(1, 99)));
    EXPECT_TRUE(isNothing(pen.give(1, 0)));
    EXPECT_TRUE(isNothing(pen.refuse(1, 2)));
    EXPECT_TRUE(isNothing(pen.ask(1)));
    EXPECT_TRUE(isNothing(pen.ask(99)));
    EXPECT_EQ(pen.holder(), 1U);
}

TEST_F(PenHolderTest, whatIsLaidDownTheNextWhoAsksGets)
{
    threeCome();

    EXPECT_TRUE(pen.drop(1).penPassed);
    EXPECT_EQ(pen.holder(), 0U);
    EXPECT_EQ(pen.holderName(), "");
    EXPECT_TRUE(isNothing(pen.drop(0)));
    EXPECT_TRUE(isNothing(pen.give(0, 2)));

    const auto taken = pen.ask(3);
    EXPECT_TRUE(taken.penPassed);
    EXPECT_EQ(taken.askedHolder, 0U);
    EXPECT_EQ(pen.holder(), 3U);
}

TEST_F(PenHolderTest, leavingFreesIt)
{
    threeCome();

    EXPECT_FALSE(pen.leave(2).penPassed);
    EXPECT_TRUE(pen.leave(1).penPassed);
    EXPECT_TRUE(isNothing(pen.leave(1)));

    EXPECT_EQ(pen.holder(), 0U);
    EXPECT_EQ(pen.people(), (std::vector<RemotePerson>{{3, "Cleo"}}));
    EXPECT_TRUE(pen.come({4, "Dora"}).penPassed);
}

} // namespace
} // namespace orv::apps
