#include "orvane-streamer/remote/ControlMessages.h"
#include "orvane-streamer/remote/HttpAnswers.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

// Anybody on the network can send the server a request, and a paired page any text: whatever it is,
// it is answered or refused, and nobody is paired without the code.

namespace {

using namespace orv::apps;

constexpr const char *kCode = "0123456789ABCDEF";

std::string pageFolder()
{
    std::string folder = (std::filesystem::temp_directory_path() / "orv-fuzz-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        std::abort();
    }
    std::ofstream(folder + "/index.html") << "page";
    return folder;
}

PageAssets pageAssets()
{
    const std::string folder = pageFolder();
    PageAssets assets(folder);
    std::filesystem::remove_all(folder);
    return assets;
}

/// The part up to the next line's end, which is taken off.
std::string nextLine(std::string_view &text)
{
    const std::size_t end = text.find('\n');
    std::string line(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

bool showsCode(const std::string &target)
{
    return target.find("code=") != std::string::npos;
}

void answerRequest(std::string_view text)
{
    static const PageAssets assets = pageAssets();
    PairedBrowsers browsers([] { return std::chrono::system_clock::time_point(); }, {});
    PairingLimit limit([] { return std::chrono::steady_clock::time_point(); });
    HttpAnswers answers(
        {&assets, &browsers, &limit, kCode, 8720, "lectern", [] {}, [](const std::string &) {}});
    HttpRequest request;
    request.method = nextLine(text);
    request.target = nextLine(text);
    request.hosts = {nextLine(text)};
    request.origin = nextLine(text);
    request.cookie = nextLine(text);
    request.asksForLink = true;
    const HttpAnswer answer = answers.answer(request);
    const bool isPaired = !browsers.all().empty();
    if (answer.isLink || answer.status == 200 || (isPaired && !showsCode(request.target))) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text(data, data + size);
    (void)orv::apps::controlMessage(text);
    answerRequest(text);
    return 0;
}
