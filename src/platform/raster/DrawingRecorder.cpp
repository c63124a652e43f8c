#include "platform/raster/DrawingRecorder.h"

#include "platform/raster/DrawingExtent.h"
#include "platform/raster/TextLayout.h"

#include <string>
#include <utility>

namespace orv::platform {

namespace {

/// What a frame or a thing has as a rule, so that taking it down need not ask for memory again and
/// again.
constexpr std::size_t kUsualCalls = 16;
constexpr std::size_t kUsualMarks = 4;
constexpr std::size_t kUsualNesting = 4;

} // namespace

DrawingRecorder::DrawingRecorder(const PixelGrid &grid, ListKeeper keepsList, DrawingRecord memory)
    : grid_(grid), keepsList_(std::move(keepsList)), record_(std::move(memory))
{
    reserve();
    states_.emplace_back();
    states_.back().toDevice = grid.toDevice();
    states_.back().visible = {0, 0, grid.pixelWidth(), grid.pixelHeight()};
}

DrawingRecorder::DrawingRecorder(const PixelGrid &grid, const drawing::State &state,
                                 DrawingRecord memory)
    : grid_(grid), record_(std::move(memory))
{
    reserve();
    states_.push_back(state);
}

void DrawingRecorder::reserve()
{
    record_.clear();
    record_.calls.reserve(kUsualCalls);
    record_.marks.reserve(kUsualMarks);
    states_.reserve(kUsualNesting);
}

template <class Call> void DrawingRecorder::mark(Call &&call)
{
    record_.marks.push_back({record_.calls.size(), states_.back()});
    add(std::forward<Call>(call));
}

void DrawingRecorder::saveState()
{
    states_.push_back(states_.back());
    add(drawing::Save{});
}

void DrawingRecorder::restoreState()
{
    const std::size_t bottom = layers_.empty() ? 1 : layers_.back();
    if (states_.size() > bottom) {
        states_.pop_back();
    }
    add(drawing::Restore{});
}

void DrawingRecorder::concatenate(const AffineTransform &transform)
{
    AffineTransform &toDevice = states_.back().toDevice;
    toDevice = transform.then(toDevice);
    add(drawing::Concatenate{transform});
}

void DrawingRecorder::clipToRect(const Rect &rect)
{
    drawing::State &state = states_.back();
    state.clips.add(state.toDevice, rect);
    state.visible = state.visible.intersection(pixelsRound(rect, state.toDevice));
    add(drawing::Clip{rect});
}

void DrawingRecorder::setBlendMode(BlendMode mode)
{
    states_.back().blendMode = mode;
    add(drawing::SetBlendMode{mode});
}

void DrawingRecorder::setLineWidth(double width)
{
    states_.back().stroke.width = width;
    add(drawing::SetLineWidth{width});
}

void DrawingRecorder::setLineCap(LineCap cap)
{
    states_.back().stroke.cap = cap;
    add(drawing::SetLineCap{cap});
}

void DrawingRecorder::setLineJoin(LineJoin join)
{
    states_.back().stroke.join = join;
    add(drawing::SetLineJoin{join});
}

void DrawingRecorder::setLineDash(double phase, const std::vector<double> &lengths)
{
    states_.back().stroke.dashPhase = phase;
    states_.back().stroke.dashLengths = lengths;
    add(drawing::SetLineDash{phase, lengths});
}

void DrawingRecorder::setStrokeColor(const Color &color)
{
    states_.back().strokeColor = color;
    add(drawing::SetStrokeColor{color});
}

void DrawingRecorder::setFillColor(const Color &color)
{
    states_.back().fillColor = color;
    add(drawing::SetFillColor{color});
}

void DrawingRecorder::strokePath(const Path &path)
{
    mark(drawing::StrokePath{path});
}

void DrawingRecorder::fillPath(const Path &path)
{
    mark(drawing::FillPath{path});
}

void DrawingRecorder::fillRect(const Rect &rect, CompositingOperation operation)
{
    mark(drawing::FillRect{rect, operation});
}

void DrawingRecorder::drawImage(const ImagePtr &image, const Rect &rect,
                                CompositingOperation operation, double fraction)
{
    mark(drawing::DrawImage{image, rect, operation, fraction});
}

void DrawingRecorder::fillPattern(const Rect &rect, const ImagePtr &image,
                                  CompositingOperation operation)
{
    mark(drawing::FillPattern{rect, image, operation});
}

void DrawingRecorder::drawText(std::u16string_view text, const Rect &rect, const Font &font,
                               TextAlignment alignment)
{
    if (text.empty()) {
        return;
    }
    const TextLayout layout(text, font, alignment, rect.size.width);
    if (layout.size().height <= 0.0) {
        return;
    }
    const AffineTransform topDown{1.0, 0.0, 0.0, -1.0, rect.minX(), rect.maxY()};
    textPosition_ = topDown.then(states_.back().toDevice).apply(layout.end());
    mark(drawing::DrawText{std::u16string(text), rect, font, alignment});
}

Size DrawingRecorder::measureText(std::u16string_view text, const Font &font)
{
    return TextLayout(text, font).size();
}

void DrawingRecorder::setTextPosition(Point position)
{
    textPosition_ = states_.back().toDevice.apply(position);
}

Point DrawingRecorder::textPosition() const
{
    return states_.back().toDevice.inverted().apply(textPosition_);
}

void DrawingRecorder::beginLayer(double alpha)
{
    mark(drawing::BeginLayer{alpha});
    states_.push_back(states_.back());
    states_.back().blendMode = BlendMode::normal;
    layers_.push_back(states_.size());
}

void DrawingRecorder::endLayer()
{
    if (layers_.empty()) {
        return;
    }
    states_.resize(layers_.back() - 1, states_.front());
    layers_.pop_back();
    mark(drawing::EndLayer{});
}

void DrawingRecorder::drawList(const DrawnList &list)
{
    if (layers_.empty() && keepsList_ && keepsList_(list)) {
        mark(drawing::List{});
    } else {
        GraphicsContext::drawList(list);
    }
}

} // namespace orv::platform
