#include "channels/AnnotationToolUtilities.h"

#include <gtest/gtest.h>

namespace orv::test {
namespace {

TEST(ImageKinds, FollowTheExtensionInAnyCase)
{
    const auto kind = [](const char *path) {
        return AnnotationToolUtilities::getImageSaveType(path);
    };
    EXPECT_EQ(kind("/a/b.jpg"), 0);
    EXPECT_EQ(kind("/a/b.JPGE"), 0);
    EXPECT_EQ(kind("/a/b.PnG"), 1);
    EXPECT_EQ(kind("/a/b.bmp"), 2);
    EXPECT_EQ(kind("/a/b.RawBG"), 0);
    EXPECT_EQ(kind("/a/b.gif"), 0);
    EXPECT_EQ(kind("/a.png/b"), 0) << "a folder's point is no extension";
    EXPECT_EQ(kind(""), 0);
}

} // namespace
} // namespace orv::test
