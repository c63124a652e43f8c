#include "common/ScriptReader.h"

#include "common/ScriptError.h"

#include <fmt/format.h>

#include <string_view>

namespace orv::apps {

namespace {

// The parser's messages begin with a code in brackets that says nothing to a reader.
std::string withoutCode(std::string_view message)
{
    const auto end = message.find("] ");
    return std::string(message.starts_with('[') && end != std::string_view::npos
                           ? message.substr(end + 2)
                           : message);
}

Json parse(const std::string &line)
{
    const auto watchDepth = [](int depth, Json::parse_event_t /*event*/, Json & /*parsed*/) {
        if (depth > ScriptReader::deepestNesting) {
            throw ScriptError(
                fmt::format("nested deeper than {} levels", ScriptReader::deepestNesting));
        }
        return true;
    };
    try {
        return Json::parse(line, watchDepth);
    } catch (const Json::exception &error) {
        throw ScriptError("no JSON object: " + withoutCode(error.what()));
    }
}

} // namespace

bool ScriptReader::readLine()
{
    line_.clear();
    std::streambuf &source = *in_.rdbuf();
    constexpr int end = std::streambuf::traits_type::eof();
    int c = source.sbumpc();
    if (c == end) {
        return false;
    }
    ++lineNumber_;
    bool tooLong = false;
    for (; c != end && c != '\n'; c = source.sbumpc()) {
        tooLong = tooLong || line_.size() == longestLine;
        if (!tooLong) {
            line_.push_back(static_cast<char>(c));
        }
    }
    if (tooLong) {
        throw ScriptError(fmt::format("longer than {} bytes", longestLine));
    }
    return true;
}

std::optional<Json> ScriptReader::next()
{
    while (readLine()) {
        const auto first = line_.find_first_not_of(" \t\r");
        if (first == std::string::npos || line_.front() == '#') {
            continue;
        }
        Json object = parse(line_);
        if (!object.is_object()) {
            throw ScriptError(fmt::format("no JSON object but {} {}",
                                          object.is_array() ? "an" : "a", object.type_name()));
        }
        return object;
    }
    return std::nullopt;
}

} // namespace orv::apps
