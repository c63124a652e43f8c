#include "platform/raster/DrawingRecord.h"

namespace orv::platform {

namespace drawing {

namespace {

bool isSamePath(const Path &a, const Path &b)
{
    // Paths that share their elements need no look at each of them.
    return a.elementCount() == b.elementCount() && (a.extends(b) || a == b);
}

/// Makes one call again.
class Caller {
public:
    explicit Caller(GraphicsContext &context) : context_(context) {}

    void operator()(const Save & /*call*/) const { context_.saveState(); }
    void operator()(const Restore & /*call*/) const { context_.restoreState(); }
    void operator()(const Concatenate &call) const { context_.concatenate(call.transform); }
    void operator()(const Clip &call) const { context_.clipToRect(call.rect); }
    void operator()(const SetBlendMode &call) const { context_.setBlendMode(call.mode); }
    void operator()(const SetLineWidth &call) const { context_.setLineWidth(call.width); }
    void operator()(const SetLineCap &call) const { context_.setLineCap(call.cap); }
    void operator()(const SetLineJoin &call) const { context_.setLineJoin(call.join); }
    void operator()(const SetLineDash &call) const
    {
        context_.setLineDash(call.phase, call.lengths);
    }
    void operator()(const SetStrokeColor &call) const { context_.setStrokeColor(call.color); }
    void operator()(const SetFillColor &call) const { context_.setFillColor(call.color); }
    void operator()(const BeginLayer &call) const { context_.beginLayer(call.alpha); }
    void operator()(const EndLayer & /*call*/) const { context_.endLayer(); }
    void operator()(const StrokePath &call) const { context_.strokePath(call.path); }
    void operator()(const FillPath &call) const { context_.fillPath(call.path); }
    void operator()(const FillRect &call) const { context_.fillRect(call.rect, call.operation); }
    void operator()(const DrawImage &call) const
    {
        context_.drawImage(call.image, call.rect, call.operation, call.fraction);
    }
    void operator()(const FillPattern &call) const
    {
        context_.fillPattern(call.rect, call.image, call.operation);
    }
    void operator()(const DrawText &call) const
    {
        context_.drawText(call.text, call.rect, call.font, call.alignment);
    }
    void operator()(const List & /*call*/) const {}

private:
    GraphicsContext &context_;
};

} // namespace

bool operator==(const Clips &a, const Clips &b)
{
    const Clips::Link *one = a.innermost_.get();
    const Clips::Link *other = b.innermost_.get();
    while (one != other && one != nullptr && other != nullptr && one->toDevice == other->toDevice &&
           one->rect == other->rect) {
        one = one->outer.get();
        other = other->outer.get();
    }
    return one == other;
}

bool operator==(const StrokePath &a, const StrokePath &b)
{
    return isSamePath(a.path, b.path);
}

bool operator==(const FillPath &a, const FillPath &b)
{
    return isSamePath(a.path, b.path);
}

} // namespace drawing

void replay(const DrawingRecord &record, std::size_t first, std::size_t last,
            GraphicsContext &context)
{
    const drawing::Caller call(context);
    for (std::size_t index = first; index < last; ++index) {
        std::visit(call, record.calls[index]);
    }
}

} // namespace orv::platform
