#include "common/Folders.h"
#include "orv-replay/HomeFolder.h"
#include "orv-replay/ReplayOptions.h"
#include "orv-replay/ReplaySession.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>

namespace {

constexpr int kBadCall = 2;

int replay(const orv::apps::ReplayOptions &options)
{
    std::ifstream file;
    if (options.script != "-") {
        file.open(options.script);
        if (!file) {
            std::cerr << options.script << ": the script cannot be read\n";
            return kBadCall;
        }
    }
    const orv::apps::HomeFolder home(options.home);
    orv::apps::OutputLines output(std::cout);
    orv::apps::ReplaySession session({home.path(), orv::apps::plainPath(options.out)},
                                     options.quietLog, output);
    return orv::apps::runScript(options.script == "-" ? std::cin : file, options.script, session,
                                std::cerr);
}

} // namespace

int main(int argc, char **argv)
{
    // A toolkit's remarks on a desktop that is not used are none of the reader's business.
    ::setenv("QT_LOGGING_RULES", "default.warning=false", 0);
    try {
        const auto options =
            orv::apps::replayOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
        if (options.help) {
            std::cout << orv::apps::replayHelp();
            return 0;
        }
        const int status = replay(options);
        if (!std::cout.flush()) {
            std::cerr << "orv-replay: standard output cannot be written\n";
            return 1;
        }
        return status;
    } catch (const orv::apps::OptionError &error) {
        std::cerr << "orv-replay: " << error.what() << '\n';
        return kBadCall;
    } catch (const std::exception &error) {
        std::cerr << "orv-replay: " << error.what() << '\n';
        return 1;
    }
}
