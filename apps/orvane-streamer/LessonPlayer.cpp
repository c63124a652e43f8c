#include "orvane-streamer/LessonPlayer.h"

#include "common/Folders.h"

#include <fmt/format.h>

#include <filesystem>
#include <utility>

namespace orv::apps {

LessonPlayer::LessonPlayer(Lesson lesson, StreamerHost &host, ScreenLog &log, std::string pictures)
    : lesson_(std::move(lesson)), host_(host), log_(log), pictures_(std::move(pictures))
{
}

void LessonPlayer::start()
{
    host_.platform().post([this] {
        start_ = std::chrono::steady_clock::now();
        playDue();
    });
}

double LessonPlayer::secondsUntil(double at) const
{
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start_;
    return at - passed.count();
}

void LessonPlayer::playDue()
{
    while (next_ < lesson_.steps.size() && secondsUntil(lesson_.steps[next_].at) <= 0.0) {
        std::visit([this](const auto &action) { play(action); }, lesson_.steps[next_].action);
        ++next_;
    }
    const bool over = next_ == lesson_.steps.size();
    const double left = secondsUntil(over ? lesson_.seconds : lesson_.steps[next_].at);
    if (!over || left > 0.0) {
        host_.platform().after(left, [this] { playDue(); });
        return;
    }
    log_.write("the lesson is over");
    host_.end();
}

void LessonPlayer::play(const stCommand_mgs &record)
{
    host_.give(record);
}

void LessonPlayer::play(const LessonNote &note)
{
    log_.write(note.text);
}

void LessonPlayer::play(const LessonScreenshot &screenshot)
{
    const std::string path = pathBelow(pictures_, screenshot.file);
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    if (host_.platform().writeScreenshot(path)) {
        log_.write("picture of the screen: " + path);
    } else {
        log_.write("the picture cannot be written: " + path);
        succeeded_ = false;
    }
}

} // namespace orv::apps
