// A host as small as can be: opens annotation mode with a pen on the desktop.
//
//   ink_host STROKES [--records]
//
// Draws so many strokes by a client's records and prints "ready"; then it draws by the mouse of
// this machine until a signal ends it. With --records it prints a port beside that word, and draws
// by the records of one client that connects there.

#include "InkRecords.h"

#include <OrvAnnotation/AnnotationController.h>
#include <OrvAnnotation/DesktopPlatform.h>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>

#include <cstring>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace {

namespace asio = boost::asio;
namespace ink_records = orv::bench::ink_records;

constexpr std::uint32_t kAnswer = 0x8000;

/// Hands on what one client sends, on a thread that lives as long as the process.
class RecordPort {
public:
    explicit RecordPort(orv::AnnotationController &controller)
        : door_(network_, {asio::ip::address_v4::loopback(), 0})
    {
        std::thread([this, &controller] { serve(controller); }).detach();
    }

    [[nodiscard]] std::uint16_t number() const { return door_.local_endpoint().port(); }

private:
    void serve(orv::AnnotationController &controller)
    {
        asio::ip::tcp::socket client = door_.accept();
        orv::stCommand_mgs record;
        boost::system::error_code error;
        while (asio::read(client, asio::buffer(&record, sizeof record), error) == sizeof record) {
            controller.CommandClient2App(record);
        }
    }

    asio::io_context network_;
    asio::ip::tcp::acceptor door_;
};

struct Host {
    orv::DesktopPlatform platform{{}};
    orv::AnnotationController controller;
    std::optional<RecordPort> port;
    unsigned wanted = 0;
    bool isOpen = false;
    bool isReady = false;

    void drawSettledStrokes()
    {
        const auto display = platform.mainDisplay();
        controller.CommandClient2App(ink_records::pen(0, 0, 0xFF));
        for (unsigned number = 0; number < wanted; ++number) {
            for (const auto &record :
                 ink_records::settledStroke(number, display.pixelWidth, display.pixelHeight, 1)) {
                controller.CommandClient2App(record);
            }
        }
        if (wanted == 0) {
            becomeReady();
        }
    }

    void becomeReady()
    {
        isReady = true;
        controller.CommandClient2App(ink_records::pen(0xFF, 0, 0));
        platform.post([this] {
            std::cout << "ready";
            if (port) {
                std::cout << ' ' << port->number();
            }
            std::cout << std::endl;
        });
    }

    void told(const orv::stCommand_mgs &record)
    {
        if (record.wparam == kAnswer && record.ext[0] == 1 && !isOpen) {
            isOpen = true;
            platform.post([this] { drawSettledStrokes(); });
        } else if (record.wparam == ink_records::undoCounts && wanted > 0 && !isReady &&
                   ink_records::undoCount(record) == wanted) {
            platform.post([this] { becomeReady(); });
        }
    }
};

Host *running = nullptr;

int take(const void *bytes, std::size_t length, std::uint32_t /*pluginID*/)
{
    orv::stCommand_mgs record;
    if (length == sizeof record) {
        std::memcpy(&record, bytes, sizeof record);
        running->told(record);
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
try {
    const bool byRecords = argc == 3 && std::string_view(argv[2]) == "--records";
    if (argc != 2 && !byRecords) {
        std::cerr << "usage: ink_host STROKES [--records]\n";
        return 2;
    }
    Host host;
    host.wanted = static_cast<unsigned>(std::stoul(argv[1]));
    running = &host;
    if (byRecords) {
        host.port.emplace(host.controller);
    }
    const auto display = host.platform.mainDisplay();
    host.controller.SetClientCommandCHSender(take);
    host.controller.SetActiveOpt(0, ink_records::plugin);
    host.controller.setM_dpID(display.displayID);
    host.controller.setM_clientDimension({display.width, display.height});
    host.platform.post([&host] { host.controller.CommandClient2App(ink_records::open()); });
    return host.platform.run();
} catch (const std::exception &error) {
    std::cerr << "ink_host: " << error.what() << '\n';
    return 1;
}
