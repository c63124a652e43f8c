#include "channels/OrvFrameworkLogger.h"
#include "support/VirtualDesk.h"

#include <gmock/gmock.h>

namespace orv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Receiver : public OrvFrameworkLoggerDelegate {
public:
    bool responds = true;
    std::vector<std::string> lines;
    const void *lastSender = nullptr;

    [[nodiscard]] bool respondsToOutputLog() const override { return responds; }
    void logger(const void *sender, std::int32_t level, const std::string &outputLog) override
    {
        lastSender = sender;
        lines.push_back(std::to_string(level) + " " + outputLog);
    }
};

class Logger : public VirtualDesk {
protected:
    Logger() { OrvFrameworkLogger::release(); }
    ~Logger() override { OrvFrameworkLogger::release(); }

    OrvFrameworkLogger &logger = OrvFrameworkLogger::shared();
};

TEST_F(Logger, LevelsHaveTheirNames)
{
    const std::vector<std::string> expected{"DEBUG", "DEBUG", "INFO", "WARN",
                                            "ERROR", "FATAL", "ALL",  "ALL"};
    for (std::uint32_t level = 0; level < expected.size(); ++level) {
        EXPECT_EQ(OrvFrameworkLogger::levelString(level), expected[level]);
    }
}

TEST_F(Logger, AThresholdStopsWhatLiesBelowItAndPassesItsOwnLevel)
{
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.setLevel("OrvAnnotation", 4);

    logger.print("OrvAnnotation", 1, "quiet");
    logger.print("OrvAnnotation", 4, "loud");

    EXPECT_THAT(receiver.lines, ElementsAre("4 -[OrvAnnotation][ERROR] loud"));
}

TEST_F(Logger, AThresholdOfZeroPassesEverything)
{
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.setLevel("OrvAnnotation", 0);

    logger.print("OrvAnnotation", 0, "low");
    logger.print("OrvAnnotation", 6, "high");

    EXPECT_THAT(receiver.lines,
                ElementsAre("0 -[OrvAnnotation][DEBUG] low", "6 -[OrvAnnotation][ALL] high"));
}

TEST_F(Logger, AClassWithoutAThresholdPassesEverything)
{
    EXPECT_EQ(logger.getLevel("Somebody"), 0U);
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.print("Somebody", 0, "hello");
    EXPECT_THAT(receiver.lines, ElementsAre("0 -[Somebody][DEBUG] hello"));
}

TEST_F(Logger, TheDelegateIsItsOwnSenderAndKeepsLinesFromTheSystemLog)
{
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.print("OrvAnnotation", 2, "hello");
    EXPECT_EQ(receiver.lastSender, &receiver);
    EXPECT_THAT(systemLog, IsEmpty());
}

TEST_F(Logger, ADelegateThatDoesNotAnswerCountsAsNone)
{
    Receiver receiver;
    receiver.responds = false;
    logger.setDelegate(&receiver);

    logger.print("OrvAnnotation", 2, "hello");

    EXPECT_THAT(receiver.lines, IsEmpty());
    EXPECT_THAT(systemLog, ElementsAre("-[OrvAnnotation][INFO] hello"));
}

TEST_F(Logger, WithoutADelegateAndStandardOutputALineIsLost)
{
    logger.setStandardOutput(false);
    logger.print("OrvAnnotation", 5, "hello");
    EXPECT_THAT(systemLog, IsEmpty());
}

TEST_F(Logger, TheLongFormNamesTheFunctionAndTheLine)
{
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.print("OrvAnnotation", 3, "hello", "draw", 17);
    EXPECT_THAT(receiver.lines, ElementsAre("3 -[OrvAnnotation][WARN] hello\ndraw (Line 17)"));
}

TEST_F(Logger, AReleasedLoggerStartsAnew)
{
    Receiver receiver;
    logger.setDelegate(&receiver);
    logger.setLevel("OrvAnnotation", 4);
    logger.setStandardOutput(false);

    OrvFrameworkLogger::release();

    EXPECT_EQ(OrvFrameworkLogger::shared().getLevel("OrvAnnotation"), 0U);
    EXPECT_TRUE(OrvFrameworkLogger::shared().standardOutput());
    logLine(1, "hello");
    EXPECT_THAT(systemLog, ElementsAre("-[OrvAnnotation][DEBUG] hello"));
}

} // namespace
} // namespace orv::test
