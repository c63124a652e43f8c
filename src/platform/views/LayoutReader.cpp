#include "platform/views/LayoutReader.h"

#include "platform/foundation/Exception.h"
#include "platform/views/Button.h"
#include "platform/views/ImageView.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <set>

namespace orv::platform {

namespace {

using Json = nlohmann::json;

class LayoutLoader {
public:
    LayoutLoader(const std::string &source, const LayoutBindings &bindings)
        : source_(source), bindings_(bindings)
    {
    }

    void load(const Json &description)
    {
        for (const Json &window : member(description, "windows", "the description")) {
            loadWindow(window);
        }
        checkAllBound(bindings_.windowOutlets);
        checkAllBound(bindings_.viewOutlets);
    }

private:
    [[noreturn]] void fail(const std::string &what) const
    {
        throw Exception(fmt::format("layout {}: {}", source_, what));
    }

    const Json &member(const Json &object, const char *key, const std::string &owner) const
    {
        if (!object.is_object() || !object.contains(key)) {
            fail(fmt::format("{} lacks \"{}\"", owner, key));
        }
        return object.at(key);
    }

    template <class Value> Value value(const Json &object, const char *key, Value fallback) const
    {
        return object.contains(key) ? object.at(key).get<Value>() : fallback;
    }

    Rect frameOf(const Json &object, const std::string &owner) const
    {
        const Json &frame = member(object, "frame", owner);
        if (!frame.is_array() || frame.size() != 4) {
            fail(fmt::format("the frame of {} is not a list of four numbers", owner));
        }
        return Rect::make(frame[0].get<double>(), frame[1].get<double>(), frame[2].get<double>(),
                          frame[3].get<double>());
    }

    template <class Object, class Table>
    void bind(const Json &description, const std::shared_ptr<Object> &object, const Table &outlets)
    {
        const auto name = value<std::string>(description, "outlet", "");
        if (name.empty()) {
            return;
        }
        const auto found = outlets.find(name);
        if (found == outlets.end()) {
            fail(fmt::format("no counterpart for the outlet \"{}\"", name));
        }
        object->setOutlet(name);
        found->second(object);
        bound_.insert(name);
    }

    template <class Table> void checkAllBound(const Table &outlets) const
    {
        for (const auto &[name, setter] : outlets) {
            if (!bound_.contains(name)) {
                fail(fmt::format("the outlet \"{}\" is missing", name));
            }
        }
    }

    void loadWindow(const Json &description)
    {
        const auto className = member(description, "class", "a window").get<std::string>();
        const auto maker = bindings_.windowClasses.find(className);
        if (maker == bindings_.windowClasses.end()) {
            fail(fmt::format("unknown window class \"{}\"", className));
        }
        const auto window = maker->second(frameOf(description, className),
                                          value<std::uint32_t>(description, "styleMask", 0));
        window->setTitle(value<std::string>(description, "title", ""));
        bind(description, window, bindings_.windowOutlets);
        loadViews(description, *window->contentView());
    }

    void loadViews(const Json &owner, View &parent)
    {
        if (owner.contains("views")) {
            for (const Json &description : owner.at("views")) {
                parent.addSubview(loadView(description));
            }
        }
    }

    std::shared_ptr<View> loadView(const Json &description)
    {
        const auto className = member(description, "class", "a view").get<std::string>();
        const Rect frame = frameOf(description, className);
        auto view = makeView(className, frame);
        view->setHidden(value<bool>(description, "hidden", false));
        view->setAutoresizingMask(value<std::uint32_t>(description, "autoresizingMask", 0));
        if (auto *button = dynamic_cast<Button *>(view.get())) {
            setUpButton(description, *button);
        } else if (auto *imageView = dynamic_cast<ImageView *>(view.get())) {
            imageView->setImage(pictureOf(description, "picture"));
        }
        bind(description, view, bindings_.viewOutlets);
        loadViews(description, *view);
        return view;
    }

    std::shared_ptr<View> makeView(const std::string &className, const Rect &frame) const
    {
        if (const auto maker = bindings_.viewClasses.find(className);
            maker != bindings_.viewClasses.end()) {
            return maker->second(frame);
        }
        if (className == "View") {
            return std::make_shared<View>(frame);
        }
        if (className == "Button") {
            return std::make_shared<Button>(frame);
        }
        if (className == "ImageView") {
            return std::make_shared<ImageView>(frame);
        }
        fail(fmt::format("unknown view class \"{}\"", className));
    }

    PictureResourcePtr pictureOf(const Json &description, const char *key) const
    {
        const auto name = value<std::string>(description, key, "");
        return name.empty() ? nullptr : std::make_shared<PictureResource>(name);
    }

    void setUpButton(const Json &description, Button &button) const
    {
        button.setTitle(value<std::string>(description, "title", ""));
        button.setImage(pictureOf(description, "picture"));
        button.setAlternateImage(pictureOf(description, "pressedPicture"));
        button.setTag(value<int>(description, "tag", 0));
        const auto name = value<std::string>(description, "action", "");
        if (name.empty()) {
            return;
        }
        const auto action = bindings_.actions.find(name);
        if (action == bindings_.actions.end()) {
            fail(fmt::format("no counterpart for the action \"{}\"", name));
        }
        button.setAction([call = action->second](Button &sender) { call(sender); });
    }

    const std::string &source_;
    const LayoutBindings &bindings_;
    std::set<std::string> bound_;
};

} // namespace

void loadLayout(const std::string &json, const std::string &source, const LayoutBindings &bindings)
{
    try {
        LayoutLoader(source, bindings).load(Json::parse(json));
    } catch (const Json::exception &error) {
        throw Exception(fmt::format("layout {}: {}", source, error.what()));
    }
}

} // namespace orv::platform
