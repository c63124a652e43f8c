#include "Replay.h"

#include "orv-replay/ReplaySession.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace orv::apps::test {

namespace fs = std::filesystem;

namespace {

std::string temporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "orv-replay-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return pattern;
}

} // namespace

Replay::Replay(const std::string &script) : folder_(temporaryFolder())
{
    std::istringstream in(script);
    std::ostringstream out;
    std::ostringstream errors;
    {
        OutputLines output(out);
        ReplaySession session({folder_ + "/home", folder_ + "/out"}, false, output);
        status_ = runScript(in, "script", session, errors);
    }
    errors_ = errors.str();
    std::istringstream produced(out.str());
    for (std::string line; std::getline(produced, line);) {
        lines_.push_back(Json::parse(line));
    }
}

Replay::~Replay()
{
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::vector<Json> Replay::all(const std::string &kind) const
{
    std::vector<Json> values;
    for (const Json &line : lines_) {
        if (line.contains(kind)) {
            values.push_back(line.at(kind));
        }
    }
    return values;
}

std::vector<std::string> Replay::sent() const
{
    constexpr std::size_t header = 8;
    constexpr std::size_t word = 8;
    std::vector<std::string> records;
    for (const Json &value : all("sent")) {
        const auto digits = value.get<std::string>();
        std::string ext = digits.substr(header + 2 * word);
        while (ext.ends_with("00")) {
            ext.resize(ext.size() - 2);
        }
        records.push_back(digits.substr(header, word) + " " + digits.substr(header + word, word) +
                          (ext.empty() ? "" : " " + ext));
    }
    return records;
}

const Json &Replay::state() const
{
    for (auto line = lines_.rbegin(); line != lines_.rend(); ++line) {
        if (line->contains("state")) {
            return line->at("state");
        }
    }
    throw std::runtime_error("no state was printed: " + errors_);
}

const Json &annotationsOf(const Json &state)
{
    return state.at("canvases").at(0).at("annotations").at("AnnotationModeStandard");
}

} // namespace orv::apps::test
