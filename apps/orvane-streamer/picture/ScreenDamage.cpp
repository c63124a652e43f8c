#include "orvane-streamer/picture/ScreenDamage.h"

#include <cstddef>
#include <span>

namespace orv::apps {

namespace {

constexpr std::uint8_t kSentBit = 0x80;

/// A client has to say which version it speaks before it asks for anything else.
bool agreesOnVersions(xcb_connection_t *connection)
{
    const auto damage =
        xcb_damage_query_version(connection, XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION);
    const auto fixes =
        xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION);
    const XcbReply<xcb_damage_query_version_reply_t> damageReply(
        xcb_damage_query_version_reply(connection, damage, nullptr));
    const XcbReply<xcb_xfixes_query_version_reply_t> fixesReply(
        xcb_xfixes_query_version_reply(connection, fixes, nullptr));
    // Regions came with the second version.
    return damageReply != nullptr && fixesReply != nullptr && fixesReply->major_version >= 2;
}

bool isPresent(const xcb_query_extension_reply_t *extension)
{
    return extension != nullptr && extension->present != 0;
}

} // namespace

ScreenDamage::ScreenDamage(const ScreenConnection &connection) : connection_(connection)
{
    const auto *damage = xcb_get_extension_data(connection.get(), &xcb_damage_id);
    const auto *fixes = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    isKnown_ = isPresent(damage) && isPresent(fixes) && agreesOnVersions(connection.get());
    if (isKnown_) {
        event_ = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
    }
}

void ScreenDamage::watch()
{
    if (!isKnown_ || isWatched()) {
        return;
    }
    xcb_connection_t *connection = connection_.get();
    damage_ = xcb_generate_id(connection);
    region_ = xcb_generate_id(connection);
    xcb_damage_create(connection, damage_, connection_.root(), XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    xcb_xfixes_create_region(connection, region_, 0, nullptr);
    xcb_flush(connection);
}

void ScreenDamage::unwatch()
{
    if (!isWatched()) {
        return;
    }
    xcb_connection_t *connection = connection_.get();
    xcb_damage_destroy(connection, damage_);
    xcb_xfixes_destroy_region(connection, region_);
    xcb_flush(connection);
    damage_ = 0;
    region_ = 0;
}

bool ScreenDamage::tells(const xcb_generic_event_t &event) const
{
    return isWatched() && (event.response_type & ~kSentBit) == event_ &&
           reinterpret_cast<const xcb_damage_notify_event_t &>(event).damage == damage_;
}

std::vector<ScreenArea> ScreenDamage::take()
{
    if (!isWatched()) {
        return {};
    }
    xcb_connection_t *connection = connection_.get();
    xcb_damage_subtract(connection, damage_, XCB_XFIXES_REGION_NONE, region_);
    const XcbReply<xcb_xfixes_fetch_region_reply_t> reply(xcb_xfixes_fetch_region_reply(
        connection, xcb_xfixes_fetch_region_unchecked(connection, region_), nullptr));
    if (reply == nullptr) {
        return {};
    }
    const auto count =
        static_cast<std::size_t>(xcb_xfixes_fetch_region_rectangles_length(reply.get()));
    std::vector<ScreenArea> areas;
    areas.reserve(count);
    for (const xcb_rectangle_t &box :
         std::span(xcb_xfixes_fetch_region_rectangles(reply.get()), count)) {
        areas.push_back({box.x, box.y, box.width, box.height});
    }
    return areas;
}

} // namespace orv::apps
