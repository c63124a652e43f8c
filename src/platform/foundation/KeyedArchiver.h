#pragma once

#include "platform/foundation/Archivable.h"
#include "platform/foundation/BinaryPropertyListWriter.h"
#include "platform/foundation/UserInfo.h"

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orv::platform {

class ArchiveDictionary;
class KeyedArchiver;

/// The list that is being filled inside `encodeArray`, `addArray` or `setArray`.
///
/// Lives as long as the call of its fill function. It takes values only while nothing inside of it
/// is being filled; otherwise it throws an Exception.
class ArchiveArray {
public:
    using Fill = std::function<void(ArchiveArray &)>;

    void addInt(std::int64_t value);
    void addDouble(double value);
    void addBool(bool value);
    /// Nothing writes null.
    void addString(const std::optional<std::string> &value);
    void addData(std::span<const std::uint8_t> bytes);
    /// Null writes null.
    void addObject(const std::shared_ptr<const Archivable> &object);
    void addArray(const Fill &fill);
    void addDictionary(const std::function<void(ArchiveDictionary &)> &fill);

private:
    friend class KeyedArchiver;
    ArchiveArray(KeyedArchiver &archiver, std::size_t depth) : archiver_(archiver), depth_(depth) {}
    void add(std::uint32_t uid);

    KeyedArchiver &archiver_;
    std::size_t depth_;
};

/// The dictionary that is being filled inside `encodeDictionary`, `addDictionary` or
/// `setDictionary`. Lives and refuses as `ArchiveArray` does; a key is set once.
class ArchiveDictionary {
public:
    using Fill = std::function<void(ArchiveDictionary &)>;

    void setInt(std::string_view key, std::int64_t value);
    void setDouble(std::string_view key, double value);
    void setBool(std::string_view key, bool value);
    /// Nothing writes null.
    void setString(std::string_view key, const std::optional<std::string> &value);
    void setData(std::string_view key, std::span<const std::uint8_t> bytes);
    /// Null writes null.
    void setObject(std::string_view key, const std::shared_ptr<const Archivable> &object);
    void setArray(std::string_view key, const ArchiveArray::Fill &fill);
    void setDictionary(std::string_view key, const Fill &fill);

private:
    friend class KeyedArchiver;
    ArchiveDictionary(KeyedArchiver &archiver, std::size_t depth)
        : archiver_(archiver), depth_(depth)
    {
    }
    void set(std::string_view key, std::uint32_t uid);

    KeyedArchiver &archiver_;
    std::size_t depth_;
};

/// Writes a keyed archive: values by key at the top and inside of objects, as a binary property
/// list in the layout of the platform's keyed archiver.
///
/// The encode operations write into the object that is being encoded, or at the top. An object
/// that is encoded again becomes a reference to the first; equal strings, numbers and class
/// descriptions are stored once. Values go to the file's bytes as they come, no tree is built:
/// time and memory grow with the number of values.
///
/// Owns      the bytes, and shares the objects that it was given until it ends.
/// Thread    any, one at a time.
/// Fails     with an Exception that names the key: a key that is set twice in one object, a
///           nesting deeper than `kMaxArchiveDepth`, anything after `finishEncoding`.
class KeyedArchiver {
public:
    KeyedArchiver();
    KeyedArchiver(const KeyedArchiver &) = delete;
    KeyedArchiver &operator=(const KeyedArchiver &) = delete;

    void encodeInt(std::string_view key, std::int64_t value);
    void encodeFloat(std::string_view key, float value);
    void encodeDouble(std::string_view key, double value);
    void encodeBool(std::string_view key, bool value);
    /// UTF-8; a malformed byte becomes U+FFFD. Nothing writes null.
    void encodeString(std::string_view key, const std::optional<std::string> &value);
    void encodeData(std::string_view key, std::span<const std::uint8_t> bytes);
    /// Null writes null.
    void encodeObject(std::string_view key, const std::shared_ptr<const Archivable> &object);
    /// Calls `fill` once, at once.
    void encodeArray(std::string_view key, const ArchiveArray::Fill &fill);
    void encodeDictionary(std::string_view key, const ArchiveDictionary::Fill &fill);

    /// Closes the archive and gives its bytes; once.
    [[nodiscard]] Data finishEncoding();

private:
    friend class ArchiveArray;
    friend class ArchiveDictionary;
    using Ref = BinaryPropertyListWriter::Ref;
    using Uid = std::uint32_t;
    static constexpr Ref kUnwritten = std::numeric_limits<Ref>::max();

    class Scope;

    /// One entry of an object or dictionary, or one value of a list, whose key means nothing.
    struct Pending {
        Ref key;
        Ref value;
    };
    /// A key of a dictionary and the reference to its UID.
    struct RecentKey {
        std::string key;
        Ref ref = 0;
    };
    struct ClassNamesHash {
        std::size_t operator()(const std::vector<std::string> &names) const;
    };

    void requireOpen(std::string_view key) const;
    void requireInnermost(std::size_t depth) const;
    void put(std::string_view key, Ref value);
    void putClass(const std::vector<std::string> &names);
    Ref uidRef(Uid uid);
    Uid newUid();
    Uid leafUid(Ref leaf);
    Uid stringUid(const std::optional<std::string> &value);
    Uid dataUid(std::span<const std::uint8_t> bytes);
    Uid objectUid(const std::shared_ptr<const Archivable> &object);
    Uid arrayUid(const ArchiveArray::Fill &fill);
    Uid dictionaryUid(const ArchiveDictionary::Fill &fill);
    Uid classUid(const std::vector<std::string> &names);
    Ref keyRef(std::string_view key);
    Ref pendingKeys(std::size_t first);
    Ref pendingValues(std::size_t first);
    Ref pendingDictionary(std::size_t first);
    void requireDistinctKeys(std::size_t first);
    [[nodiscard]] std::string keyName(Ref key) const;

    BinaryPropertyListWriter writer_;
    Ref classKey_;
    Ref keysKey_;
    Ref objectsKey_;
    /// The values of all open scopes, innermost last.
    std::vector<Pending> pending_;
    std::size_t depth_ = 0;
    bool isInContainer_ = false;
    /// By UID: the written object, or `kUnwritten` while it is open.
    std::vector<Ref> objects_;
    /// By UID: the UID value itself as it stands in the file, once somebody refers to it.
    std::vector<Ref> uidRefs_;
    std::unordered_map<Ref, Uid> leafUids_;
    std::unordered_map<const Archivable *, Uid> objectUids_;
    std::vector<std::shared_ptr<const Archivable>> kept_;
    std::unordered_map<std::vector<std::string>, Uid, ClassNamesHash> classUids_;
    /// By the length of the key.
    std::array<RecentKey, 16> recentKeys_;
    std::vector<Ref> lastKeys_;
    Ref lastKeysRef_ = 0;
    Ref dictionaryClassRef_ = kUnwritten;
    std::vector<Ref> scratch_;
    std::vector<Ref> scratchValues_;
    bool isFinished_ = false;
};

} // namespace orv::platform
