#include "orvane-streamer/picture/PictureStream.h"

#include "orvane-streamer/FileDescriptor.h"
#include "orvane-streamer/picture/ScreenRounds.h"

#include <sys/eventfd.h>

#include <poll.h>

#include <array>
#include <chrono>
#include <exception>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace orv::apps {

namespace {

using Clock = std::chrono::steady_clock;

timespec untilThen(Clock::time_point then)
{
    const auto left = std::max<Clock::duration>(then - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
}

} // namespace

/// The stream's thread, and what it is asked to do.
class PictureStream::Impl {
public:
    using Task = std::function<void(ScreenRounds &rounds, Clock::time_point now)>;

    Impl(const ScreenArea &area, Sink sink, Report report)
        : rounds_(area, std::move(sink)), report_(std::move(report)),
          wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
        if (!wake_) {
            throw std::runtime_error("The picture's thread cannot be woken.");
        }
        thread_ = std::thread([this] { run(); });
    }
    ~Impl()
    {
        {
            const std::lock_guard lock(mutex_);
            ends_ = true;
        }
        wake();
        thread_.join();
    }
    Impl(const Impl &) = delete;
    Impl &operator=(const Impl &) = delete;

    void post(Task task)
    {
        {
            const std::lock_guard lock(mutex_);
            if (ends_) {
                return;
            }
            tasks_.push_back(std::move(task));
        }
        wake();
    }

private:
    void wake() const { ::eventfd_write(wake_.get(), 1); }

    void run()
    {
        try {
            runRounds();
        } catch (const std::exception &error) {
            report_(error.what());
        }
        const std::lock_guard lock(mutex_);
        ends_ = true;
        tasks_.clear();
    }

    void runRounds()
    {
        if (!rounds_.isTold()) {
            report_("The X server does not tell what changes on its screen: the picture comes five "
                    "times a second at most.");
        }
        while (const auto tasks = takeTasks()) {
            const Clock::time_point now = Clock::now();
            for (const Task &task : *tasks) {
                task(rounds_, now);
            }
            rounds_.run(now);
            if (rounds_.isLost()) {
                report_("The X display is gone: its picture ends here.");
                return;
            }
            wait(rounds_.due());
        }
    }

    /// Nothing when the stream ends.
    std::optional<std::vector<Task>> takeTasks()
    {
        eventfd_t count = 0;
        ::eventfd_read(wake_.get(), &count);
        const std::lock_guard lock(mutex_);
        if (ends_) {
            return std::nullopt;
        }
        return std::exchange(tasks_, {});
    }

    void wait(const std::optional<Clock::time_point> &due) const
    {
        std::array<pollfd, 2> sources{
            {{wake_.get(), POLLIN, 0}, {rounds_.descriptor(), POLLIN, 0}}};
        const timespec left = due ? untilThen(*due) : timespec{};
        ::ppoll(sources.data(), sources.size(), due ? &left : nullptr, nullptr);
    }

    ScreenRounds rounds_;
    Report report_;
    FileDescriptor wake_;
    std::mutex mutex_;
    std::vector<Task> tasks_;
    bool ends_ = false;
    std::thread thread_;
};

PictureStream::PictureStream(const ScreenArea &area, Sink sink, Report report)
    : impl_(std::make_unique<Impl>(area, std::move(sink), std::move(report)))
{
}

PictureStream::~PictureStream() = default;

void PictureStream::join(Viewer viewer)
{
    impl_->post([viewer](ScreenRounds &rounds, auto now) { rounds.join(viewer, now); });
}

void PictureStream::leave(Viewer viewer)
{
    impl_->post([viewer](ScreenRounds &rounds, auto) { rounds.leave(viewer); });
}

void PictureStream::shown(Viewer viewer, std::uint32_t frame)
{
    impl_->post(
        [viewer, frame](ScreenRounds &rounds, auto now) { rounds.shown(viewer, frame, now); });
}

void PictureStream::setArea(const ScreenArea &area)
{
    impl_->post([area](ScreenRounds &rounds, auto now) { rounds.setArea(area, now); });
}

} // namespace orv::apps
