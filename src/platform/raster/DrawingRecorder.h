#pragma once

#include "platform/raster/DrawingRecord.h"
#include "platform/raster/RasterContext.h"
#include "platform/values/Image.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orv::platform {

/// Takes drawing down instead of painting it.
///
/// Units    those of the interface; `grid` says how they lie in the surface's pixels.
/// Thread   one.
class DrawingRecorder final : public GraphicsContext {
public:
    /// Asked about each list; true takes its place in the record, false has it drawn thing by
    /// thing.
    using ListKeeper = std::function<bool(const DrawnList &list)>;

    /// The record is made in the memory of one that is not needed any more.
    explicit DrawingRecorder(const PixelGrid &grid, ListKeeper keepsList = {},
                             DrawingRecord memory = {});
    /// For what is drawn in a state that another recorder is in.
    DrawingRecorder(const PixelGrid &grid, const drawing::State &state, DrawingRecord memory = {});

    [[nodiscard]] const DrawingRecord &record() const { return record_; }
    [[nodiscard]] DrawingRecord take() { return std::move(record_); }
    [[nodiscard]] const drawing::State &state() const { return states_.back(); }

    void saveState() override;
    void restoreState() override;
    void concatenate(const AffineTransform &transform) override;
    void clipToRect(const Rect &rect) override;
    void setBlendMode(BlendMode mode) override;
    void setLineWidth(double width) override;
    void setLineCap(LineCap cap) override;
    void setLineJoin(LineJoin join) override;
    void setLineDash(double phase, const std::vector<double> &lengths) override;
    void setStrokeColor(const Color &color) override;
    void setFillColor(const Color &color) override;
    void strokePath(const Path &path) override;
    void fillPath(const Path &path) override;
    void fillRect(const Rect &rect, CompositingOperation operation) override;
    void drawImage(const ImagePtr &image, const Rect &rect, CompositingOperation operation,
                   double fraction) override;
    void fillPattern(const Rect &rect, const ImagePtr &image,
                     CompositingOperation operation) override;
    void drawText(std::u16string_view text, const Rect &rect, const Font &font,
                  TextAlignment alignment) override;
    [[nodiscard]] Size measureText(std::u16string_view text, const Font &font) override;
    void setTextPosition(Point position) override;
    [[nodiscard]] Point textPosition() const override;
    void beginLayer(double alpha) override;
    void endLayer() override;
    void drawList(const DrawnList &list) override;

private:
    template <class Call> void add(Call &&call)
    {
        record_.calls.emplace_back(std::forward<Call>(call));
    }
    template <class Call> void mark(Call &&call);

    void reserve();

    PixelGrid grid_;
    ListKeeper keepsList_;
    DrawingRecord record_;
    std::vector<drawing::State> states_;
    /// The depth of the states at which each layer was begun; restoring stops there.
    std::vector<std::size_t> layers_;
    /// In device pixels.
    Point textPosition_;
};

} // namespace orv::platform
