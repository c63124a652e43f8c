#pragma once

#include "common/ScriptReader.h"

#include <string>
#include <vector>

namespace orv::apps::test {

/// One run of a script in this process, in folders of its own that go with it.
class Replay {
public:
    /// Runs it to its end, or to the line that fails.
    explicit Replay(const std::string &script);
    ~Replay();
    Replay(const Replay &) = delete;
    Replay &operator=(const Replay &) = delete;

    [[nodiscard]] int status() const { return status_; }
    [[nodiscard]] const std::string &errors() const { return errors_; }
    [[nodiscard]] const std::vector<Json> &lines() const { return lines_; }
    /// The values of all lines of a kind, in their order.
    [[nodiscard]] std::vector<Json> all(const std::string &kind) const;
    /// "WPARAM LPARAM EXT" of each sent record, in hexadecimal digits as they stand in the record,
    /// the zeros at the end left out.
    [[nodiscard]] std::vector<std::string> sent() const;
    /// The last "state"; throws when there is none.
    [[nodiscard]] const Json &state() const;
    [[nodiscard]] std::string out(const std::string &file) const
    {
        return folder_ + "/out/" + file;
    }
    [[nodiscard]] std::string home(const std::string &file) const
    {
        return folder_ + "/home/" + file;
    }

private:
    std::string folder_;
    int status_ = 0;
    std::string errors_;
    std::vector<Json> lines_;
};

/// The first canvas's annotations in standard mode.
[[nodiscard]] const Json &annotationsOf(const Json &state);

} // namespace orv::apps::test
