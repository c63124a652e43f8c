#include "orvane-streamer/Lesson.h"

#include "common/Arguments.h"
#include "common/ClientRecords.h"
#include "common/Folders.h"
#include "common/ScriptCommand.h"
#include "common/ScriptError.h"
#include "common/TypedText.h"

#include <fmt/format.h>

namespace orv::apps {

namespace {

constexpr double kLongestWait = 86400.0;

/// Puts a script's lines one after the other onto the lesson's time line.
class LessonBuilder {
public:
    explicit LessonBuilder(std::optional<std::uint16_t> plugin) : plugin_(plugin) {}

    void add(const Json &line)
    {
        const std::string command = commandOf(line);
        if (command == "host") {
            addHost(line.at(command));
        } else if (!hasHost_) {
            throw ScriptError("\"host\" must come first");
        } else if (command == "record") {
            addStep(clientRecord(line.at(command), pluginID()));
        } else if (command == "stroke") {
            addRecords(strokeRecords(line.at(command), pluginID()));
        } else if (command == "type") {
            addRecords(typedRecords(line.at(command), pluginID()));
        } else if (command == "wait") {
            addWait(asNumber(line.at(command), command));
        } else if (command == "note") {
            addStep(LessonNote{asText(line.at(command), command)});
        } else if (command == "screenshot") {
            addScreenshot(line);
        } else {
            throw ScriptError(
                fmt::format("\"{}\" has no meaning on a real desktop; there is host, record, "
                            "stroke, type, wait, note and screenshot",
                            command));
        }
    }

    [[nodiscard]] Lesson finish()
    {
        if (!hasHost_) {
            throw ScriptError("no \"host\" line");
        }
        return std::move(lesson_);
    }

private:
    [[nodiscard]] std::uint16_t pluginID() const
    {
        return static_cast<std::uint16_t>(lesson_.host.plugin);
    }

    void addStep(decltype(LessonStep::action) action)
    {
        lesson_.steps.push_back({lesson_.seconds, std::move(action)});
    }

    void addHost(const Json &argument)
    {
        if (hasHost_) {
            throw ScriptError("\"host\" comes once, at the beginning");
        }
        hasHost_ = true;
        lesson_.host = hostSettings(argument);
        lesson_.host.displayID.reset();
        lesson_.host.plugin = plugin_.value_or(pluginID());
    }

    void addRecords(const std::vector<TimedRecord> &records)
    {
        const double start = lesson_.seconds;
        for (const TimedRecord &timed : records) {
            lesson_.seconds = start + timed.seconds;
            addStep(timed.record);
        }
    }

    void addWait(double seconds)
    {
        if (!(seconds >= 0.0 && seconds <= kLongestWait)) {
            throw ScriptError(
                fmt::format("\"wait\" is outside 0 to {}: {}", kLongestWait, seconds));
        }
        lesson_.seconds += seconds;
    }

    void addScreenshot(const Json &line)
    {
        if (member(line, "display") != nullptr) {
            throw ScriptError("\"display\": on a real desktop it is always the main display");
        }
        const std::string file = asText(line.at("screenshot"), "screenshot");
        if (pathBelow("/pictures", file).empty()) {
            throw ScriptError(
                fmt::format(R"("screenshot" is not below the folder for pictures: "{}")", file));
        }
        addStep(LessonScreenshot{file});
    }

    std::optional<std::uint16_t> plugin_;
    bool hasHost_ = false;
    Lesson lesson_;
};

} // namespace

Lesson readLesson(std::istream &script, const std::string &name,
                  std::optional<std::uint16_t> plugin)
{
    ScriptReader reader(script);
    LessonBuilder builder(plugin);
    try {
        while (const auto line = reader.next()) {
            builder.add(*line);
        }
        return builder.finish();
    } catch (const ScriptError &error) {
        throw ScriptError(fmt::format("{}:{}: {}", name, reader.lineNumber(), error.what()));
    }
}

} // namespace orv::apps
