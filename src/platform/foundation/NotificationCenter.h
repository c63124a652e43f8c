#pragma once

#include "platform/foundation/UserInfo.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace orv::platform {

/// The process-local notice board: delivers each post to all observers of its name at once.
///
/// Thread   any. Observers run on the posting thread, before `post` returns. An observer may add,
///          remove and post while it runs; one removed during a delivery it still waits for is not
///          called any more.
/// Order    observers of a name are called in the order in which they were added.
class NotificationCenter {
public:
    using Receiver = std::function<void(std::string_view name, const UserInfo &userInfo)>;

    static NotificationCenter &local();

    /// `observer` is only compared; an observer may hold several names, and a name once.
    /// Adding the same pair again replaces the receiver.
    void addObserver(const void *observer, const std::string &name, Receiver receiver);
    /// A pair that was never added is ignored.
    void removeObserver(const void *observer, const std::string &name);
    void removeObserver(const void *observer);
    void post(const std::string &name, const UserInfo &userInfo = {});

private:
    struct Entry {
        const void *observer;
        std::shared_ptr<Receiver> receiver;
    };

    /// The one that stands for the pair now; null when there is none.
    [[nodiscard]] std::shared_ptr<Receiver> receiverOf(const void *observer,
                                                       const std::string &name);

    std::mutex mutex_;
    std::map<std::string, std::vector<Entry>, std::less<>> observers_;
};

} // namespace orv::platform
