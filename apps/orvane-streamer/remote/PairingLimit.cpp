#include "orvane-streamer/remote/PairingLimit.h"

#include <algorithm>

namespace orv::apps {

std::chrono::seconds PairingLimit::waitFor(const std::string &address)
{
    const auto now = clock_();
    while (!wrong_.empty() && now - wrong_.front().time >= period) {
        wrong_.pop_front();
    }
    const auto isOfAddress = [&address](const WrongCode &code) { return code.address == address; };
    const auto ofAddress =
        static_cast<std::size_t>(std::count_if(wrong_.begin(), wrong_.end(), isOfAddress));
    if (ofAddress < mostOfOneAddress && wrong_.size() < mostOfAll) {
        return std::chrono::seconds(0);
    }
    const auto first = ofAddress < mostOfOneAddress
                           ? wrong_.begin()
                           : std::find_if(wrong_.begin(), wrong_.end(), isOfAddress);
    return std::chrono::ceil<std::chrono::seconds>(first->time + period - now);
}

void PairingLimit::noteWrongCode(const std::string &address)
{
    wrong_.push_back({clock_(), address});
    if (wrong_.size() > mostOfAll) {
        wrong_.pop_front();
    }
}

} // namespace orv::apps
