#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <ostream>

namespace orv::apps {

/// Keeps its keys in the order of their insertion.
using OutputJson = nlohmann::ordered_json;

/// The tool's output: one JSON object a line, each with the virtual time of its event.
///
/// Borrows the stream. Thread: one.
class OutputLines {
public:
    explicit OutputLines(std::ostream &out) : out_(out) {}

    /// Seconds since the start; 0 without a clock.
    void setClock(std::function<double()> clock) { clock_ = std::move(clock); }
    /// {"time": now, KIND: value}. Bytes that are no UTF-8 become replacement characters.
    void write(const char *kind, const OutputJson &value);

private:
    std::ostream &out_;
    std::function<double()> clock_;
};

} // namespace orv::apps
