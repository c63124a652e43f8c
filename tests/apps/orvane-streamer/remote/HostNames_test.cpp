#include "orvane-streamer/remote/HostNames.h"

#include <gtest/gtest.h>

#include <string>

namespace orv::apps {
namespace {

TEST(HostNames, knowsAddressesAndItsOwnNames)
{
    for (const std::string host : {"127.0.0.1", "127.0.0.1:8720", "192.168.1.5:1", "[::1]",
                                   "[::1]:8720", "[fe80::1:2]:65535", "localhost", "LocalHost:80",
                                   "lectern", "LECTERN:8720", "lectern.local:8720"}) {
        EXPECT_TRUE(isHostOfThisMachine(host, "lectern")) << host;
    }
}

TEST(HostNames, knowsNoOtherNames)
{
    for (const std::string host : {"",
                                   ":",
                                   ":80",
                                   "evil.example",
                                   "evil.example:8720",
                                   "lectern.evil.example",
                                   "lecter",
                                   "lectern.local.evil.example",
                                   "127.0.0.1.evil.example",
                                   "127.0.0.1:",
                                   "127.0.0.1:x",
                                   "127.0.0.1:123456",
                                   "127.0.0.1:80:80",
                                   "127.1",
                                   "2130706433",
                                   "0x7f.1",
                                   "::1",
                                   "[::1",
                                   "[::1]x",
                                   "[::1]x80",
                                   "[::1]:",
                                   "[127.0.0.1]",
                                   "[fe80::1%eth0]",
                                   "localhost.",
                                   "localhost:80 evil",
                                   "127.0.0.1 evil",
                                   "user@127.0.0.1"}) {
        EXPECT_FALSE(isHostOfThisMachine(host, "lectern")) << host;
    }
    EXPECT_FALSE(isHostOfThisMachine(std::string("127.0.0.1\0x", 11), "lectern"));
}

TEST(HostNames, aMachineWithoutANameHasNone)
{
    EXPECT_FALSE(isHostOfThisMachine("", ""));
    EXPECT_FALSE(isHostOfThisMachine(".local", ""));
    EXPECT_TRUE(isHostOfThisMachine("localhost", ""));
}

TEST(HostNames, theMachineKnowsItself)
{
    const std::string name = machineName();

    EXPECT_TRUE(name.empty() || isHostOfThisMachine(name, name));
}

} // namespace
} // namespace orv::apps
