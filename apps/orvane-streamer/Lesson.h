#pragma once

#include "OrvAnnotation/Records.h"
#include "common/HostSettings.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orv::apps {

/// A line of text for whoever watches.
struct LessonNote {
    std::string text;
};

/// A picture of the screen; its path, relative to the folder for pictures.
struct LessonScreenshot {
    std::string file;
};

/// What happens at one moment of a lesson.
struct LessonStep {
    /// Seconds since the lesson began.
    double at = 0.0;
    std::variant<stCommand_mgs, LessonNote, LessonScreenshot> action;
};

/// A session script that is played on a real desktop.
struct Lesson {
    HostSettings host;
    /// In the order of their times.
    std::vector<LessonStep> steps;
    /// When it is over, in seconds since it began.
    double seconds = 0.0;
};

/// Reads the whole script. `plugin` stands in for the one that the script names. Throws
/// `ScriptError` as "NAME:LINE: message" for a line that cannot be played.
[[nodiscard]] Lesson readLesson(std::istream &script, const std::string &name,
                                std::optional<std::uint16_t> plugin);

} // namespace orv::apps
