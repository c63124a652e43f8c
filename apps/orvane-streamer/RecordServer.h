#pragma once

#include "OrvAnnotation/Records.h"
#include "orvane-streamer/FileDescriptor.h"
#include "orvane-streamer/RecordWriter.h"
#include "orvane-streamer/StopSignal.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace orv::apps {

/// Waits on 127.0.0.1 for clients, one at a time, and passes records of 64 bytes both ways.
///
/// Thread   the operations from any; the callbacks come on the server's own reader thread.
/// Fails    a client that leaves, or is too slow to take its records, is reported and gone; the
///          next one may come.
class RecordServer {
public:
    using Handler = std::function<void(const stCommand_mgs &record)>;
    using Report = std::function<void(const std::string &line)>;

    /// Begins to listen; 0 takes any free port. Throws `std::runtime_error` with one sentence.
    RecordServer(std::uint16_t port, Handler handler, Report report);
    /// Stops reading, lets the client have what was sent to it so far, and puts it out.
    ~RecordServer();
    RecordServer(const RecordServer &) = delete;
    RecordServer &operator=(const RecordServer &) = delete;

    [[nodiscard]] std::uint16_t port() const { return port_; }
    /// Lets clients in.
    void start();
    /// No handler runs after this; the client stays and can be sent to. Not from a callback, nor
    /// from a thread that a handler may wait for.
    void stopReading();
    /// To the present client, without waiting; without one the record is lost.
    void send(const stCommand_mgs &record);

private:
    void run();
    void welcome(FileDescriptor client);
    /// How the connection ended, in words; nothing when it was the server that stopped.
    std::optional<std::string> readRecords();
    void bidFarewell(const std::string &end);

    Handler handler_;
    Report report_;
    StopSignal stop_;
    FileDescriptor listener_;
    std::uint16_t port_ = 0;
    FileDescriptor client_;
    std::mutex writerMutex_;
    std::unique_ptr<RecordWriter> writer_;
    std::thread thread_;
};

} // namespace orv::apps
