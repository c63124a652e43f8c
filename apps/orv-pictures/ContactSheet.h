#pragma once

#include <QImage>
#include <QString>

#include <vector>

namespace orv::pictures {

/// The pictures of one family under its name.
struct SheetGroup {
    QString caption;
    std::vector<QImage> images;
};

/// All groups below each other on one sheet, each in as many rows as it needs. It wants a
/// QGuiApplication for the captions. Thread: the main thread.
[[nodiscard]] QImage contactSheet(const std::vector<SheetGroup> &groups);

} // namespace orv::pictures
