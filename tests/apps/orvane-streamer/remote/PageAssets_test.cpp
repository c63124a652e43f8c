#include "orvane-streamer/remote/PageAssets.h"

#include "apps/orvane-streamer/remote/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace orv::apps {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

class PageAssetsTest : public ::testing::Test {
protected:
    [[nodiscard]] PageAssets read() const { return PageAssets(folder.path()); }

    TemporaryFolder folder;
};

TEST_F(PageAssetsTest, haveTheirTypes)
{
    folder.write("index.html", "page");
    folder.write("main.js", std::string("a\0b", 3));
    folder.write("icons.svg", "<svg/>");
    folder.write("remote.webmanifest", "{}");

    const PageAssets assets = read();

    EXPECT_EQ(assets.page().bytes, "page");
    EXPECT_EQ(assets.page().type, "text/html; charset=utf-8");
    EXPECT_EQ(assets.find("main.js")->bytes, std::string("a\0b", 3));
    EXPECT_EQ(assets.find("main.js")->type, "text/javascript; charset=utf-8");
    EXPECT_EQ(assets.find("icons.svg")->type, "image/svg+xml");
    EXPECT_EQ(assets.find("remote.webmanifest")->type, "application/manifest+json");
}

TEST_F(PageAssetsTest, areThoseOfTheFolderWithAKnownKindAlone)
{
    folder.write("index.html", "page");
    folder.write("secret.key", "x");
    folder.write("README", "x");
    std::filesystem::create_directories(folder.path("below.js"));
    folder.write("below.js/inner.js", "x");

    const PageAssets assets = read();

    for (const std::string name :
         {"secret.key", "README", "below.js", "below.js/inner.js", "inner.js", "", "/index.html",
          "INDEX.HTML", "../index.html", "./index.html", "index.html ", "missing.js"}) {
        EXPECT_EQ(assets.find(name), nullptr) << name;
    }
}

TEST_F(PageAssetsTest, stayAsTheyWereAtTheStart)
{
    folder.write("index.html", "page");
    const PageAssets assets = read();

    folder.write("index.html", "changed");

    EXPECT_EQ(assets.page().bytes, "page");
}

TEST_F(PageAssetsTest, theFolderAtFaultIsNamed)
{
    EXPECT_THAT([this] { (void)read(); },
                ThrowsMessage<std::runtime_error>(HasSubstr(folder.path())));
    EXPECT_THAT([this] { PageAssets(folder.path("missing")); },
                ThrowsMessage<std::runtime_error>(HasSubstr(folder.path("missing"))));
}

} // namespace
} // namespace orv::apps
