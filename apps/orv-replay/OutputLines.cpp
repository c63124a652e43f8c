#include "orv-replay/OutputLines.h"

namespace orv::apps {

void OutputLines::write(const char *kind, const OutputJson &value)
{
    const OutputJson line{{"time", clock_ ? clock_() : 0.0}, {kind, value}};
    out_ << line.dump(-1, ' ', false, OutputJson::error_handler_t::replace) << '\n';
}

} // namespace orv::apps
