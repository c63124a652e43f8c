#include "platform/foundation/KeyedArchiver.h"

#include "platform/foundation/ArchiveKey.h"
#include "platform/foundation/BinaryPropertyList.h"
#include "platform/foundation/Exception.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>

namespace orv::platform {

namespace {

constexpr std::uint32_t kNullUid = 0;
constexpr std::int64_t kArchiveVersion = 100000;
constexpr std::string_view kRootClass = "NSObject";

const std::vector<std::string> &arrayClass()
{
    static const std::vector<std::string> names{"NSArray"};
    return names;
}

const std::vector<std::string> &dictionaryClass()
{
    static const std::vector<std::string> names{"NSDictionary"};
    return names;
}

} // namespace

/// An object, list or dictionary that is being written; takes back its values when it ends.
class KeyedArchiver::Scope {
public:
    Scope(KeyedArchiver &archiver, bool isContainer)
        : archiver_(archiver), first_(archiver.pending_.size()),
          wasInContainer_(archiver.isInContainer_)
    {
        if (archiver.depth_ + 1 >= kMaxArchiveDepth) {
            throw Exception(fmt::format("An archive's values can't lie more than {} deep in each "
                                        "other.",
                                        kMaxArchiveDepth));
        }
        ++archiver.depth_;
        archiver.isInContainer_ = isContainer;
    }
    ~Scope()
    {
        archiver_.pending_.resize(first_);
        --archiver_.depth_;
        archiver_.isInContainer_ = wasInContainer_;
    }
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;

