#include "platform/raster/GuiApplication.h"

#include <QGuiApplication>

#include <array>
#include <string>

namespace orv::platform {

namespace {

/// The toolkit keeps references to what it was started with for as long as it lives.
struct Arguments {
    std::string name = "orvannotation";
    std::string option = "-platform";
    std::string value = "offscreen";
    std::array<char *, 4> pointers{name.data(), option.data(), value.data(), nullptr};
    int count = 3;
};

} // namespace

void ensureGuiApplication()
{
    if (QCoreApplication::instance() != nullptr) {
        return;
    }
    // Never taken down: its order among the other static objects at the end cannot be told.
    static auto *const arguments = new Arguments;
    static auto *const application =
        new QGuiApplication(arguments->count, arguments->pointers.data());
    static_cast<void>(application);
}

} // namespace orv::platform
