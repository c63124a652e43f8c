#pragma once

#include "platform/values/Image.h"

#include <QPoint>
#include <QRect>
#include <QRegion>

#include <cstdint>

namespace orv::platform {

/// Pixels of one layer of the screen, 0xAARRGGBB in rows without gaps.
///
/// Units    places are device pixels from the top left corner of the X screen.
struct LayerPixels {
    const std::uint32_t *first = nullptr;
    QRect frame;
    /// Premultiplied alpha; else the topmost byte means nothing and all is opaque.
    bool hasAlpha = false;
    /// Of the whole layer, 0 to 255.
    std::uint32_t opacity = 255;
};

/// An opaque picture of a part of the X screen, put together from the rear to the front.
struct ScreenPicture {
    Image &image;
    /// Where its top left pixel lies.
    QPoint origin;
};

/// Puts the layer over what is in the picture. `where` lies inside both. Any pixels will do: a
/// colour that is stronger than its alpha allows comes out as bright as can be.
void paintOver(const ScreenPicture &picture, const LayerPixels &layer, const QRegion &where);

/// Fills a region inside the picture with copies of the layer side by side, one of them at its
/// frame.
void paintTiled(const ScreenPicture &picture, const LayerPixels &layer, const QRegion &where);

/// Fills a region inside the picture with one opaque colour.
void paintColor(const ScreenPicture &picture, std::uint32_t color, const QRegion &where);

} // namespace orv::platform
