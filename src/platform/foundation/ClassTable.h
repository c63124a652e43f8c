#pragma once

#include "platform/foundation/Archivable.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orv::platform {

class KeyedUnarchiver;

/// Which classes an archive may hold: a maker by archive class name.
///
/// An object of a class that is not in the table is refused; nothing is looked up elsewhere.
class ClassTable {
public:
    /// Makes an object from the values of the unarchiver's current scope. May answer null, which
    /// then stands for the object.
    using Maker = std::function<std::shared_ptr<Archivable>(KeyedUnarchiver &)>;

    /// A name that is added again takes the new maker.
    void add(std::string_view name, Maker maker)
    {
        makers_.insert_or_assign(std::string(name), std::move(maker));
    }
    /// Null for an unknown name; valid until the table changes.
    [[nodiscard]] const Maker *find(std::string_view name) const
    {
        const auto found = makers_.find(name);
        return found == makers_.end() ? nullptr : &found->second;
    }

private:
    std::map<std::string, Maker, std::less<>> makers_;
};

} // namespace orv::platform
