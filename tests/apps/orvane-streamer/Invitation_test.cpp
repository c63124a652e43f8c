#include "orvane-streamer/Invitation.h"

#include "orvane-streamer/desk/TerminalQr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orv::apps {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(Invitation, NamesTheAddressAndShowsItsCode)
{
    const std::string text = invitation({"http://127.0.0.1:8720/?code=ABC"}, false, true);
    EXPECT_THAT(text, HasSubstr("\n  http://127.0.0.1:8720/?code=ABC\n"));
    EXPECT_THAT(text, HasSubstr(terminalQr("http://127.0.0.1:8720/?code=ABC", true)));
    EXPECT_THAT(text, HasSubstr("Only this machine can reach it."));
    EXPECT_THAT(text, Not(HasSubstr("Or:")));
}

TEST(Invitation, SaysWhatItMeansThatOthersReachIt)
{
    const std::string text = invitation({"http://a/", "http://b/", "http://c/"}, true, false);
    EXPECT_THAT(text, HasSubstr("Or:\n  http://b/\n  http://c/\n"));
    EXPECT_THAT(text, HasSubstr("nothing is encrypted"));
    EXPECT_THAT(text, Not(HasSubstr("Only this machine")));
}

} // namespace
} // namespace orv::apps
