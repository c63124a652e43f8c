#include "apps/orvane-streamer/picture/display/Page.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orv::apps::test {

namespace {

constexpr std::chrono::seconds kAtLast(60);

} // namespace

void Page::take(const std::vector<std::uint8_t> &message,
                const std::function<void(std::uint32_t)> &shown)
{
    SeenFrame frame = seen(message);
    const std::uint32_t number = frame.frame;
    bool answers = false;
    {
        const std::lock_guard lock(mutex_);
        paint(frame);
        frames_.push_back(std::move(frame));
        answers = answers_;
        if (!answers) {
            unanswered_.push_back(number);
        }
    }
    came_.notify_all();
    if (answers) {
        shown(number);
    }
}

void Page::answer(bool answers)
{
    const std::lock_guard lock(mutex_);
    answers_ = answers;
}

std::uint32_t Page::at(int x, int y)
{
    const std::lock_guard lock(mutex_);
    return pixels_.at(static_cast<std::size_t>(y * width_ + x));
}

std::size_t Page::frameCount()
{
    const std::lock_guard lock(mutex_);
    return frames_.size();
}

SeenFrame Page::frame(std::size_t index)
{
    const std::lock_guard lock(mutex_);
    return frames_.at(index);
}

std::vector<PixelBox> Page::boxesSince(std::size_t index)
{
    const std::lock_guard lock(mutex_);
    std::vector<PixelBox> boxes;
    for (; index < frames_.size(); ++index) {
        const PixelBox &box = frames_[index].box;
        if (std::find(boxes.begin(), boxes.end(), box) == boxes.end()) {
            boxes.push_back(box);
        }
    }
    return boxes;
}

std::vector<std::uint32_t> Page::unanswered()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(unanswered_, {});
}

bool Page::comesToShow(int x, int y, std::uint32_t colour, int off)
{
    std::unique_lock lock(mutex_);
    return waitFor(lock, [&] {
        return x < width_ && y < height_ &&
               isNear(pixels_[static_cast<std::size_t>(y * width_ + x)], colour, off);
    });
}

bool Page::comesToHave(std::size_t frames)
{
    std::unique_lock lock(mutex_);
    return waitFor(lock, [&] { return frames_.size() >= frames; });
}

bool Page::comesToRest()
{
    std::unique_lock lock(mutex_);
    return waitFor(lock, [&] {
        return width_ > 0 && std::find(isFine_.begin(), isFine_.end(), false) == isFine_.end();
    });
}

bool Page::waitFor(std::unique_lock<std::mutex> &lock, const std::function<bool()> &isSo)
{
    return came_.wait_for(lock, kAtLast, isSo);
}

void Page::paint(const SeenFrame &frame)
{
    if (frame.pictureWidth != width_ || frame.pictureHeight != height_) {
        width_ = frame.pictureWidth;
        height_ = frame.pictureHeight;
        const auto count = static_cast<std::size_t>(width_ * height_);
        pixels_.assign(count, 0);
        isFine_.assign(count, false);
    }
    for (int y = frame.box.y; y < frame.box.y + frame.box.height; ++y) {
        for (int x = frame.box.x; x < frame.box.x + frame.box.width; ++x) {
            const auto index = static_cast<std::size_t>(y * width_ + x);
            pixels_.at(index) = frame.at(x, y);
            isFine_.at(index) = frame.hasFineColour;
        }
    }
}

} // namespace orv::apps::test
