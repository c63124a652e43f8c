#pragma once

#include "OrvAnnotation/Records.h"

#include <cstdint>
#include <span>
#include <string>

namespace orv::apps {

/// Tells one connected page from another; from 1, never used twice.
using ClientID = std::uint32_t;

/// What the server of the remote pages hands on to the host.
///
/// Thread   the first two come on the server's record thread, one at a time and in the order in
///          which the clients sent them; they may wait. The others come on its network thread and
///          must not.
class RemoteHost {
public:
    virtual ~RemoteHost() = default;

    /// Records of the client that holds the pen, in their order.
    virtual void recordsArrived(std::span<const stCommand_mgs> records) = 0;
    /// Another client holds the pen from now on; an empty name when nobody does.
    virtual void penPassed(const std::string &name) = 0;

    /// A page has said who it is and wants pictures.
    virtual void clientCame(ClientID client) = 0;
    virtual void clientLeft(ClientID client) = 0;
    virtual void pictureShown(ClientID client, std::uint32_t frame) = 0;
};

} // namespace orv::apps
