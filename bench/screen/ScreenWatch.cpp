#include "ScreenWatch.h"

#include <X11/XWDFile.h>
#include <xcb/damage.h>
#include <xcb/xfixes.h>

#include <endian.h>
#include <poll.h>
#include <sys/shm.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace orv::bench {

namespace {

constexpr std::uint32_t kDamageVersion = 1;
constexpr std::uint32_t kFirstFixesWithHiding = 4;

void require(xcb_connection_t *x, xcb_void_cookie_t request, const char *otherwise)
{
    if (xcb_generic_error_t *refusal = xcb_request_check(x, request)) {
        std::free(refusal);
        throw std::runtime_error(otherwise);
    }
}

} // namespace

ScreenWatch::ScreenWatch() : x_(xcb_connect(nullptr, nullptr), xcb_disconnect)
{
    if (xcb_connection_has_error(x_.get()) != 0) {
        throw std::runtime_error("no X server");
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(x_.get())).data->root;
    findPixels();
    hidePointer();
    askForPaint();
}

void ScreenWatch::findPixels()
{
    const char *name = std::getenv("ORV_TEST_SCREEN_MEMORY");
    const std::string_view text = name == nullptr ? "" : name;
    int memory = -1;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), memory);
    const void *start = read.ec == std::errc() ? ::shmat(memory, nullptr, SHM_RDONLY) : nullptr;
    // shmat answers the address -1 when it fails.
    if (start == nullptr || reinterpret_cast<std::intptr_t>(start) == -1) {
        throw std::runtime_error("ORV_TEST_SCREEN_MEMORY names no memory of an X server");
    }
    XWDFileHeader header;
    std::memcpy(&header, start, sizeof header);
    if (be32toh(header.bits_per_pixel) != 32) {
        throw std::runtime_error("the pixels of the X server do not have 32 bits");
    }
    rowBytes_ = be32toh(header.bytes_per_line);
    pixels_ = static_cast<const volatile std::byte *>(start) + be32toh(header.header_size) +
              be32toh(header.ncolors) * sizeof(XWDColor);
}

void ScreenWatch::hidePointer() const
{
    const auto version = xcb_xfixes_query_version(x_.get(), kFirstFixesWithHiding, 0);
    std::free(xcb_xfixes_query_version_reply(x_.get(), version, nullptr));
    require(x_.get(), xcb_xfixes_hide_cursor_checked(x_.get(), root_),
            "the X server cannot hide the pointer");
}

void ScreenWatch::askForPaint() const
{
    const auto version = xcb_damage_query_version(x_.get(), kDamageVersion, 1);
    std::free(xcb_damage_query_version_reply(x_.get(), version, nullptr));
    require(x_.get(),
            xcb_damage_create_checked(x_.get(), xcb_generate_id(x_.get()), root_,
                                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES),
            "the X server does not tell what is painted");
}

std::vector<std::uint32_t> ScreenWatch::at(int x, int y, int side) const
{
    std::vector<std::uint32_t> colours;
    for (int row = y; row < y + side; ++row) {
        const volatile auto *pixels = reinterpret_cast<const volatile std::uint32_t *>(
            pixels_ + static_cast<std::size_t>(row) * rowBytes_);
        std::transform(pixels + x, pixels + x + side, std::back_inserter(colours),
                       [](std::uint32_t pixel) { return pixel & 0xFFFFFFU; });
    }
    return colours;
}

void ScreenWatch::waitForPaint(std::chrono::milliseconds most) const
{
    pollfd socket{xcb_get_file_descriptor(x_.get()), POLLIN, 0};
    ::poll(&socket, 1, static_cast<int>(most.count()));
    while (xcb_generic_event_t *event = xcb_poll_for_event(x_.get())) {
        std::free(event);
    }
    if (xcb_connection_has_error(x_.get()) != 0) {
        throw std::runtime_error("the X server has gone");
    }
}

} // namespace orv::bench
