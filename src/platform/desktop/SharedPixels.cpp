#include "platform/desktop/SharedPixels.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <utility>

namespace orv::platform {

namespace {

constexpr std::uint32_t kAllPlanes = 0xffffffffU;
constexpr int kOwnerOnly = 0600;

} // namespace

SharedPixels::SharedPixels(const XConnection &x) : x_(x)
{
    const auto *extension = xcb_get_extension_data(x.get(), &xcb_shm_id);
    isPossible_ = extension != nullptr && extension->present != 0;
}

SharedPixels::~SharedPixels()
{
    release();
}

void SharedPixels::release()
{
    if (memory_ != nullptr) {
        xcb_shm_detach(x_.get(), segment_);
        ::shmdt(std::exchange(memory_, nullptr));
        room_ = 0;
    }
}

bool SharedPixels::makeRoom(std::size_t count)
{
    if (isPossible_ && room_ < count) {
        release();
        isPossible_ = attach(count * sizeof(std::uint32_t));
        room_ = isPossible_ ? count : 0;
    }
    return isPossible_;
}

bool SharedPixels::attach(std::size_t bytes)
{
    const int id = ::shmget(IPC_PRIVATE, bytes, IPC_CREAT | kOwnerOnly);
    if (id < 0) {
        return false;
    }
    void *memory = ::shmat(id, nullptr, 0);
    // shmat answers the address -1 when it fails.
    const bool isMapped = memory != nullptr && reinterpret_cast<std::intptr_t>(memory) != -1;
    bool isAttached = false;
    if (isMapped) {
        segment_ = xcb_generate_id(x_.get());
        const XReply<xcb_generic_error_t> refusal(
            xcb_request_check(x_.get(), xcb_shm_attach_checked(x_.get(), segment_,
                                                               static_cast<std::uint32_t>(id), 0)));
        isAttached = !refusal;
    }
    // It lives on while both sides have it attached, and goes with the last of them.
    ::shmctl(id, IPC_RMID, nullptr);
    if (isAttached) {
        memory_ = memory;
    } else if (isMapped) {
        ::shmdt(memory);
    }
    return isAttached;
}

const std::uint32_t *SharedPixels::read(xcb_drawable_t drawable, const QRect &area)
{
    const auto cookie = xcb_shm_get_image(x_.get(), drawable, static_cast<std::int16_t>(area.x()),
                                          static_cast<std::int16_t>(area.y()),
                                          static_cast<std::uint16_t>(area.width()),
                                          static_cast<std::uint16_t>(area.height()), kAllPlanes,
                                          XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0);
    const XReply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(x_.get(), cookie, nullptr));
    const std::size_t bytes = static_cast<std::size_t>(area.width()) *
                              static_cast<std::size_t>(area.height()) * sizeof(std::uint32_t);
    const bool isRgb32 =
        reply && (reply->depth == 24 || reply->depth == 32) && reply->size == bytes;
    return isRgb32 ? static_cast<const std::uint32_t *>(memory_) : nullptr;
}

void SharedPixels::put(xcb_drawable_t drawable, xcb_gcontext_t context, std::uint8_t depth,
                       int width, const PixelRect &rect) const
{
    // For the server the picture begins with the first of these rows and ends with the last.
    const auto offset = static_cast<std::size_t>(rect.y) * static_cast<std::size_t>(width);
    xcb_shm_put_image(x_.get(), drawable, context, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(rect.height), static_cast<std::uint16_t>(rect.x),
                      0, static_cast<std::uint16_t>(rect.width),
                      static_cast<std::uint16_t>(rect.height), static_cast<std::int16_t>(rect.x),
                      static_cast<std::int16_t>(rect.y), depth, XCB_IMAGE_FORMAT_Z_PIXMAP, 0,
                      segment_, static_cast<std::uint32_t>(offset * sizeof(std::uint32_t)));
}

} // namespace orv::platform
