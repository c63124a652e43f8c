#include "orvane-streamer/remote/HttpAnswers.h"

#include "orvane-streamer/remote/HostNames.h"
#include "orvane-streamer/remote/PairingCode.h"
#include "orvane-streamer/remote/Secrets.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace orv::apps {

namespace {

constexpr unsigned kOk = 200;
constexpr unsigned kSeeOther = 303;
constexpr unsigned kBadRequest = 400;
constexpr unsigned kForbidden = 403;
constexpr unsigned kNotFound = 404;
constexpr unsigned kMethodNotAllowed = 405;
constexpr unsigned kContentTooLarge = 413;
constexpr unsigned kUpgradeRequired = 426;
constexpr unsigned kTooManyRequests = 429;

constexpr std::string_view kNotPaired =
    "This address needs the pairing code that Orvane Streamer printed at its start. Open the whole "
    "address, with the code, in this browser.";
constexpr std::string_view kForeignHost =
    "Orvane Streamer does not know itself by this name. Open the address that it printed at its "
    "start.";

void addFixedHeaders(HttpAnswer &answer, std::string_view host)
{
    const std::string socket = host.empty() ? std::string() : fmt::format(" ws://{}", host);
    answer.headers.insert(
        answer.headers.end(),
        {{"Content-Security-Policy",
          fmt::format("default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' "
                      "blob: data:; connect-src 'self'{}; manifest-src 'self'; base-uri 'none'; "
                      "form-action 'none'; frame-ancestors 'none'",
                      socket)},
         {"X-Content-Type-Options", "nosniff"},
         {"X-Frame-Options", "DENY"},
         {"Referrer-Policy", "no-referrer"},
         {"Cache-Control", "no-store"},
         {"Cross-Origin-Opener-Policy", "same-origin"},
         {"Cross-Origin-Resource-Policy", "same-origin"},
         {"Permissions-Policy", "camera=(), microphone=(), geolocation=(), display-capture=(), "
                                "payment=(), usb=()"}});
}

HttpAnswer sentence(unsigned status, std::string_view text)
{
    HttpAnswer answer;
    answer.status = status;
    answer.type = "text/plain; charset=utf-8";
    answer.body = fmt::format("{}\n", text);
    return answer;
}

HttpAnswer file(const PageAsset &asset)
{
    HttpAnswer answer;
    answer.status = kOk;
    answer.type = asset.type;
    answer.body = asset.bytes;
    return answer;
}

HttpAnswer tooManyCodes(std::chrono::seconds wait)
{
    HttpAnswer answer = sentence(
        kTooManyRequests,
        fmt::format("Too many wrong pairing codes. Try again in {} seconds.", wait.count()));
    answer.headers.emplace_back("Retry-After", fmt::format("{}", wait.count()));
    return answer;
}

/// Path and query; nothing for a target that is no path.
std::optional<std::pair<std::string_view, std::string_view>> parted(std::string_view target)
{
    if (!target.starts_with('/')) {
        return std::nullopt;
    }
    const std::size_t mark = target.find('?');
    return mark == std::string_view::npos
               ? std::pair(target, std::string_view())
               : std::pair(target.substr(0, mark), target.substr(mark + 1));
}

/// The value behind "NAME=" among parts that `separator` parts.
std::optional<std::string_view> valueOf(std::string_view list, char separator,
                                        std::string_view name)
{
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(separator), list.size());
        std::string_view part = list.substr(0, end);
        part.remove_prefix(std::min(part.find_first_not_of(' '), part.size()));
        if (part.size() > name.size() && part.starts_with(name) && part[name.size()] == '=') {
            return part.substr(name.size() + 1);
        }
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return std::nullopt;
}

} // namespace

HttpAnswer HttpAnswers::refusal(unsigned status, std::string_view text)
{
    HttpAnswer answer = sentence(status, text);
    addFixedHeaders(answer, "");
    return answer;
}

