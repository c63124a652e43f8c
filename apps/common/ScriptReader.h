#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <istream>
#include <optional>
#include <string>

namespace orv::apps {

using Json = nlohmann::json;

/// Reads a session script: one JSON object a line; empty lines and lines that begin with "#" do not
/// count as such.
///
/// Borrows  the stream.
/// Fails    `next` throws `ScriptError`; reading can go on with the line after it.
class ScriptReader {
public:
    static constexpr std::size_t longestLine = std::size_t{1} << 22U;
    static constexpr int deepestNesting = 32;

    explicit ScriptReader(std::istream &in) : in_(in) {}

    /// The next line's object; nothing at the end. Throws for a line that is no JSON object, is
    /// longer than `longestLine` bytes or nested deeper than `deepestNesting`.
    [[nodiscard]] std::optional<Json> next();
    /// Of the line that was read last, counted from 1; 0 before the first.
    [[nodiscard]] int lineNumber() const { return lineNumber_; }

private:
    bool readLine();

    std::istream &in_;
    std::string line_;
    int lineNumber_ = 0;
};

} // namespace orv::apps
