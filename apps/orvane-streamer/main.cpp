#include "OrvAnnotation/Version.h"
#include "common/Folders.h"
#include "common/RecordText.h"
#include "common/ScriptError.h"
#include "orvane-streamer/BrowserAddresses.h"
#include "orvane-streamer/Invitation.h"
#include "orvane-streamer/Lesson.h"
#include "orvane-streamer/LessonPlayer.h"
#include "orvane-streamer/RemoteSession.h"
#include "orvane-streamer/SignalWatch.h"
#include "orvane-streamer/StreamerHost.h"
#include "orvane-streamer/StreamerOptions.h"
#include "orvane-streamer/desk/Diagnosis.h"
#include "orvane-streamer/remote/PairingCode.h"

#include <fmt/format.h>

#include <csignal>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>

#include <unistd.h>

namespace {

using orv::apps::HostSettings;
using orv::apps::Lesson;
using orv::apps::LessonPlayer;
using orv::apps::OptionError;
using orv::apps::RemoteSession;
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

/// Throws `std::runtime_error` where overlays cannot be had.
void checkDesktop(ScreenLog &log)
{
    const orv::apps::DesktopFacts facts = orv::apps::readDesktop();
    if (const auto obstacle = orv::apps::obstacle(facts)) {
        throw std::runtime_error(*obstacle);
    }
    if (const auto warning = orv::apps::warning(facts)) {
        log.write(*warning);
    }
}

int playLesson(const StreamerOptions &options)
{
    Lesson lesson = loadLesson(options);
    SignalWatch signals;
    ScreenLog log;
    checkDesktop(log);
    StreamerHost host(lesson.host, log);
    log.write(host.platform().describe());
    host.setListener(
        {[&log](const orv::stCommand_mgs &record) { log.write(orv::apps::recordText(record)); },
         [&log](std::span<const std::uint8_t> package) {
             log.write(fmt::format("a data package of {} bytes", package.size()));
         }});
    LessonPlayer player(std::move(lesson), host, log, orv::apps::plainPath(options.out));
    signals.start([&host] { host.end(); });
    player.start();
    const int status = host.run();
    signals.stop();
    host.setListener({});
    return status == 0 && !player.succeeded() ? 1 : status;
}

std::string browsersFile()
{
    return orv::apps::stateFolder() + "/orvane-streamer/browsers";
}

RemoteSession::Options sessionOptions(const StreamerOptions &options, std::uint16_t plugin)
{
    RemoteSession::Options session;
    session.address = options.address;
    session.port = options.port;
    session.plugin = plugin;
    session.pairingCode = orv::apps::makePairingCode();
    session.assets = orv::apps::resourceFolder() + "/remote";
    session.browsersFile = browsersFile();
    return session;
}

void invite(const StreamerOptions &options, std::uint16_t port, const std::string &pairingCode)
{
    const auto addresses = orv::apps::browserAddresses(options.address, port, pairingCode);
    std::cout << orv::apps::invitation(addresses, orv::apps::isOpenToOthers(options.address),
                                       ::isatty(STDOUT_FILENO) != 0)
              << std::flush;
}

int serve(const StreamerOptions &options)
{
    if (orv::apps::browserAddresses(options.address, 0, "").empty()) {
        throw OptionError("--bind takes an address such as 192.168.1.5 or 0.0.0.0, not \"" +
                          options.address + "\".");
    }
    SignalWatch signals;
    ScreenLog log;
    checkDesktop(log);
    HostSettings settings;
    settings.plugin = options.plugin.value_or(static_cast<std::uint16_t>(settings.plugin));
    StreamerHost host(settings, log);
    const auto wanted = sessionOptions(options, static_cast<std::uint16_t>(settings.plugin));
    RemoteSession session(wanted, host, log);
    session.start();
    invite(options, session.port(), wanted.pairingCode);
    // The record thread may wait for the main thread, so that its end is waited for while that
    // runs.
    signals.start([&host, &session] {
        session.stopReading();
        host.end();
    });
    const int status = host.run();
    signals.stop();
    return status;
}

int forget()
{
    std::filesystem::remove(browsersFile());
    std::cout
        << "Forgotten. A browser needs the pairing code again at the streamer's next start.\n";
    return 0;
}

int diagnose()
{
    const orv::apps::DesktopFacts facts = orv::apps::readDesktop();
    std::cout << orv::apps::diagnosis(facts);
    return orv::apps::obstacle(facts) ? 1 : 0;
}

int run(std::span<char *const> arguments)
{
    const StreamerOptions options = orv::apps::streamerOptions(arguments);
    switch (options.task) {
    case StreamerOptions::Task::help:
        std::cout << orv::apps::streamerHelp();
        return 0;
    case StreamerOptions::Task::version:
        std::cout << "Orvane Streamer with " << OrvAnnotationVersionString << '\n';
        return 0;
    case StreamerOptions::Task::forget:
        return forget();
    case StreamerOptions::Task::diagnose:
        return diagnose();
    case StreamerOptions::Task::demo:
        return playLesson(options);
    case StreamerOptions::Task::serve:
        return serve(options);
    }
    return kBadCall;
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
