#pragma once

#include "common/ScriptReader.h"
#include "orv-replay/OutputLines.h"
#include "orv-replay/ReplayHost.h"

#include <memory>
#include <ostream>
#include <string>

namespace orv::apps {

/// One run of a script: carries out its lines one after the other.
///
/// Owns     the host, from the "host" line to the end. Borrows the output.
/// Thread   one.
class ReplaySession {
public:
    ReplaySession(ReplayFolders folders, bool quietLog, OutputLines &output)
        : folders_(std::move(folders)), quietLog_(quietLog), output_(output)
    {
    }

    /// Carries out a line and drains the main thread's queue. Throws `ScriptError` or
    /// `platform::Exception` for a line that cannot be carried out, which has then had no effect,
    /// and `std::runtime_error` when output of the library could not be kept.
    void run(const Json &line);

    /// Makes the host. Throws `ScriptError` when there is one.
    void begin(const Json &argument);
    /// There after the "host" line, which comes before all others.
    [[nodiscard]] ReplayHost &host() const { return *host_; }
    [[nodiscard]] OutputLines &output() { return output_; }

private:
    ReplayFolders folders_;
    bool quietLog_;
    OutputLines &output_;
    std::unique_ptr<ReplayHost> host_;
};

/// Runs a whole script. `name` stands before the line number in the message for a line that fails,
/// which goes to `errors`. Answers the program's exit status: 0, 2 for a line that cannot be
/// carried out, 1 when the output could not be kept.
int runScript(std::istream &script, const std::string &name, ReplaySession &session,
              std::ostream &errors);

} // namespace orv::apps
