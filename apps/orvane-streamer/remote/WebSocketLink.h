#pragma once

#include "orvane-streamer/remote/ConnectionCount.h"
#include "orvane-streamer/remote/PageLink.h"

#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>

#include <string>
#include <utility>
#include <vector>

namespace orv::apps {

/// The request with which a page asks for its WebSocket, and what the answer says beside it.
struct LinkRequest {
    boost::beast::http::request<boost::beast::http::empty_body> request;
    std::vector<std::pair<std::string, std::string>> headers;
    std::string peer;
};

/// Makes a link of the connection, which keeps itself alive until it has ended.
///
/// Borrows  the user.
void openLink(boost::beast::tcp_stream stream, LinkRequest request, ConnectionCount::Slot slot,
              PageLinkUser &user);

} // namespace orv::apps
