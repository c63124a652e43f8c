#pragma once

#include "apps/orvane-streamer/picture/display/Page.h"
#include "apps/orvane-streamer/picture/display/Painter.h"
#include "orvane-streamer/picture/PictureStream.h"

#include <gtest/gtest.h>

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace orv::apps::test {

/// A window of one colour, the stream of the screen, and two pages that may look on.
class Stage {
public:
    static constexpr PictureStream::Viewer kAnna = 0;
    static constexpr PictureStream::Viewer kBen = 1;
    static constexpr std::uint32_t kGreen = 0x00ff00;
    static constexpr std::uint32_t kRed = 0xff0000;
    static constexpr std::uint32_t kBlue = 0x0000ff;

    explicit Stage(const ScreenArea &area = {0, 0, 1920, 1080})
        : stream(
              area,
              [this](PictureStream::Viewer viewer, const PictureStream::Message &message) {
                  pages.at(viewer).take(*message, [this, viewer](std::uint32_t frame) {
                      stream.shown(viewer, frame);
                  });
              },
              [this](const std::string &line) {
                  const std::lock_guard lock(mutex_);
                  lines_.push_back(line);
                  said_.notify_all();
              })
    {
    }

    /// A green window at 100, 100 of 400 x 300, which all pages show that look on.
    testing::AssertionResult begin(std::initializer_list<PictureStream::Viewer> viewers)
    {
        painter.showWindow(100, 100, 400, 300, kGreen);
        for (const auto viewer : viewers) {
            stream.join(viewer);
        }
        for (const auto viewer : viewers) {
            if (!pages.at(viewer).comesToShow(499, 399, kGreen) ||
                !pages.at(viewer).comesToRest()) {
                return testing::AssertionFailure()
                       << "page " << viewer << " does not show the window";
            }
        }
        return testing::AssertionSuccess();
    }

    /// Waits until the stream has reported so many lines.
    std::vector<std::string> lines(std::size_t count)
    {
        std::unique_lock lock(mutex_);
        said_.wait_for(lock, std::chrono::seconds(60), [&] { return lines_.size() >= count; });
        return lines_;
    }

    Painter painter;
    std::array<Page, 2> pages;
    Page &anna = pages[kAnna];
    Page &ben = pages[kBen];

private:
    std::mutex mutex_;
    std::condition_variable said_;
    std::vector<std::string> lines_;

public:
    PictureStream stream;
};

} // namespace orv::apps::test
