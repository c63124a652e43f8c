#pragma once

#include "platform/values/Image.h"

#include <memory>
#include <string>
#include <utility>

namespace orv::platform {

/// A picture with a name: one of the library's own, read when it is first shown, then kept.
///
/// Thread   main thread, or another one under the monitor.
class PictureResource {
public:
    explicit PictureResource(std::string name) : name_(std::move(name)) {}
    /// One that is in memory already.
    PictureResource(std::string name, ImagePtr image)
        : name_(std::move(name)), isRead_(true), image_(std::move(image))
    {
    }

    [[nodiscard]] const std::string &name() const { return name_; }
    /// Null when there is no such picture.
    [[nodiscard]] ImagePtr image() const;

private:
    std::string name_;
    mutable bool isRead_ = false;
    mutable ImagePtr image_;
};

using PictureResourcePtr = std::shared_ptr<const PictureResource>;

} // namespace orv::platform
