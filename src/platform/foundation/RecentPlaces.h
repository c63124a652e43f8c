#pragma once

#include "platform/foundation/BinaryPropertyList.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orv::platform {

/// Where keys were found last. An archive holds many dictionaries of a few kinds, and those of one
/// kind refer to the same keys in the same order: then nothing but the references is looked at.
///
/// Thread   any, one at a time.
class RecentPlaces {
public:
    using Item = BinaryPropertyList::Item;

    /// The place of `key` where the last item that had it begins with the same references as
    /// `keys`; nothing where it has to be looked for.
    [[nodiscard]] std::optional<std::size_t> find(const BinaryPropertyList &list, const Item &keys,
                                                  std::string_view key) const
    {
        const Found &found = places_[key.size() % places_.size()];
        if (found.key && *found.key == key && found.keys.count == keys.count &&
            list.haveSameReferences(found.keys, keys)) {
            return found.place;
        }
        return std::nullopt;
    }
    void remember(const Item &keys, std::string_view key, std::size_t place)
    {
        places_[key.size() % places_.size()] = {std::string(key), keys, place};
    }

private:
    struct Found {
        std::optional<std::string> key;
        Item keys{};
        std::size_t place = 0;
    };

    /// By the length of the key.
    std::array<Found, 16> places_;
};

} // namespace orv::platform
