#include "orvane-streamer/StreamerOptions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orv::apps {
namespace {

StreamerOptions optionsOf(std::vector<std::string> words)
{
    std::vector<char *> arguments;
    for (std::string &word : words) {
        arguments.push_back(word.data());
    }
    return streamerOptions(arguments);
}

std::string refusalOf(const std::vector<std::string> &words)
{
    try {
        optionsOf(words);
    } catch (const OptionError &error) {
        return error.what();
    }
    return "taken";
}

using Task = StreamerOptions::Task;

TEST(StreamerOptions, WithoutArgumentsThePageIsServedToThisMachineAlone)
{
    const StreamerOptions options = optionsOf({});
    EXPECT_EQ(options.task, Task::serve);
    EXPECT_EQ(options.address, "127.0.0.1");
    EXPECT_FALSE(options.port);
    EXPECT_FALSE(options.plugin);
}

TEST(StreamerOptions, WhatServesAndWhatPlaysHaveTheirOwnOptions)
{
    const StreamerOptions served =
        optionsOf({"--bind", "0.0.0.0", "--port", "65535", "--plugin", "16"});
    EXPECT_EQ(served.address, "0.0.0.0");
    EXPECT_EQ(served.port, 65535);
    EXPECT_EQ(served.plugin, 16);

    const StreamerOptions played =
        optionsOf({"--lesson", "a.jsonl", "--demo", "--out", "pictures", "--plugin", "12"});
    EXPECT_EQ(played.task, Task::demo);
    EXPECT_EQ(played.lesson, "a.jsonl");
    EXPECT_EQ(played.out, "pictures");
    EXPECT_EQ(played.plugin, 12);

    EXPECT_EQ(refusalOf({"--out", "x"}), "--out goes with --demo.");
    EXPECT_EQ(refusalOf({"--demo", "--bind", "::1"}),
              "--bind is for serving the remote page, and something else was asked for.");
    EXPECT_EQ(refusalOf({"--plugin", "12"}),
              "The remote page speaks for the plug-ins 16, 17 and 18, not for 12.");
}

TEST(StreamerOptions, OneTaskAtATime)
{
    EXPECT_EQ(optionsOf({"--diagnose"}).task, Task::diagnose);
    EXPECT_EQ(optionsOf({"--forget"}).task, Task::forget);
    EXPECT_EQ(optionsOf({"--version"}).task, Task::version);
    EXPECT_EQ(optionsOf({"--demo", "--demo"}).task, Task::demo);
    EXPECT_EQ(refusalOf({"--demo", "--forget"}), "--demo and --forget exclude each other.");
    EXPECT_EQ(optionsOf({"--help", "--nonsense"}).task, Task::help);
}

TEST(StreamerOptions, ANumberIsAWholeNumberOfSixteenBits)
{
    for (const char *text : {"", "-1", "65536", "1x", " 1", "0x10"}) {
        EXPECT_NE(refusalOf({"--port", text}), "taken") << text;
    }
    EXPECT_EQ(refusalOf({"--port"}), "--port needs a value after it.");
    EXPECT_EQ(refusalOf({"--prot", "1"}), "There is no option \"--prot\".");
}

} // namespace
} // namespace orv::apps
