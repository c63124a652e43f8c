#pragma once

#include "orvane-streamer/picture/ScreenArea.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {

/// The live picture of a display, as frames for each viewer: only what changed, only as fast as the
/// viewer takes it, at a quality that falls before the picture comes late.
///
/// Reads the screen through a connection of its own, all windows and overlays included, and does
/// nothing at all while nobody looks on or nothing changes. The pointer is not in the picture.
///
/// Thread   all operations from any, none waits; sink and report are called on the stream's own
///          thread, and not any more once the stream is destroyed. Not to be destroyed there.
class PictureStream {
public:
    using Viewer = std::uint32_t;
    using Message = std::shared_ptr<const std::vector<std::uint8_t>>;
    /// Gets whole picture messages, as they go to the page.
    using Sink = std::function<void(Viewer viewer, Message message)>;
    using Report = std::function<void(const std::string &line)>;

    /// Connects to the display that DISPLAY names. Throws `std::runtime_error` with one sentence
    /// when it cannot, or when the screen has no pixels of 32-bit RGB.
    PictureStream(const ScreenArea &area, Sink sink, Report report);
    ~PictureStream();
    PictureStream(const PictureStream &) = delete;
    PictureStream &operator=(const PictureStream &) = delete;

    /// The viewer gets the whole picture first.
    void join(Viewer viewer);
    /// A frame for the viewer that is being made may still come.
    void leave(Viewer viewer);
    /// The viewer has drawn the frame. Frames that it was not sent are ignored.
    void shown(Viewer viewer, std::uint32_t frame);
    /// The display lies elsewhere now; everybody gets a whole picture. What lies outside the screen
    /// is never sent.
    void setArea(const ScreenArea &area);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv::apps
