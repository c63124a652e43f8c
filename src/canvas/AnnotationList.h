#pragma once

#include "canvas/Annotation.h"
#include "platform/ports/DrawnList.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orv {

/// A stack of annotations, the newest last: what lies over what.
///
/// Every annotation that comes onto a list brings a stamp that no other has had, so that who draws
/// the list sees at once how much of it is as it was.
///
/// Thread   main thread only.
class AnnotationList final : public platform::DrawnList {
public:
    using Pointer = std::shared_ptr<Annotation>;
    using value_type = Pointer;
    using const_iterator = std::vector<Pointer>::const_iterator;

    void push_back(Pointer annotation)
    {
        static std::atomic<std::uint64_t> last = 0;
        annotations_.push_back(std::move(annotation));
        stamps_.push_back(++last);
    }
    void pop_back()
    {
        annotations_.pop_back();
        stamps_.pop_back();
    }
    void clear()
    {
        annotations_.clear();
        stamps_.clear();
    }

    [[nodiscard]] bool empty() const { return annotations_.empty(); }
    [[nodiscard]] const Pointer &front() const { return annotations_.front(); }
    [[nodiscard]] const Pointer &back() const { return annotations_.back(); }
    [[nodiscard]] const Pointer &at(std::size_t index) const { return annotations_.at(index); }
    [[nodiscard]] const Pointer &operator[](std::size_t index) const { return annotations_[index]; }
    [[nodiscard]] const_iterator begin() const { return annotations_.begin(); }
    [[nodiscard]] const_iterator end() const { return annotations_.end(); }

    [[nodiscard]] std::size_t size() const override { return annotations_.size(); }
    [[nodiscard]] std::uint64_t stamp(std::size_t count) const override
    {
        return count == 0 ? 0 : stamps_[count - 1];
    }
    void draw(std::size_t index, platform::GraphicsContext &context) const override
    {
        annotations_[index]->draw(context);
    }

    /// The same annotations, whatever their stamps.
    friend bool operator==(const AnnotationList &a, const AnnotationList &b)
    {
        return a.annotations_ == b.annotations_;
    }

private:
    std::vector<Pointer> annotations_;
    std::vector<std::uint64_t> stamps_;
};

} // namespace orv
