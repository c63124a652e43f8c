#include "platform/foundation/ArchiveNode.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/KeyedUnarchiver.h"

#include <fmt/format.h>

namespace orv::platform {

ArchiveNode::ArchiveNode(KeyedUnarchiver &unarchiver, const ArchiveObjects::Value &value,
                         std::size_t depth)
    : unarchiver_(&unarchiver), value_(value), depth_(depth)
{
    if (depth > kMaxArchiveDepth) {
        throw Exception(fmt::format("The archive's values lie more than {} deep in each other.",
                                    kMaxArchiveDepth));
    }
}

void ArchiveNode::require(ArchiveObjects::Kind kind) const
{
    if (value_.kind != kind) {
        throw Exception(fmt::format("The archive's value {} is {}, not {}.", value_.ref,
                                    ArchiveObjects::nameOf(value_.kind),
                                    ArchiveObjects::nameOf(kind)));
    }
}

std::optional<ArchiveNode> ArchiveNode::child(const ArchiveObjects::Value &value) const
{
    if (value.kind == ArchiveObjects::Kind::null) {
        return std::nullopt;
    }
    return ArchiveNode(*unarchiver_, value, depth_ + 1);
}

std::size_t ArchiveNode::size() const
{
    if (!isArray()) {
        require(ArchiveObjects::Kind::dictionary);
    }
    return unarchiver_->objects_.count(value_);
}

std::optional<ArchiveNode> ArchiveNode::at(std::size_t index) const
{
    require(ArchiveObjects::Kind::array);
    unarchiver_->objects_.spend(1);
    return child(unarchiver_->objects_.element(value_, index));
}

std::optional<ArchiveNode> ArchiveNode::find(std::string_view key) const
{
    require(ArchiveObjects::Kind::dictionary);
    unarchiver_->objects_.spend(1);
    return child(unarchiver_->objects_.entry(value_, key));
}

std::int64_t ArchiveNode::asInt() const
{
    require(ArchiveObjects::Kind::number);
    return unarchiver_->objects_.asInt(value_);
}

double ArchiveNode::asDouble() const
{
    require(ArchiveObjects::Kind::number);
    return unarchiver_->objects_.asDouble(value_);
}

bool ArchiveNode::asBool() const
{
    return asDouble() != 0.0;
}

std::string ArchiveNode::asString() const
{
    require(ArchiveObjects::Kind::string);
    return unarchiver_->objects_.asString(value_);
}

std::span<const std::uint8_t> ArchiveNode::asData() const
{
    require(ArchiveObjects::Kind::data);
    return unarchiver_->objects_.asData(value_);
}

std::shared_ptr<Archivable> ArchiveNode::asObject() const
{
    require(ArchiveObjects::Kind::object);
    return unarchiver_->make(value_, depth_);
}

} // namespace orv::platform
