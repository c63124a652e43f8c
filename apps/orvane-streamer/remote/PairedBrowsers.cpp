#include "orvane-streamer/remote/PairedBrowsers.h"

#include "orvane-streamer/remote/Secrets.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

namespace orv::apps {

namespace {

constexpr std::size_t kTokenBytes = 24;

bool isToken(std::string_view text)
{
    return text.size() == 2 * kTokenBytes &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::string newToken()
{
    std::array<std::uint8_t, kTokenBytes> random{};
    fillWithRandom(random);
    std::string token;
    for (const std::uint8_t byte : random) {
        fmt::format_to(std::back_inserter(token), "{:02x}", byte);
    }
    return token;
}

bool endsFirst(const PairedBrowser &one, const PairedBrowser &other)
{
    return one.expires < other.expires;
}

} // namespace

PairedBrowsers::PairedBrowsers(Clock clock, std::vector<PairedBrowser> known)
    : clock_(std::move(clock)), browsers_(std::move(known))
{
    std::erase_if(browsers_, [this](const PairedBrowser &browser) {
        return !isToken(browser.token) || !isCurrent(browser);
    });
    std::stable_sort(browsers_.begin(), browsers_.end(), endsFirst);
    if (browsers_.size() > most) {
        browsers_.erase(browsers_.begin(), browsers_.end() - most);
    }
}

std::string PairedBrowsers::add()
{
    std::erase_if(browsers_, [this](const PairedBrowser &browser) { return !isCurrent(browser); });
    if (browsers_.size() == most) {
        browsers_.erase(std::min_element(browsers_.begin(), browsers_.end(), endsFirst));
    }
    browsers_.push_back({newToken(), clock_() + lifetime});
    return browsers_.back().token;
}

void PairedBrowsers::renew(std::string_view token)
{
    for (PairedBrowser &browser : browsers_) {
        if (isCurrent(browser) && isSameSecret(browser.token, token)) {
            browser.expires = clock_() + lifetime;
        }
    }
}

bool PairedBrowsers::isKnown(std::string_view token) const
{
    // Goes through all of them, so that the time tells nothing of where a token stands.
    bool known = false;
    for (const PairedBrowser &browser : browsers_) {
        const bool same = isSameSecret(browser.token, token);
        known = (same && isCurrent(browser)) || known;
    }
    return known;
}

std::vector<PairedBrowser> PairedBrowsers::all() const
{
    std::vector<PairedBrowser> current;
    std::copy_if(browsers_.begin(), browsers_.end(), std::back_inserter(current),
                 [this](const PairedBrowser &browser) { return isCurrent(browser); });
    return current;
}

bool PairedBrowsers::isCurrent(const PairedBrowser &browser) const
{
    // One that would last longer than any can was made under another time of day.
    const auto now = clock_();
    return browser.expires > now && browser.expires <= now + lifetime;
}

} // namespace orv::apps
