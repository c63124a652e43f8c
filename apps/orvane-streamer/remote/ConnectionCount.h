#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace orv::apps {

/// How many connections there are, and how many of them are links.
///
/// Thread   the network thread. Outlives its slots.
class ConnectionCount {
public:
    static constexpr std::size_t most = 256;

    /// One connection's place in the count, given back when it goes.
    class Slot {
    public:
        explicit Slot(ConnectionCount &count) : count_(&count) { ++count.connections_; }
        Slot(Slot &&other) noexcept
            : count_(std::exchange(other.count_, nullptr)), isLink_(other.isLink_)
        {
        }
        Slot &operator=(Slot &&) = delete;
        ~Slot()
        {
            if (count_ != nullptr) {
                count_->giveBack(isLink_);
            }
        }

        void becomeLink()
        {
            isLink_ = true;
            ++count_->links_;
        }

    private:
        ConnectionCount *count_;
        bool isLink_ = false;
    };

    [[nodiscard]] bool isFull() const { return connections_ >= most; }
    /// Calls when there is no link left, which may be at once.
    void whenNoLinks(std::function<void()> call)
    {
        noLinks_ = std::move(call);
        callIfNoLinks();
    }

private:
    void giveBack(bool isLink)
    {
        --connections_;
        links_ -= isLink ? 1 : 0;
        callIfNoLinks();
    }
    void callIfNoLinks() const
    {
        if (links_ == 0 && noLinks_) {
            noLinks_();
        }
    }

    std::size_t connections_ = 0;
    std::size_t links_ = 0;
    std::function<void()> noLinks_;
};

} // namespace orv::apps
