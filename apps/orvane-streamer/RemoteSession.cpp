#include "orvane-streamer/RemoteSession.h"

#include "orvane-streamer/StreamerOptions.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace orv::apps {

namespace {

// A tablet's pen is finer than the pixels of the display; eight steps a pixel are as fine as any.
constexpr int kFinestScale = 8;
// A point's halves are packed into 16 bits each.
constexpr int kLargestPoint = std::numeric_limits<std::uint16_t>::max();
// Lots of 1,024 records at most that wait for the main thread.
constexpr int kLotsAhead = 4;

DesktopInput::Place inputPlace(const ScreenArea &area, const RemoteDisplay &picture)
{
    return {area.x, area.y, picture.scale};
}

ScreenDimension clientDimension(const RemoteDisplay &picture)
{
    return {static_cast<double>(picture.width) * picture.scale,
            static_cast<double>(picture.height) * picture.scale};
}

} // namespace

RemoteSession::Geometry RemoteSession::Geometry::of(const DesktopPlatform::Display &display)
{
    const int longer = std::max({display.pixelWidth, display.pixelHeight, 1});
    Geometry geometry;
    geometry.displayID = display.displayID;
    geometry.area = {display.pixelX, display.pixelY, display.pixelWidth, display.pixelHeight};
    geometry.picture = {
        static_cast<std::uint16_t>(display.pixelWidth),
        static_cast<std::uint16_t>(display.pixelHeight),
        static_cast<std::uint16_t>(std::clamp(kLargestPoint / longer, 1, kFinestScale))};
    return geometry;
}

RemoteSession::RemoteSession(const Options &options, StreamerHost &host, ScreenLog &log)
    : host_(host), log_(log),
      pace_([&host](std::function<void()> task) { host.platform().post(std::move(task)); },
            kLotsAhead),
      geometry_(Geometry::of(host.platform().mainDisplay())),
      input_(inputPlace(geometry_.area, geometry_.picture))
{
    host_.setClientDimension(clientDimension(geometry_.picture));
    try {
        server_ = serverOn(options, options.port.value_or(kUsualPort));
    } catch (const std::runtime_error &error) {
        if (options.port) {
            throw;
        }
        log_.write(fmt::format("{} A free port is taken instead.", error.what()));
        server_ = serverOn(options, 0);
    }
    picture_.emplace(
        geometry_.area,
        [this](ClientID client, PictureStream::Message frame) {
            server_->sendPicture(client, std::move(frame));
        },
        [&log](const std::string &line) { log.write(line); });
    host_.setListener({[this](const stCommand_mgs &record) { server_->send(record); },
                       [this](std::span<const std::uint8_t> package) {
                           server_->sendPackage({package.begin(), package.end()});
                       }});
    host_.platform().setDisplaysChanged([this] { displaysChanged(); });
}

RemoteSession::~RemoteSession()
{
    host_.platform().setDisplaysChanged([] {});
    host_.setListener({});
    server_->stopReading();
    picture_.reset();
}

std::unique_ptr<RemoteServer> RemoteSession::serverOn(const Options &options, std::uint16_t port)
{
    RemoteServer::Options server;
    server.address = options.address;
    server.port = port;
    server.assets = options.assets;
    server.pairingCode = options.pairingCode;
    server.browsersFile = options.browsersFile;
    server.plugin = options.plugin;
    server.display = geometry_.picture;
    server.report = [this](const std::string &line) { log_.write(line); };
    RemoteHost &host = *this;
    return std::make_unique<RemoteServer>(std::move(server), host);
}

void RemoteSession::start()
{
    server_->start();
}

void RemoteSession::displaysChanged()
{
    const Geometry geometry = Geometry::of(host_.platform().mainDisplay());
    if (geometry.area.width <= 0 || geometry.area.height <= 0) {
        return;
    }
    {
        const std::lock_guard lock(geometryMutex_);
        newGeometry_ = geometry;
    }
    picture_->setArea(geometry.area);
    server_->setDisplay(geometry.picture);
}

void RemoteSession::follow(const Geometry &geometry)
{
    host_.setDisplay(geometry.displayID);
    host_.setClientDimension(clientDimension(geometry.picture));
    input_.setPlace(inputPlace(geometry.area, geometry.picture));
}

void RemoteSession::recordsArrived(std::span<const stCommand_mgs> records)
{
    std::optional<Geometry> changed;
    {
        const std::lock_guard lock(geometryMutex_);
        changed = std::exchange(newGeometry_, std::nullopt);
    }
    if (changed) {
        follow(*changed);
    }
    for (const stCommand_mgs &record : records) {
        if (record.pluginID == 0) {
            input_.take(record);
        } else {
            host_.give(record);
        }
    }
    pace_.wait();
}

void RemoteSession::penPassed(const std::string &name)
{
    log_.write(name.empty() ? "nobody has the pen" : fmt::format("{} has the pen", name));
    if (!name.empty()) {
        host_.setDeviceName(name);
    }
}

void RemoteSession::clientCame(ClientID client)
{
    picture_->join(client);
}

void RemoteSession::clientLeft(ClientID client)
{
    picture_->leave(client);
}

void RemoteSession::pictureShown(ClientID client, std::uint32_t frame)
{
    picture_->shown(client, frame);
}

} // namespace orv::apps
