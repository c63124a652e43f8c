#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orv::apps {

/// An area of the X screen in pixels from its top left corner.
struct ScreenArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const ScreenArea &) const = default;
};

/// The live picture of a display, as frames for each viewer: only what changed, only as fast as the
/// viewer takes it, at a quality that falls before the picture comes late.
///
/// Reads the screen through a connection of its own, all windows and overlays included, and does
/// nothing at all while nobody looks on or nothing changes.
///
/// Thread   all operations from any, none waits; the sink is called on the stream's own thread.
class PictureStream {
public:
    using Viewer = std::uint32_t;
    using Message = std::shared_ptr<const std::vector<std::uint8_t>>;
    /// Gets whole picture messages, as they go to the page.
    using Sink = std::function<void(Viewer viewer, Message message)>;
    using Report = std::function<void(const std::string &line)>;

    /// Connects to the display that DISPLAY names. Throws `std::runtime_error` with one sentence when
    /// it cannot, or when the screen has no pixels of 32-bit RGB.
    PictureStream(const ScreenArea &area, Sink sink, Report report);
    ~PictureStream();
    PictureStream(const PictureStream &) = delete;
    PictureStream &operator=(const PictureStream &) = delete;

    /// The viewer gets the whole picture first.
    void join(Viewer viewer);
    void leave(Viewer viewer);
    /// The viewer has drawn the frame.
    void shown(Viewer viewer, std::uint32_t frame);
    /// The display lies elsewhere now; everybody gets a whole picture.
    void setArea(const ScreenArea &area);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv::apps
