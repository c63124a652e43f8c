#include "orvane-streamer/RecordServer.h"

#include "orvane-streamer/RecordAssembler.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <span>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orv::apps {

namespace {

// How long a client may take for what it is told at the end.
constexpr std::chrono::milliseconds kFarewell{1000};

std::string systemError()
{
    return std::system_category().message(errno);
}

sockaddr *asAddress(sockaddr_in &address)
{
    return reinterpret_cast<sockaddr *>(&address);
}

FileDescriptor listenOn(std::uint16_t port)
{
    FileDescriptor listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int on = 1;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    if (!listener || ::setsockopt(listener.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
        ::bind(listener.get(), asAddress(address), sizeof address) != 0 ||
        ::listen(listener.get(), 1) != 0) {
        throw std::runtime_error(
            fmt::format("Cannot listen on 127.0.0.1:{}: {}.", port, systemError()));
    }
    return listener;
}

std::uint16_t portOf(const FileDescriptor &listener)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener.get(), asAddress(address), &size);
    return ntohs(address.sin_port);
}

} // namespace

RecordServer::RecordServer(std::uint16_t port, Handler handler, Report report)
    : handler_(std::move(handler)), report_(std::move(report)), listener_(listenOn(port)),
      port_(portOf(listener_))
{
}

RecordServer::~RecordServer()
{
    stopReading();
    if (writer_) {
        writer_->flush(kFarewell);
    }
}

void RecordServer::start()
{
    thread_ = std::thread([this] { run(); });
}

void RecordServer::stopReading()
{
    stop_.raise();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void RecordServer::send(const stCommand_mgs &record)
{
    const std::lock_guard lock(writerMutex_);
    if (writer_) {
        writer_->offer(record);
    }
}

void RecordServer::run()
{
    while (stop_.waitForInput(listener_.get())) {
        FileDescriptor client(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!client) {
            continue;
        }
        welcome(std::move(client));
        if (const auto end = readRecords()) {
            bidFarewell(*end);
        }
    }
}

void RecordServer::welcome(FileDescriptor client)
{
    const int on = 1;
    ::setsockopt(client.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    report_("a client has come");
    const std::lock_guard lock(writerMutex_);
    client_ = std::move(client);
    writer_ = std::make_unique<RecordWriter>(client_.get());
}

void RecordServer::bidFarewell(const std::string &end)
{
    std::unique_ptr<RecordWriter> writer;
    {
        const std::lock_guard lock(writerMutex_);
        writer = std::move(writer_);
    }
    report_(writer->isOverrun()
                ? fmt::format("the client was too slow to take its records ({} were waiting) and "
                              "is dropped",
                              RecordWriter::mostRecords)
                : end);
    writer.reset();
    client_ = FileDescriptor();
}

std::optional<std::string> RecordServer::readRecords()
{
    constexpr std::size_t chunk = 4096;
    std::array<std::uint8_t, chunk> bytes{};
    RecordAssembler assembler;
    while (stop_.waitForInput(client_.get())) {
        const ssize_t count = ::recv(client_.get(), bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return fmt::format("the client is lost: {}", systemError());
        }
        if (count == 0) {
            return assembler.pending() == 0
                       ? std::string("the client has left")
                       : fmt::format("the client has left in the middle of a record ({} bytes)",
                                     assembler.pending());
        }
        assembler.add(std::span(bytes).first(static_cast<std::size_t>(count)), handler_);
    }
    return std::nullopt;
}

} // namespace orv::apps
