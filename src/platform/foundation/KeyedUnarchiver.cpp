#include "platform/foundation/KeyedUnarchiver.h"

#include "platform/foundation/ArchiveKey.h"
#include "platform/foundation/Exception.h"

#include <fmt/format.h>

#include <utility>

namespace orv::platform {

/// Moves the decode operations into an object and back out.
class KeyedUnarchiver::MakingScope {
public:
    MakingScope(KeyedUnarchiver &unarchiver, ArchiveObjects::Ref object, std::size_t depth)
        : unarchiver_(unarchiver), scope_(std::exchange(unarchiver.scope_, object)),
          depth_(std::exchange(unarchiver.depth_, depth))
    {
    }
    ~MakingScope()
    {
        unarchiver_.scope_ = scope_;
        unarchiver_.depth_ = depth_;
    }
    MakingScope(const MakingScope &) = delete;
    MakingScope &operator=(const MakingScope &) = delete;

private:
    KeyedUnarchiver &unarchiver_;
    ArchiveObjects::Ref scope_;
    std::size_t depth_;
};

KeyedUnarchiver::KeyedUnarchiver(Data bytes, const ClassTable &classes)
    : objects_(std::move(bytes)), classes_(classes), scope_(objects_.top())
{
}

void KeyedUnarchiver::throwWrongType(std::string_view key, std::string_view found)
{
    throw Exception(fmt::format("The archive holds {} under \"{}\".", found, key));
}

bool KeyedUnarchiver::containsValueForKey(std::string_view key)
{
    return objects_.find(scope_, archiveKey(key)).has_value();
}

std::optional<ArchiveNode> KeyedUnarchiver::decodeNode(std::string_view key)
{
    const std::optional<ArchiveObjects::Ref> ref = objects_.find(scope_, archiveKey(key));
    if (!ref) {
        return std::nullopt;
    }
    const ArchiveObjects::Value value = objects_.value(*ref);
    if (value.kind == ArchiveObjects::Kind::null) {
        return std::nullopt;
    }
    return ArchiveNode(*this, value, depth_ + 1);
}

std::optional<ArchiveNode> KeyedUnarchiver::nodeOfKind(std::string_view key,
                                                       ArchiveObjects::Kind kind)
{
    std::optional<ArchiveNode> node = decodeNode(key);
    if (node && node->value_.kind != kind) {
        throwWrongType(key,
                       fmt::format("{} instead of {}", ArchiveObjects::nameOf(node->value_.kind),
                                   ArchiveObjects::nameOf(kind)));
    }
    return node;
}

std::int64_t KeyedUnarchiver::decodeInt(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::number);
    return node ? node->asInt() : 0;
}

float KeyedUnarchiver::decodeFloat(std::string_view key)
{
    return static_cast<float>(decodeDouble(key));
}

double KeyedUnarchiver::decodeDouble(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::number);
    return node ? node->asDouble() : 0.0;
}

bool KeyedUnarchiver::decodeBool(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::number);
    return node && node->asBool();
}

std::optional<std::string> KeyedUnarchiver::decodeString(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::string);
    if (!node) {
        return std::nullopt;
    }
    return node->asString();
}

std::optional<Data> KeyedUnarchiver::decodeData(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::data);
    if (!node) {
        return std::nullopt;
    }
    const auto bytes = node->asData();
    objects_.spend(bytes.size());
    return Data(bytes.begin(), bytes.end());
}

std::shared_ptr<Archivable> KeyedUnarchiver::decodeObject(std::string_view key)
{
    const auto node = nodeOfKind(key, ArchiveObjects::Kind::object);
    return node ? node->asObject() : nullptr;
}

std::shared_ptr<Archivable> KeyedUnarchiver::make(const ArchiveObjects::Value &value,
                                                  std::size_t depth)
{
    const auto [known, isNew] = made_.try_emplace(value.ref);
    Made &made = known->second;
    if (!isNew) {
        if (made.isInProgress) {
            throw Exception(fmt::format("The archive's object {} of class {} contains itself.",
                                        value.ref, objects_.className(value)));
        }
        return made.object;
    }
    const std::string name = objects_.className(value);
    const ClassTable::Maker *maker = classes_.find(name);
    if (maker == nullptr) {
        made_.erase(value.ref);
        throw Exception(fmt::format("The archive holds an object of the unknown class {}.", name));
    }
    const MakingScope scope(*this, value.ref, depth);
    try {
        made.object = (*maker)(*this);
    } catch (...) {
        made_.erase(value.ref);
        throw;
    }
    made.isInProgress = false;
    return made.object;
}

} // namespace orv::platform
