#pragma once

#include "OrvAnnotation/Records.h"

#include <cstdint>
#include <memory>

namespace orv::apps {

/// Keyboard and mouse of this desktop, moved by a client's records: they reach whatever application
/// they would reach if a hand had done it.
///
/// Thread   one thread at a time.
class DesktopInput {
public:
    /// Where the client's points lie on the X screen, in pixels from its top left corner.
    struct Place {
        int x = 0;
        int y = 0;
        /// How many units of a record's point make a pixel.
        int scale = 1;
    };

    /// Connects to the display that DISPLAY names. Throws `std::runtime_error` with one sentence
    /// when it cannot, or when the X server takes no input from programs.
    explicit DesktopInput(const Place &place);
    ~DesktopInput();
    DesktopInput(const DesktopInput &) = delete;
    DesktopInput &operator=(const DesktopInput &) = delete;

    void setPlace(const Place &place);
    /// Mouse records (0xEFFD) and keyboard records (0xEFFE); others, and numbers that mean nothing,
    /// are ignored.
    void take(const stCommand_mgs &record);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace orv::apps
