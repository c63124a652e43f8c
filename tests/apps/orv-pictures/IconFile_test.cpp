#include "orv-pictures/IconFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::pictures::test {
namespace {

TEST(IconFileTest, putsMagicAndBigEndianLengthsBeforeTheMembers)
{
    const QByteArray large(300, 'x');

    const QByteArray file = iconFile({{"ic07", "abc"}, {"ic08", large}});

    QByteArray expected("icns\x00\x00\x01\x47"
                        "ic07\x00\x00\x00\x0B"
                        "abc"
                        "ic08\x00\x00\x01\x34",
                        27);
    expected.append(large);
    EXPECT_EQ(file, expected);
}

} // namespace
} // namespace orv::pictures::test
