#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orv::apps {

/// A browser that showed the pairing code, as it is remembered.
struct PairedBrowser {
    /// 192 random bits as 48 hexadecimal digits.
    std::string token;
    std::chrono::system_clock::time_point expires;
};

/// The browsers that were paired in the last twelve hours, known by a token of their own.
///
/// Thread   one at a time.
class PairedBrowsers {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    static constexpr std::chrono::hours lifetime{12};
    static constexpr std::size_t most = 64;

    /// Drops of `known` what no pairing can have made, and what is over.
    PairedBrowsers(Clock clock, std::vector<PairedBrowser> known);

    /// A new token; the one that ends first makes room for it. Throws `std::runtime_error` when the
    /// system gives no random numbers.
    std::string add();
    /// The token is good for twelve hours from now. Nothing happens for one that is not known.
    void renew(std::string_view token);
    [[nodiscard]] bool isKnown(std::string_view token) const;
    /// Those that are not over.
    [[nodiscard]] std::vector<PairedBrowser> all() const;

private:
    [[nodiscard]] bool isCurrent(const PairedBrowser &browser) const;

    Clock clock_;
    std::vector<PairedBrowser> browsers_;
};

} // namespace orv::apps