    [[nodiscard]] std::size_t first() const { return first_; }

private:
    KeyedArchiver &archiver_;
    std::size_t first_;
    bool wasInContainer_;
};

std::size_t KeyedArchiver::ClassNamesHash::operator()(const std::vector<std::string> &names) const
{
    return names.empty() ? 0 : std::hash<std::string>{}(names.front());
}

KeyedArchiver::KeyedArchiver()
    : classKey_(writer_.addString("$class")), keysKey_(writer_.addString("NS.keys")),
      objectsKey_(writer_.addString("NS.objects"))
{
    objects_.push_back(writer_.addString("$null"));
    uidRefs_.push_back(kUnwritten);
}

void KeyedArchiver::requireOpen(std::string_view key) const
{
    if (isFinished_) {
        throw Exception(fmt::format("The archive is finished and takes no \"{}\".", key));
    }
    if (isInContainer_) {
        throw Exception(
            fmt::format("\"{}\" was encoded while a list or dictionary is filled.", key));
    }
}

void KeyedArchiver::requireInnermost(std::size_t depth) const
{
    if (depth != depth_ || !isInContainer_) {
        throw Exception("A list or dictionary was added to while a value inside of it is filled.");
    }
}

void KeyedArchiver::put(std::string_view key, Ref value)
{
    pending_.push_back({writer_.addString(archiveKey(key)), value});
}

void KeyedArchiver::encodeInt(std::string_view key, std::int64_t value)
{
    requireOpen(key);
    put(key, writer_.addInt(value));
}

void KeyedArchiver::encodeFloat(std::string_view key, float value)
{
    requireOpen(key);
    put(key, writer_.addFloat(value));
}

void KeyedArchiver::encodeDouble(std::string_view key, double value)
{
    requireOpen(key);
    put(key, writer_.addDouble(value));
}

void KeyedArchiver::encodeBool(std::string_view key, bool value)
{
    requireOpen(key);
    put(key, writer_.addBool(value));
}

void KeyedArchiver::encodeString(std::string_view key, const std::optional<std::string> &value)
{
    requireOpen(key);
    put(key, uidRef(stringUid(value)));
}

void KeyedArchiver::encodeData(std::string_view key, std::span<const std::uint8_t> bytes)
{
    requireOpen(key);
    put(key, uidRef(dataUid(bytes)));
}

void KeyedArchiver::encodeObject(std::string_view key,
                                 const std::shared_ptr<const Archivable> &object)
{
    requireOpen(key);
    put(key, uidRef(objectUid(object)));
}

void KeyedArchiver::encodeArray(std::string_view key, const ArchiveArray::Fill &fill)
{
    requireOpen(key);
    put(key, uidRef(arrayUid(fill)));
}

void KeyedArchiver::encodeDictionary(std::string_view key, const ArchiveDictionary::Fill &fill)
{
    requireOpen(key);
    put(key, uidRef(dictionaryUid(fill)));
}

KeyedArchiver::Ref KeyedArchiver::uidRef(Uid uid)
{
    Ref &ref = uidRefs_[uid];
    if (ref == kUnwritten) {
        ref = writer_.addUid(uid);
    }
    return ref;
}

KeyedArchiver::Uid KeyedArchiver::newUid()
{
    objects_.push_back(kUnwritten);
    uidRefs_.push_back(kUnwritten);
    return static_cast<Uid>(objects_.size() - 1);
}

KeyedArchiver::Uid KeyedArchiver::leafUid(Ref leaf)
{
    const auto [found, isNew] = leafUids_.try_emplace(leaf, kNullUid);
    if (isNew) {
        found->second = newUid();
        objects_[found->second] = leaf;
    }
    return found->second;
}

KeyedArchiver::Uid KeyedArchiver::stringUid(const std::optional<std::string> &value)
{
    return value ? leafUid(writer_.addString(*value)) : kNullUid;
}

// The dictionaries of a list ask for the same few keys over and over.
KeyedArchiver::Ref KeyedArchiver::keyRef(std::string_view key)
{
    RecentKey &recent = recentKeys_[key.size() % recentKeys_.size()];
    if (recent.key != key || key.empty()) {
        recent = {std::string(key), uidRef(leafUid(writer_.addString(key)))};
    }
    return recent.ref;
}

KeyedArchiver::Uid KeyedArchiver::dataUid(std::span<const std::uint8_t> bytes)
{
    const Uid uid = newUid();
    objects_[uid] = writer_.addData(bytes);
    return uid;
}

KeyedArchiver::Uid KeyedArchiver::objectUid(const std::shared_ptr<const Archivable> &object)
{
    if (!object) {
        return kNullUid;
    }
    if (const auto found = objectUids_.find(object.get()); found != objectUids_.end()) {
        return found->second;
    }
    const Uid uid = newUid();
    objectUids_.emplace(object.get(), uid);
    kept_.push_back(object);
    const Scope scope(*this, false);
    object->encodeWithCoder(*this);
    putClass(object->archiveClassNames());
    requireDistinctKeys(scope.first());
    objects_[uid] = pendingDictionary(scope.first());
    return uid;
}

KeyedArchiver::Uid KeyedArchiver::arrayUid(const ArchiveArray::Fill &fill)
{
    const Uid uid = newUid();
    const Scope scope(*this, true);
    ArchiveArray array(*this, depth_);
    fill(array);
    const Ref values = pendingValues(scope.first());
    pending_.push_back({objectsKey_, values});
    putClass(arrayClass());
    objects_[uid] = pendingDictionary(pending_.size() - 2);
    return uid;
}

KeyedArchiver::Uid KeyedArchiver::dictionaryUid(const ArchiveDictionary::Fill &fill)
{
    const Uid uid = newUid();
    const Scope scope(*this, true);
    ArchiveDictionary dictionary(*this, depth_);
    fill(dictionary);
    const Ref keys = pendingKeys(scope.first());
    const Ref values = pendingValues(scope.first());
    pending_.push_back({keysKey_, keys});
    pending_.push_back({objectsKey_, values});
    if (dictionaryClassRef_ == kUnwritten) {
        dictionaryClassRef_ = uidRef(classUid(dictionaryClass()));
    }
    pending_.push_back({classKey_, dictionaryClassRef_});
    objects_[uid] = pendingDictionary(pending_.size() - 3);
    return uid;
}

void KeyedArchiver::putClass(const std::vector<std::string> &names)
{
    pending_.push_back({classKey_, uidRef(classUid(names))});
}

KeyedArchiver::Uid KeyedArchiver::classUid(const std::vector<std::string> &names)
{
    if (names.empty()) {
        throw Exception("An object without a class name can't be archived.");
    }
    const auto [found, isNew] = classUids_.try_emplace(names, kNullUid);
    if (isNew) {
        found->second = newUid();
        std::vector<Ref> classes;
        classes.reserve(names.size() + 1);
        for (const std::string &name : names) {
            classes.push_back(writer_.addString(name));
        }
        classes.push_back(writer_.addString(kRootClass));
        const std::array<Ref, 2> keys{writer_.addString("$classname"),
                                      writer_.addString("$classes")};
        const std::array<Ref, 2> values{classes.front(), writer_.addArray(classes)};
        objects_[found->second] = writer_.addDictionary(keys, values);
    }
    return found->second;
}

// The dictionaries of a list mostly have the same keys, so lists of keys are shared.
KeyedArchiver::Ref KeyedArchiver::pendingKeys(std::size_t first)
{
    const auto isKey = [](const Pending &pending, Ref key) { return pending.key == key; };
    if (!std::equal(pending_.begin() + static_cast<std::ptrdiff_t>(first), pending_.end(),
                    lastKeys_.begin(), lastKeys_.end(), isKey) ||
        lastKeys_.empty()) {
        requireDistinctKeys(first);
        lastKeys_.clear();
        for (std::size_t i = first; i < pending_.size(); ++i) {
            lastKeys_.push_back(pending_[i].key);
        }
        lastKeysRef_ = writer_.addSharedArray(lastKeys_);
    }
    return lastKeysRef_;
}

KeyedArchiver::Ref KeyedArchiver::pendingValues(std::size_t first)
{
    scratch_.clear();
    for (std::size_t i = first; i < pending_.size(); ++i) {
        scratch_.push_back(pending_[i].value);
    }
    return writer_.addArray(scratch_);
}

KeyedArchiver::Ref KeyedArchiver::pendingDictionary(std::size_t first)
{
    scratch_.clear();
    scratchValues_.clear();
    for (std::size_t i = first; i < pending_.size(); ++i) {
        scratch_.push_back(pending_[i].key);
        scratchValues_.push_back(pending_[i].value);
    }
    return writer_.addDictionary(scratch_, scratchValues_);
}

void KeyedArchiver::requireDistinctKeys(std::size_t first)
{
    scratch_.clear();
    for (std::size_t i = first; i < pending_.size(); ++i) {
        scratch_.push_back(pending_[i].key);
    }
    std::sort(scratch_.begin(), scratch_.end());
    const auto twice = std::adjacent_find(scratch_.begin(), scratch_.end());
    if (twice != scratch_.end()) {
        throw Exception(fmt::format("The key \"{}\" was encoded twice.", keyName(*twice)));
    }
}

// Only asked for on a failure: reads the key back out of what is written so far.
std::string KeyedArchiver::keyName(Ref key) const
{
    const BinaryPropertyList list(BinaryPropertyListWriter(writer_).finish(key));
    const auto item = list.item(key);
    const bool isUid = item.type == BinaryPropertyList::Type::uid;
    return list.text(isUid ? list.item(objects_[list.uid(item)]) : item);
}

Data KeyedArchiver::finishEncoding()
{
    requireOpen("finishEncoding");
    if (depth_ != 0) {
        throw Exception("An archive can't be finished while an object is being encoded.");
    }
    if (std::find(objects_.begin(), objects_.end(), kUnwritten) != objects_.end()) {
        throw Exception("An archive can't be finished after a value in it could not be encoded.");
    }
    requireDistinctKeys(0);
    const Ref top = pendingDictionary(0);
    isFinished_ = true;
    const std::array<Ref, 4> keys{writer_.addString("$version"), writer_.addString("$archiver"),
                                  writer_.addString("$top"), writer_.addString("$objects")};
    const std::array<Ref, 4> values{writer_.addInt(kArchiveVersion),
                                    writer_.addString("NSKeyedArchiver"), top,
                                    writer_.addArray(objects_)};
    return writer_.finish(writer_.addDictionary(keys, values));
}

} // namespace orv::platform
