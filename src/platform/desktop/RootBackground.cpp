#include "platform/desktop/RootBackground.h"

#include "platform/desktop/Pixmap.h"

#include <xcb/composite.h>

#include <array>
#include <cstdint>

namespace orv::platform {

namespace {

/// What compositors show where nobody has set a picture.
constexpr std::uint32_t kCompositorGrey = 0x808080U;

/// A window below all others that shows nothing but the root's background, which can't be read from
/// the root window itself, as that gives its subwindows' pixels too.
class Backdrop {
public:
    Backdrop(const XConnection &x, const QRect &frame) : x_(x), window_(xcb_generate_id(x.get()))
    {
        const std::array<std::uint32_t, 2> values = {XCB_BACK_PIXMAP_PARENT_RELATIVE, 1};
        xcb_create_window(
            x_.get(), XCB_COPY_FROM_PARENT, window_, x_.root(),
            static_cast<std::int16_t>(frame.x()), static_cast<std::int16_t>(frame.y()),
            static_cast<std::uint16_t>(frame.width()), static_cast<std::uint16_t>(frame.height()),
            0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
            XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values.data());
        const std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(x_.get(), window_, XCB_CONFIG_WINDOW_STACK_MODE, &below);
        xcb_map_window(x_.get(), window_);
    }
    ~Backdrop() { xcb_destroy_window(x_.get(), window_); }
    Backdrop(const Backdrop &) = delete;
    Backdrop &operator=(const Backdrop &) = delete;

    /// Empty when the X server refuses.
    [[nodiscard]] Pixmap pixmap() const
    {
        const xcb_pixmap_t id = xcb_generate_id(x_.get());
        const XReply<xcb_generic_error_t> refusal(xcb_request_check(
            x_.get(), xcb_composite_name_window_pixmap_checked(x_.get(), window_, id)));
        return refusal ? Pixmap() : Pixmap(x_, id);
    }

private:
    const XConnection &x_;
    xcb_window_t window_;
};

bool paintBackdrop(const XConnection &x, PixelReader &reader, const ScreenPicture &picture,
                   const QRegion &where)
{
    const QRect frame = where.boundingRect();
    const Backdrop backdrop(x, frame);
    const Pixmap pixmap = backdrop.pixmap();
    const std::uint32_t *pixels = reader.read(pixmap.id(), QRect(QPoint(), frame.size()));
    if (pixels == nullptr) {
        return false;
    }
    paintOver(picture, {pixels, frame}, where);
    return true;
}

bool paintWallpaper(const XConnection &x, PixelReader &reader, const ScreenPicture &picture,
                    const QRegion &where)
{
    const std::vector<std::uint32_t> named = x.numbers(x.root(), "_XROOTPMAP_ID");
    if (named.empty() || named.front() == XCB_NONE) {
        return false;
    }
    const xcb_pixmap_t pixmap = named.front();
    const XReply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(x.get(), xcb_get_geometry(x.get(), pixmap), nullptr));
    if (!size) {
        return false;
    }
    const QRect all(0, 0, size->width, size->height);
    const QRect needed = where.boundingRect();
    const bool isTiled = !all.contains(needed);
    const QRect read = isTiled ? all : needed;
    const std::uint32_t *pixels = reader.read(pixmap, read);
    if (pixels == nullptr) {
        return false;
    }
    (isTiled ? &paintTiled : &paintOver)(picture, {pixels, read}, where);
    return true;
}

} // namespace

bool paintRootBackground(const XConnection &x, PixelReader &reader, bool isBlended,
                         const ScreenPicture &picture, const QRegion &where)
{
    if (paintWallpaper(x, reader, picture, where)) {
        return true;
    }
    if (isBlended) {
        paintColor(picture, kCompositorGrey, where);
        return true;
    }
    return paintBackdrop(x, reader, picture, where);
}

} // namespace orv::platform
