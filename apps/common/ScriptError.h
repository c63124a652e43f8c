#pragma once

#include <stdexcept>

namespace orv::apps {

/// A line of a session script that cannot be carried out; the text names the argument at fault.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace orv::apps
