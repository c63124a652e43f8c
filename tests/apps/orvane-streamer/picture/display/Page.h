#pragma once

#include "apps/orvane-streamer/picture/SeenFrame.h"
#include "orvane-streamer/picture/PictureStream.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace orv::apps::test {

/// One viewer: puts the frames together as the page does, and answers them unless told not to.
///
/// Thread   any; frames come on the stream's.
class Page {
public:
    void take(const std::vector<std::uint8_t> &message,
              const std::function<void(std::uint32_t)> &shown);

    /// Answers nothing from now on, or all that comes.
    void answer(bool answers);

    [[nodiscard]] std::uint32_t at(int x, int y);
    [[nodiscard]] std::size_t frameCount();
    [[nodiscard]] SeenFrame frame(std::size_t index);
    /// The boxes of all frames from this one on, each but once: a box may come again to be refined.
    [[nodiscard]] std::vector<PixelBox> boxesSince(std::size_t index);
    [[nodiscard]] std::vector<std::uint32_t> unanswered();

    /// All of these wait until it is so, and say false when it never is.
    bool comesToShow(int x, int y, std::uint32_t colour, int off = 8);
    bool comesToHave(std::size_t frames);
    /// The whole picture, nowhere coarser than the best.
    bool comesToRest();

private:
    bool waitFor(std::unique_lock<std::mutex> &lock, const std::function<bool()> &isSo);
    void paint(const SeenFrame &frame);

    std::mutex mutex_;
    std::condition_variable came_;
    bool answers_ = true;
    std::vector<SeenFrame> frames_;
    std::vector<std::uint32_t> unanswered_;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
    std::vector<bool> isFine_;
};

} // namespace orv::apps::test
