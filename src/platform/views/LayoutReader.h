#pragma once

#include "platform/views/View.h"
#include "platform/views/Window.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace orv::platform {

/// What an interface description file needs of the code that loads it: makers of classes, and
/// places for the objects that it names.
///
/// A description is an object with a list "windows". A window has "class", "outlet", "title",
/// "frame" and "styleMask"; a view has "class", "outlet", "frame", "hidden", "autoresizingMask",
/// for buttons "title", "tag", "action", "picture" and "pressedPicture", for image views "picture".
/// Both windows and views have a list "views" of what lies in them,
/// from the rearmost to the frontmost. A frame is [x, y, width, height] in the parent's points.
struct LayoutBindings {
    using WindowMaker =
        std::function<std::shared_ptr<Window>(const Rect &frame, std::uint32_t styleMask)>;
    using ViewMaker = std::function<std::shared_ptr<View>(const Rect &frame)>;

    std::map<std::string, WindowMaker> windowClasses;
    /// "View", "Button" and "ImageView" are known without being listed.
    std::map<std::string, ViewMaker> viewClasses;
    std::map<std::string, std::function<void(const std::shared_ptr<Window> &)>> windowOutlets;
    std::map<std::string, std::function<void(const std::shared_ptr<View> &)>> viewOutlets;
    std::map<std::string, std::function<void(View &sender)>> actions;
};

/// Builds the windows of the description in `json` and binds them.
///
/// Throws `Exception` that names `source` and the place in it: for text that is no description, a
/// class, outlet or action without a counterpart, an outlet of the bindings that the description
/// lacks. What was bound before stays bound.
void loadLayout(const std::string &json, const std::string &source, const LayoutBindings &bindings);

} // namespace orv::platform
