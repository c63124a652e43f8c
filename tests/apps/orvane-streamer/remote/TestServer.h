#pragma once

#include "apps/orvane-streamer/remote/FakeHost.h"
#include "apps/orvane-streamer/remote/TemporaryFolder.h"
#include "orvane-streamer/remote/RemoteServer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orv::apps {

inline constexpr const char *kCode = "0123456789ABCDEF";
inline constexpr std::uint16_t kPlugin = 17;

/// A server on a free port of 127.0.0.1 with a page of its own, a fake host, and its report.
///
/// The report's lines are noted with the host's.
class RemoteServerTest : public ::testing::Test {
protected:
    RemoteServerTest()
    {
        folder.write("index.html", "<!doctype html><title>Remote</title>");
        folder.write("remote.js", "export {};");
        makeServer();
    }
    ~RemoteServerTest() override { host.unblock(); }

    RemoteServer::Options options(std::uint16_t wantedPort = 0)
    {
        RemoteServer::Options wanted;
        wanted.port = wantedPort;
        wanted.assets = folder.path();
        wanted.pairingCode = kCode;
        wanted.browsersFile = browsersFile;
        wanted.plugin = kPlugin;
        wanted.display = {1920, 1080, 8};
        wanted.report = [this](const std::string &line) { host.note(line); };
        return wanted;
    }
    void makeServer(std::uint16_t wantedPort = 0)
    {
        server = std::make_unique<RemoteServer>(options(wantedPort), host);
        server->start();
        port = server->port();
    }
    /// A browser that is paired from here on.
    std::string cookie()
    {
        if (cookie_.empty()) {
            cookie_ = pairedCookie(port, kCode);
        }
        return cookie_;
    }
    /// A page that has been welcomed and knows who is there.
    RawClient page(const std::string &name)
    {
        RawClient client = greeted(port, cookie(), name);
        EXPECT_NE(client.nextText("clients"), "");
        return client;
    }

    TemporaryFolder folder;
    std::string browsersFile;
    FakeHost host;
    std::unique_ptr<RemoteServer> server;
    std::uint16_t port = 0;

private:
    std::string cookie_;
};

/// A record of the library's protocol that can be told from others.
inline stCommand_mgs numbered(std::uint32_t number)
{
    return {kPlugin, 1, 100, number, {}};
}

} // namespace orv::apps
