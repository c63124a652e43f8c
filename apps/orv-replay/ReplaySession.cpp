#include "orv-replay/ReplaySession.h"

#include "common/ScriptCommand.h"
#include "common/ScriptError.h"
#include "orv-replay/ReplayCommands.h"
#include "platform/foundation/Exception.h"

#include <stdexcept>

namespace orv::apps {

void ReplaySession::run(const Json &line)
{
    const std::string name = commandOf(line);
    if (!host_ && name != "host") {
        throw ScriptError("\"host\" must come first");
    }
    replayCommand(name)(*this, line);
    host().platform().mainThread().drain();
    if (!host().failure().empty()) {
        throw std::runtime_error(host().failure());
    }
}

void ReplaySession::begin(const Json &argument)
{
    if (host_) {
        throw ScriptError("\"host\" comes once, at the beginning");
    }
    host_ = std::make_unique<ReplayHost>(hostSettings(argument), folders_, quietLog_, output_);
}

int runScript(std::istream &script, const std::string &name, ReplaySession &session,
              std::ostream &errors)
{
    constexpr int badLine = 2;
    ScriptReader reader(script);
    const auto report = [&](const std::exception &error, int status) {
        errors << name << ':' << reader.lineNumber() << ": " << error.what() << '\n';
        return status;
    };
    try {
        while (const auto line = reader.next()) {
            session.run(*line);
        }
    } catch (const ScriptError &error) {
        return report(error, badLine);
    } catch (const platform::Exception &error) {
        return report(error, badLine);
    } catch (const std::exception &error) {
        return report(error, 1);
    }
    return 0;
}

} // namespace orv::apps
