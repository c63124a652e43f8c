#pragma once

#include "orvane-streamer/Lesson.h"
#include "orvane-streamer/ScreenLog.h"
#include "orvane-streamer/StreamerHost.h"

#include <chrono>
#include <string>

namespace orv::apps {

/// Plays a lesson in real time on the main thread, and ends the host when it is over.
///
/// Borrows  host and log; outlives the host's loop.
/// Thread   main thread.
class LessonPlayer {
public:
    /// `pictures` is the plain path of the folder for pictures.
    LessonPlayer(Lesson lesson, StreamerHost &host, ScreenLog &log, std::string pictures);

    /// Begins as soon as the loop runs.
    void start();
    /// False once a picture could not be written.
    [[nodiscard]] bool succeeded() const { return succeeded_; }

private:
    /// Does all that is due, then asks to be called again.
    void playDue();
    [[nodiscard]] double secondsUntil(double at) const;
    void play(const stCommand_mgs &record);
    void play(const LessonNote &note);
    void play(const LessonScreenshot &screenshot);

    Lesson lesson_;
    StreamerHost &host_;
    ScreenLog &log_;
    std::string pictures_;
    std::size_t next_ = 0;
    bool succeeded_ = true;
    std::chrono::steady_clock::time_point start_;
};

} // namespace orv::apps
