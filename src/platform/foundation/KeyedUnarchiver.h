#pragma once

#include "platform/foundation/ArchiveNode.h"
#include "platform/foundation/ArchiveObjects.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/UserInfo.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orv::platform {

/// Reads a keyed archive, whoever wrote it: mutable and immutable forms of strings, data, lists
/// and dictionaries alike.
///
/// The decode operations read in the object that is being made, or at the top. An object that is
/// referred to more than once is made once. Nothing is expanded ahead: what is not asked for costs
/// no memory.
///
/// Owns      the bytes. Borrows the class table, which must outlive it.
/// Thread    any, one at a time.
/// Fails     with an Exception that names the key or the object: bytes that are no archive, a
///           value of another type than asked for, an object of a class that is not in the table,
///           an object that contains itself, a nesting deeper than `kMaxArchiveDepth`, more work
///           than the size of the archive explains.
class KeyedUnarchiver {
public:
    KeyedUnarchiver(Data bytes, const ClassTable &classes);
    KeyedUnarchiver(const KeyedUnarchiver &) = delete;
    KeyedUnarchiver &operator=(const KeyedUnarchiver &) = delete;

    /// True for a key whose value is null, too.
    [[nodiscard]] bool containsValueForKey(std::string_view key);
    /// 0 if absent. Booleans are 0 and 1; a real loses its fraction.
    [[nodiscard]] std::int64_t decodeInt(std::string_view key);
    /// 0 if absent; wider numbers are narrowed.
    [[nodiscard]] float decodeFloat(std::string_view key);
    [[nodiscard]] double decodeDouble(std::string_view key);
    /// False if absent; a number other than 0 is true.
    [[nodiscard]] bool decodeBool(std::string_view key);
    /// Nothing for an absent key and for null, as below.
    [[nodiscard]] std::optional<std::string> decodeString(std::string_view key);
    [[nodiscard]] std::optional<Data> decodeData(std::string_view key);
    /// A value of any type; the way to lists and dictionaries.
    [[nodiscard]] std::optional<ArchiveNode> decodeNode(std::string_view key);
    [[nodiscard]] std::shared_ptr<Archivable> decodeObject(std::string_view key);
    /// The same for one class and those derived from it.
    template <class T> [[nodiscard]] std::shared_ptr<T> decodeObjectOf(std::string_view key)
    {
        const std::shared_ptr<Archivable> object = decodeObject(key);
        auto typed = std::dynamic_pointer_cast<T>(object);
        if (object && !typed) {
            throwWrongType(key, "an object of another class");
        }
        return typed;
    }

private:
    friend class ArchiveNode;
    class MakingScope;

    struct Made {
        std::shared_ptr<Archivable> object;
        bool isInProgress = true;
    };

    [[noreturn]] static void throwWrongType(std::string_view key, std::string_view found);
    [[nodiscard]] std::optional<ArchiveNode> nodeOfKind(std::string_view key,
                                                        ArchiveObjects::Kind kind);
    [[nodiscard]] std::shared_ptr<Archivable> make(const ArchiveObjects::Value &value,
                                                   std::size_t depth);

    ArchiveObjects objects_;
    const ClassTable &classes_;
    /// The property list dictionary that the decode operations read in, and how deep it lies.
    ArchiveObjects::Ref scope_;
    std::size_t depth_ = 0;
    std::unordered_map<ArchiveObjects::Ref, Made> made_;
};

} // namespace orv::platform
