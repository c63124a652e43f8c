#pragma once

#include "orvane-streamer/remote/PageAssets.h"
#include "orvane-streamer/remote/PairedBrowsers.h"
#include "orvane-streamer/remote/PairingLimit.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::apps {

/// What of a request matters; values of headers are empty where there is none.
struct HttpRequest {
    std::string method;
    std::string target;
    /// Every Host header that came.
    std::vector<std::string> hosts;
    std::string origin;
    std::string cookie;
    bool asksForLink = false;
    bool hasBody = false;
    /// The address of the other side, without its port.
    std::string peer;
};

/// What goes back.
struct HttpAnswer {
    unsigned status = 0;
    /// Name and value.
    std::vector<std::pair<std::string, std::string>> headers;
    std::string type;
    std::string body;
    /// The request becomes a WebSocket; status and body do not count.
    bool isLink = false;
};

/// Decides what a browser gets: the page, its cookie, a WebSocket, or a refusal that says why.
///
/// Borrows  all that `Parts` points to.
/// Thread   one at a time.
class HttpAnswers {
public:
    struct Parts {
        const PageAssets *assets = nullptr;
        PairedBrowsers *browsers = nullptr;
        PairingLimit *limit = nullptr;
        /// As it was made.
        std::string pairingCode;
        std::uint16_t port = 0;
        std::string machine;
        /// After each change of the browsers.
        std::function<void()> browsersChanged;
        std::function<void(const std::string &line)> report;
    };

    explicit HttpAnswers(Parts parts) : parts_(std::move(parts)) {}

    [[nodiscard]] HttpAnswer answer(const HttpRequest &request);
    /// For a request that cannot be read, or comes when there is no room; with all the headers of
    /// other answers.
    [[nodiscard]] static HttpAnswer refusal(unsigned status, std::string_view text);

private:
    [[nodiscard]] HttpAnswer pair(const HttpRequest &request, std::string_view code);
    [[nodiscard]] HttpAnswer paired(const HttpRequest &request, std::string_view path);
    [[nodiscard]] HttpAnswer link(const HttpRequest &request);
    /// The token that the request shows, if it is one of a paired browser; empty otherwise.
    [[nodiscard]] std::string knownToken(std::string_view cookies) const;
    [[nodiscard]] std::string cookieName() const;

    Parts parts_;
};

} // namespace orv::apps
