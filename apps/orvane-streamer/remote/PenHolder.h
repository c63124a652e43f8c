#pragma once

#include "orvane-streamer/remote/RemoteHost.h"

#include <set>
#include <string>
#include <vector>

namespace orv::apps {

/// A page that has said who it is.
struct RemotePerson {
    ClientID id = 0;
    std::string name;

    friend bool operator==(const RemotePerson &, const RemotePerson &) = default;
};

/// Who is there and who has the pen: the first who comes, until it is passed on.
class PenHolder {
public:
    /// What a step changed, and who must be told.
    struct Step {
        /// Everybody sees the list anew.
        bool listChanged = false;
        /// What the former holder holds down is lifted, before another one may press.
        bool penPassed = false;
        /// 0, or who is to be told that `asker` wants the pen.
        ClientID askedHolder = 0;
        RemotePerson asker;
        /// 0, or who is to be told that the holder keeps it.
        ClientID refused = 0;
    };

    Step come(RemotePerson person);
    Step leave(ClientID id);
    /// A second question waits for the answer to the first.
    Step ask(ClientID id);
    /// These do nothing unless `by` has the pen: it may have lost it while the message came.
    Step give(ClientID by, ClientID to);
    Step refuse(ClientID by, ClientID to);
    Step drop(ClientID by);

    /// 0 for nobody.
    [[nodiscard]] ClientID holder() const { return holder_; }
    [[nodiscard]] std::string holderName() const;
    [[nodiscard]] const std::vector<RemotePerson> &people() const { return people_; }

private:
    [[nodiscard]] const RemotePerson *find(ClientID id) const;
    Step passTo(ClientID id);

    std::vector<RemotePerson> people_;
    ClientID holder_ = 0;
    std::set<ClientID> asking_;
};

} // namespace orv::apps
