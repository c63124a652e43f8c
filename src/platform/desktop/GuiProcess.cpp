#include "platform/desktop/GuiProcess.h"

#include "platform/desktop/XConnection.h"

#include <QString>
#include <QtGlobal>

#include <stdexcept>

namespace orv::platform {

GuiProcess::GuiProcess(const std::string &bundleIdentifier) : name_(bundleIdentifier)
{
    if (QCoreApplication::instance() != nullptr) {
        throw std::runtime_error(
            "The desktop platform makes the GUI application itself, and there is one already.");
    }
    XConnection::requireUsableDisplay();
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    // The toolkit's own loop has a turn less between an event and its answer than glib's.
    qputenv("QT_NO_GLIB", "1");
    qunsetenv("QT_SCALE_FACTOR");
    qunsetenv("QT_SCREEN_SCALE_FACTORS");

    arguments_ = {name_.data(), nullptr};
    application_.emplace(count_, arguments_.data());
    // Programs that are started from here choose for themselves.
    qunsetenv("QT_NO_GLIB");
    QGuiApplication::setApplicationName(QString::fromStdString(bundleIdentifier));
    QGuiApplication::setDesktopFileName(QString::fromStdString(bundleIdentifier));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // The X11 plugin turns it on when the application is made.
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QCoreApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
}

} // namespace orv::platform