HttpAnswer HttpAnswers::answer(const HttpRequest &request)
{
    if (request.hosts.size() != 1) {
        return refusal(kBadRequest, "The request does not say whom it is for.");
    }
    const std::string &host = request.hosts.front();
    if (!isHostOfThisMachine(host, parts_.machine)) {
        return refusal(kForbidden, kForeignHost);
    }
    HttpAnswer answer;
    const auto target = parted(request.target);
    if (request.method != "GET" && request.method != "HEAD") {
        answer = sentence(kMethodNotAllowed, "Orvane Streamer answers GET and HEAD alone.");
        answer.headers.emplace_back("Allow", "GET, HEAD");
    } else if (request.hasBody) {
        answer = sentence(kContentTooLarge, "Orvane Streamer takes no content with a request.");
    } else if (!target) {
        answer = sentence(kBadRequest, "The request asks for no path.");
    } else if (const auto code = valueOf(target->second, '&', "code");
               code && target->first == "/") {
        answer = pair(request, *code);
    } else if (knownToken(request.cookie).empty()) {
        answer = sentence(kForbidden, kNotPaired);
    } else {
        answer = paired(request, target->first);
    }
    addFixedHeaders(answer, host);
    return answer;
}

HttpAnswer HttpAnswers::pair(const HttpRequest &request, std::string_view code)
{
    std::string token = knownToken(request.cookie);
    const bool isRight = isSameSecret(normalisedPairingCode(code), parts_.pairingCode);
    if (token.empty()) {
        const auto wait = parts_.limit->waitFor(request.peer);
        if (wait.count() > 0) {
            return tooManyCodes(wait);
        }
    }
    if (!isRight) {
        if (token.empty()) {
            parts_.limit->noteWrongCode(request.peer);
            parts_.report(fmt::format("{} showed a wrong pairing code", request.peer));
        }
        return sentence(kForbidden,
                        "This pairing code is not the one that Orvane Streamer printed at its "
                        "start. It makes a new one each time it starts.");
    }
    if (token.empty()) {
        token = parts_.browsers->add();
        parts_.report(fmt::format("a browser at {} was paired", request.peer));
    } else {
        parts_.browsers->renew(token);
    }
    parts_.browsersChanged();
    HttpAnswer answer = sentence(kSeeOther, "Paired.");
    answer.headers.emplace_back("Location", "/");
    const auto seconds = std::chrono::seconds(PairedBrowsers::lifetime).count();
    answer.headers.emplace_back("Set-Cookie",
                                fmt::format("{}={}; Max-Age={}; Path=/; HttpOnly; SameSite=Lax",
                                            cookieName(), token, seconds));
    return answer;
}

HttpAnswer HttpAnswers::paired(const HttpRequest &request, std::string_view path)
{
    if (path == "/link") {
        return link(request);
    }
    if (path == "/") {
        return file(parts_.assets->page());
    }
    const PageAsset *asset = parts_.assets->find(path.substr(1));
    return asset == nullptr ? sentence(kNotFound, "The remote page has no such part.")
                            : file(*asset);
}

HttpAnswer HttpAnswers::link(const HttpRequest &request)
{
    if (!isSameName(request.origin, "http://" + request.hosts.front())) {
        return sentence(kForbidden, "Only the remote page itself may link to Orvane Streamer.");
    }
    if (!request.asksForLink) {
        HttpAnswer answer = sentence(kUpgradeRequired,
                                     "This part of Orvane Streamer speaks over WebSockets alone.");
        answer.headers.emplace_back("Upgrade", "websocket");
        return answer;
    }
    HttpAnswer answer;
    answer.isLink = true;
    return answer;
}

std::string HttpAnswers::knownToken(std::string_view cookies) const
{
    const auto token = valueOf(cookies, ';', cookieName());
    return token && parts_.browsers->isKnown(*token) ? std::string(*token) : std::string();
}

std::string HttpAnswers::cookieName() const
{
    return fmt::format("orvane-{}", parts_.port);
}

} // namespace orv::apps
