#include "orvane-streamer/picture/SharedPixels.h"

#include <sys/ipc.h>
#include <sys/shm.h>

namespace orv::apps {

namespace {

constexpr int kOwnerOnly = 0600;

bool isThere(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(connection, &xcb_shm_id);
    return extension != nullptr && extension->present != 0;
}

} // namespace

SharedPixels::SharedPixels(xcb_connection_t *connection, std::size_t pixels)
    : connection_(connection)
{
    if (pixels == 0 || !isThere(connection)) {
        return;
    }
    const int memory =
        ::shmget(IPC_PRIVATE, pixels * sizeof(std::uint32_t), IPC_CREAT | kOwnerOnly);
    if (memory < 0) {
        return;
    }
    void *address = ::shmat(memory, nullptr, SHM_RDONLY);
    if (reinterpret_cast<std::intptr_t>(address) != -1) {
        segment_ = xcb_generate_id(connection);
        const XcbReply<xcb_generic_error_t> error(xcb_request_check(
            connection,
            xcb_shm_attach_checked(connection, segment_, static_cast<std::uint32_t>(memory), 0)));
        if (error == nullptr && xcb_connection_has_error(connection) == 0) {
            pixels_ = {static_cast<const std::uint32_t *>(address), pixels};
        } else {
            ::shmdt(address);
        }
    }
    // The memory goes with the last one that has it attached, however the process ends.
    ::shmctl(memory, IPC_RMID, nullptr);
}

SharedPixels::~SharedPixels()
{
    if (!pixels_.empty()) {
        xcb_shm_detach(connection_, segment_);
        ::shmdt(pixels_.data());
    }
}

} // namespace orv::apps
