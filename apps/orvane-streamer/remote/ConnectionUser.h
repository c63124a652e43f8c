#pragma once

#include "orvane-streamer/remote/HttpAnswers.h"
#include "orvane-streamer/remote/PageLink.h"

namespace orv::apps {

/// Whom the network asks for answers and tells of links.
///
/// Thread   the network thread.
class ConnectionUser : public PageLinkUser {
public:
    [[nodiscard]] virtual HttpAnswer answer(const HttpRequest &request) = 0;
    [[nodiscard]] virtual bool hasRoomForLink() const = 0;
    /// About once a second.
    virtual void look() = 0;
};

} // namespace orv::apps
