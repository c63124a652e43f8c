#include "common/Folders.h"
#include "common/ScriptError.h"
#include "orvane-streamer/Lesson.h"
#include "orvane-streamer/LessonPlayer.h"
#include "orvane-streamer/RecordServer.h"
#include "orvane-streamer/SignalWatch.h"
#include "orvane-streamer/StreamerHost.h"
#include "orvane-streamer/StreamerOptions.h"

#include <fmt/format.h>

#include <csignal>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>

namespace {

using orv::apps::HostSettings;
using orv::apps::Lesson;
using orv::apps::LessonPlayer;
using orv::apps::OptionError;
using orv::apps::RecordServer;
using orv::apps::ScreenLog;
using orv::apps::ScriptError;
using orv::apps::SignalWatch;
using orv::apps::StreamerHost;
using orv::apps::StreamerOptions;

constexpr int kBadCall = 2;

Lesson loadLesson(const StreamerOptions &options)
{
    const std::string path = options.lesson.empty()
                                 ? orv::apps::resourceFolder() + "/lessons/first-lesson.jsonl"
                                 : options.lesson;
    std::ifstream file(path);
    if (!file) {
        throw OptionError("The lesson \"" + path + "\" cannot be read.");
    }
    return orv::apps::readLesson(file, path, options.plugin);
}

int playLesson(const StreamerOptions &options)
{
    Lesson lesson = loadLesson(options);
    SignalWatch signals;
    ScreenLog log;
    StreamerHost host(lesson.host, log);
    LessonPlayer player(std::move(lesson), host, log, orv::apps::plainPath(options.out));
    signals.start([&host] { host.end(); });
    player.start();
    const int status = host.run();
    signals.stop();
    return status == 0 && !player.succeeded() ? 1 : status;
}

int serveClients(const StreamerOptions &options)
{
    SignalWatch signals;
    ScreenLog log;
    HostSettings settings;
    settings.plugin = options.plugin.value_or(static_cast<std::uint16_t>(settings.plugin));
    StreamerHost host(settings, log);
    RecordServer server(
        *options.listen, [&host](const orv::stCommand_mgs &record) { host.give(record); },
        [&log](const std::string &line) { log.write(line); });
    host.setListener([&server](const orv::stCommand_mgs &record) { server.send(record); });
    server.start();
    log.write(fmt::format("listening on 127.0.0.1:{}", server.port()));
    // The reader may wait for the main thread, so that its end is waited for while that one runs.
    signals.start([&host, &server] {
        server.stopReading();
        host.end();
    });
    const int status = host.run();
    signals.stop();
    host.setListener(nullptr);
    return status;
}

int run(std::span<char *const> arguments)
{
    const StreamerOptions options = orv::apps::streamerOptions(arguments);
    if (options.help) {
        std::cout << orv::apps::streamerHelp();
        return 0;
    }
    return options.listen ? serveClients(options) : playLesson(options);
}

} // namespace

int main(int argc, char **argv)
{
    // A reader of the output that has gone must not end the session without saving.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        return run(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
    } catch (const OptionError &error) {
        std::cerr << "orvane-streamer: " << error.what() << '\n';
        return kBadCall;
    } catch (const ScriptError &error) {
        std::cerr << error.what() << '\n';
        return kBadCall;
    } catch (const std::exception &error) {
        std::cerr << "orvane-streamer: " << error.what() << '\n';
        return 1;
    }
}
