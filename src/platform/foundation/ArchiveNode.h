#pragma once

#include "platform/foundation/Archivable.h"
#include "platform/foundation/ArchiveObjects.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace orv::platform {

class KeyedUnarchiver;

/// A view of one value of an archive: a number, a string, data, a list, a dictionary or an object.
///
/// Nothing is read before it is asked for. A node borrows its unarchiver, which must outlive it.
///
/// Fails     with an Exception that tells what was found instead: an operation of another kind, an
///           index past the end, damaged bytes, a nesting deeper than `kMaxArchiveDepth`, or more
///           work than the size of the archive explains.
class ArchiveNode {
public:
    [[nodiscard]] bool isNumber() const { return value_.kind == ArchiveObjects::Kind::number; }
    [[nodiscard]] bool isString() const { return value_.kind == ArchiveObjects::Kind::string; }
    [[nodiscard]] bool isData() const { return value_.kind == ArchiveObjects::Kind::data; }
    [[nodiscard]] bool isArray() const { return value_.kind == ArchiveObjects::Kind::array; }
    [[nodiscard]] bool isDictionary() const
    {
        return value_.kind == ArchiveObjects::Kind::dictionary;
    }
    [[nodiscard]] bool isObject() const { return value_.kind == ArchiveObjects::Kind::object; }

    /// The number of values of a list or of entries of a dictionary.
    [[nodiscard]] std::size_t size() const;
    /// A value of a list, from 0; nothing for null.
    [[nodiscard]] std::optional<ArchiveNode> at(std::size_t index) const;
    /// A value of a dictionary; nothing for a missing key and for null.
    [[nodiscard]] std::optional<ArchiveNode> find(std::string_view key) const;

    /// Booleans are 0 and 1; a real loses its fraction, one outside 64 bits throws.
    [[nodiscard]] std::int64_t asInt() const;
    [[nodiscard]] double asDouble() const;
    /// Anything but 0 is true.
    [[nodiscard]] bool asBool() const;
    [[nodiscard]] std::string asString() const;
    /// The bytes inside the archive; valid as long as the unarchiver.
    [[nodiscard]] std::span<const std::uint8_t> asData() const;
    /// Made on the first asking, afterwards the same object.
    [[nodiscard]] std::shared_ptr<Archivable> asObject() const;

private:
    friend class KeyedUnarchiver;
    ArchiveNode(KeyedUnarchiver &unarchiver, const ArchiveObjects::Value &value, std::size_t depth);
    [[nodiscard]] std::optional<ArchiveNode> child(const ArchiveObjects::Value &value) const;
    void require(ArchiveObjects::Kind kind) const;

    KeyedUnarchiver *unarchiver_;
    ArchiveObjects::Value value_;
    std::size_t depth_;
};

} // namespace orv::platform
