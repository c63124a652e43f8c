#pragma once

#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/RecentPlaces.h"
#include "platform/foundation/UserInfo.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orv::platform {

/// The values of a keyed archive: follows references, tells the platform's own strings, data,
/// lists and dictionaries from objects, and finds keys.
///
/// Counts the work that the readers make: a file whose values refer to each other over and over
/// can't cost more than a multiple of its size.
///
/// Fails     with an Exception that names the value.
class ArchiveObjects {
public:
    using Ref = BinaryPropertyList::Ref;
    enum class Kind { null, number, string, data, array, dictionary, object };
    struct Value {
        Kind kind = Kind::null;
        /// The number, string or data itself; the list of the values of an array or a dictionary;
        /// the property list dictionary of an object.
        Ref ref = 0;
        /// The list of keys of a dictionary, the class description of an object.
        Ref extra = 0;
    };

    explicit ArchiveObjects(Data bytes);

    [[nodiscard]] static std::string_view nameOf(Kind kind);
    /// The property list dictionary of the top-level values.
    [[nodiscard]] Ref top() const { return top_; }

    /// A value of a property list dictionary, not yet followed.
    [[nodiscard]] std::optional<Ref> find(Ref dictionary, std::string_view key);
    /// What a property list value stands for, once a reference is followed.
    [[nodiscard]] Value value(Ref ref);
    [[nodiscard]] std::string className(const Value &object);

    /// The number of values of an array or entries of a dictionary.
    [[nodiscard]] std::size_t count(const Value &container) const;
    [[nodiscard]] Value element(const Value &array, std::size_t index);
    /// Null for a missing key.
    [[nodiscard]] Value entry(const Value &dictionary, std::string_view key);

    [[nodiscard]] std::int64_t asInt(const Value &number) const;
    [[nodiscard]] double asDouble(const Value &number) const;
    [[nodiscard]] std::string asString(const Value &string);
    [[nodiscard]] std::span<const std::uint8_t> asData(const Value &data) const;

    /// Takes from the work that is left.
    void spend(std::size_t work);

private:
    using Item = BinaryPropertyList::Item;
    using Type = BinaryPropertyList::Type;
    /// (hash of the key, position), in order.
    using Index = std::vector<std::pair<std::size_t, std::size_t>>;
    using KeyAt = std::function<Item(std::size_t)>;

    /// A value and where its content lies.
    struct Place {
        Ref ref;
        Item item;
    };

    [[nodiscard]] Place placeOf(Ref ref) const { return {ref, list_.item(ref)}; }
    [[nodiscard]] Place followed(const Place &place) const;
    [[nodiscard]] std::optional<Ref> find(const Place &dictionary, std::string_view key);
    [[nodiscard]] Place requiredEntry(const Place &dictionary, std::string_view key, Type type);
    [[nodiscard]] Value classedValue(const Place &dictionary);
    [[nodiscard]] Kind kindOfClass(const Place &description);
    [[nodiscard]] Item keyItem(Ref ref);
    [[nodiscard]] std::optional<std::size_t> position(RecentPlaces &recent, const Place &keys,
                                                      std::string_view key, const KeyAt &keyAt);
    [[nodiscard]] std::optional<std::size_t>
    indexedPosition(const Place &keys, std::string_view key, const KeyAt &keyAt);
    [[nodiscard]] const Index &index(const Place &keys, const KeyAt &keyAt);

    BinaryPropertyList list_;
    std::size_t workLeft_;

    Item objects_{};
    Ref top_ = 0;
    std::unordered_map<Ref, Kind> classKinds_;
    std::unordered_map<Ref, Index> indexes_;
    /// Of the keys of property list dictionaries, which are strings, and of those of archived
    /// dictionaries, which refer to strings.
    RecentPlaces places_;
    RecentPlaces archivedPlaces_;
};

} // namespace orv::platform
