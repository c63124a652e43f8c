#pragma once

#include "canvas/Annotation.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace orv {

/// The table of kinds: type number, archive name and makers of each class of annotations.
///
/// Filled by functions such as `registerStrokeAnnotations`, which the session and the tests call;
/// filling it again changes nothing. Main thread only.
class AnnotationRegistry {
public:
    static AnnotationRegistry &shared();

    /// Adds a class with a default constructor and one from a `KeyedUnarchiver &`.
    template <class Kind> void add(std::int32_t type, const std::string &archiveName)
    {
        makers_[type] = [] { return std::make_shared<Kind>(); };
        classes_.add(archiveName, [](platform::KeyedUnarchiver &coder) {
            return std::make_shared<Kind>(coder);
        });
    }

    /// Null for a number that is not in the table.
    [[nodiscard]] std::shared_ptr<Annotation> make(std::int32_t type) const;
    /// What an unarchiver needs to bring annotations back; knows the bare `Annotation` too.
    [[nodiscard]] const platform::ClassTable &classes() const { return classes_; }

private:
    AnnotationRegistry();

    std::map<std::int32_t, std::function<std::shared_ptr<Annotation>()>> makers_;
    platform::ClassTable classes_;
};

/// Pen and highlighter.
void registerStrokeAnnotations(AnnotationRegistry &registry);

} // namespace orv
