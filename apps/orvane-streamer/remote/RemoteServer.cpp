#include "orvane-streamer/remote/RemoteServer.h"

#include "orvane-streamer/remote/BrowsersFile.h"
#include "orvane-streamer/remote/HostNames.h"
#include "orvane-streamer/remote/Network.h"
#include "orvane-streamer/remote/RemoteRoom.h"

#include <chrono>
#include <future>
#include <mutex>
#include <utility>

namespace orv::apps {

namespace {

using std::chrono::steady_clock;
using std::chrono::system_clock;

// How long the pages may take for what they are told at the end.
constexpr std::chrono::milliseconds kFarewell{1000};

} // namespace

class RemoteServer::Impl : private ConnectionUser {
public:
    Impl(Options options, RemoteHost &host);
    ~Impl() override;

    [[nodiscard]] std::uint16_t port() const { return network_.port(); }
    void start();
    void stopReading();
    /// Runs the task with the room, on the network thread.
    void withRoom(std::function<void(RemoteRoom &room)> task)
    {
        network_.post([this, task = std::move(task)] { task(room_); });
    }

private:
    HttpAnswer answer(const HttpRequest &request) override { return answers_.answer(request); }
    bool hasRoomForLink() const override { return !room_.isFull(); }
    void look() override { room_.look(); }
    ClientID linkCame(std::shared_ptr<PageLink> link) override
    {
        return room_.linkCame(std::move(link));
    }
    void textCame(ClientID client, std::string_view text) override { room_.textCame(client, text); }
    void bytesCame(ClientID client, std::span<const std::uint8_t> bytes) override
    {
        room_.bytesCame(client, bytes);
    }
    void linkLost(ClientID client, const std::string &how) override { room_.linkLost(client, how); }

    Options options_;
    PageAssets assets_;
    BrowsersFile browsersFile_;
    PairedBrowsers browsers_;
    PairingLimit limit_;
    RecordFeed feed_;
    RemoteRoom room_;
    Network network_;
    HttpAnswers answers_;
    std::mutex stateMutex_;
    bool isStarted_ = false;
    bool isStopped_ = false;
};

RemoteServer::Impl::Impl(Options options, RemoteHost &host)
    : options_(std::move(options)), assets_(options_.assets),
      browsersFile_(options_.browsersFile, options_.report),
      browsers_(&system_clock::now, browsersFile_.load()), limit_(&steady_clock::now),
      feed_(host, [this] { withRoom([](RemoteRoom &room) { room.resumeReading(); }); }),
      room_({options_.plugin, options_.display, &steady_clock::now, options_.report}, host, feed_),
      network_(options_.address, options_.port, *this),
      answers_({&assets_, &browsers_, &limit_, options_.pairingCode, network_.port(), machineName(),
                [this] { browsersFile_.save(browsers_.all()); }, options_.report})
{
}

RemoteServer::Impl::~Impl()
{
    stopReading();
    network_.finish([this] { room_.sayFarewell(); }, kFarewell);
    room_.forgetAll();
}

void RemoteServer::Impl::start()
{
    const std::lock_guard lock(stateMutex_);
    if (!isStarted_ && !isStopped_) {
        isStarted_ = true;
        feed_.start();
        network_.start();
    }
}

void RemoteServer::Impl::stopReading()
{
    const std::lock_guard lock(stateMutex_);
    if (std::exchange(isStopped_, true) || !isStarted_) {
        return;
    }
    std::promise<void> stopped;
    withRoom([&stopped](RemoteRoom &room) {
        room.stopReading();
        stopped.set_value();
    });
    stopped.get_future().wait();
    feed_.stop();
}

RemoteServer::RemoteServer(Options options, RemoteHost &host)
    : impl_(std::make_unique<Impl>(std::move(options), host))
{
}

RemoteServer::~RemoteServer() = default;

std::uint16_t RemoteServer::port() const
{
    return impl_->port();
}

void RemoteServer::start()
{
    impl_->start();
}

void RemoteServer::stopReading()
{
    impl_->stopReading();
}

void RemoteServer::send(const stCommand_mgs &record)
{
    impl_->withRoom([record](RemoteRoom &room) { room.send(record); });
}

void RemoteServer::sendPackage(std::vector<std::uint8_t> package)
{
    package.insert(package.begin(), message_kind::package);
    auto message = std::make_shared<const std::vector<std::uint8_t>>(std::move(package));
    impl_->withRoom([message](RemoteRoom &room) { room.sendPackage(message); });
}

void RemoteServer::sendPicture(ClientID client, RemoteMessage frame)
{
    impl_->withRoom(
        [client, frame = std::move(frame)](RemoteRoom &room) { room.sendPicture(client, frame); });
}

void RemoteServer::setDisplay(const RemoteDisplay &display)
{
    impl_->withRoom([display](RemoteRoom &room) { room.setDisplay(display); });
}

} // namespace orv::apps
