#pragma once

#include "canvas/Annotation.h"

#include <string_view>

namespace orv {

/// A ready-made picture that one click places; the blue of its colour says which one.
///
/// Units    sizes up to 4.0 choose one of four pictures of natural size, sizes from 100.0 on show
/// the
///          largest in percent of the size above 100.0 (100.0 itself: as it is).
class StampAnnotation : public Annotation {
public:
    StampAnnotation();
    /// Fails as `updateStampInfo` does.
    explicit StampAnnotation(platform::KeyedUnarchiver &coder);

    [[nodiscard]] std::vector<std::string> archiveClassNames() const override;
    void encodeWithCoder(platform::KeyedArchiver &coder) const override;

    /// The click point.
    [[nodiscard]] platform::Point dragOrigin() const { return dragOrigin_; }
    /// "pointer", "star", "heart", "smile", "check" or "x"; empty before the click.
    [[nodiscard]] std::string_view stampType() const { return stampType_; }
    /// 1 to 4.
    [[nodiscard]] std::int32_t sizeIndex() const { return sizeIndex_; }
    /// How the picture lies against the click point, as `setStampAlignment` takes it.
    [[nodiscard]] std::int32_t stampAlign() const { return stampAlign_; }

    /// The picture file as it is now, not tinted; a missing one draws nothing.
    void draw(platform::GraphicsContext &context) override;
    /// It is complete at once: it never goes active and cannot be dragged.
    void mouseDownEventAtPoint(platform::Point point) override;
    bool shouldRedrawWithKeyDownEvent(const platform::Event &event) override;
    bool shouldFinalize() override { return true; }

    /// Derives kind, alignment and size variant from colour and size. Throws `platform::Exception`
    /// for a colour that is no stamp's.
    void updateStampInfo();
    /// The kind number: the components as whole numbers up to 255, blue lowest, green sixteen bits
    /// and red twenty-four above it.
    [[nodiscard]] std::int32_t getRGB() const;
    /// From the lower left corner of a picture of this size to the click point. 0 top middle,
    /// 1 centre, 2 bottom middle, 3 top right, 4 right middle, 5 bottom right, 6 top left, 7 left
    /// middle, else bottom left.
    [[nodiscard]] static platform::Point setStampAlignment(std::int32_t alignment,
                                                           platform::Size size);

private:
    platform::Point dragOrigin_;
    std::string_view stampType_;
    std::int32_t sizeIndex_ = 0;
    std::int32_t stampAlign_ = 0;
};

} // namespace orv
