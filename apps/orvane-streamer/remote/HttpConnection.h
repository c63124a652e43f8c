#pragma once

#include "orvane-streamer/remote/ConnectionCount.h"
#include "orvane-streamer/remote/ConnectionUser.h"

#include <boost/asio/ip/tcp.hpp>

namespace orv::apps {

/// Serves requests on the socket until one is for a WebSocket, or it is over; keeps itself alive.
///
/// Borrows  the user.
void serveHttp(boost::asio::ip::tcp::socket socket, ConnectionCount::Slot slot,
               ConnectionUser &user);

} // namespace orv::apps
