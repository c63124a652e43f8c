#include "platform/foundation/ArchiveObjects.h"

#include "platform/foundation/Exception.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orv::platform {

namespace {

constexpr std::string_view kArchiver = "NSKeyedArchiver";
constexpr std::int64_t kArchiveVersion = 100000;
// Reading everything once follows each reference once, and no reference takes less than a byte.
constexpr std::size_t kWorkPerByte = 4;
constexpr std::size_t kSpareWork = 65536;
// Below this many entries looking at each of them is faster than an index.
constexpr std::size_t kLongestScan = 16;
// Reading a key for an index only passes over its bytes.
constexpr std::size_t kKeyBytesPerWork = 16;

} // namespace

ArchiveObjects::ArchiveObjects(Data bytes)
    : list_(std::move(bytes)), workLeft_(kSpareWork + kWorkPerByte * list_.byteCount())
{
    const Place root = placeOf(list_.top());
    if (root.item.type != Type::dictionary) {
        throw Exception("The property list is no keyed archive: its top value is no dictionary.");
    }
    const Item archiver = requiredEntry(root, "$archiver", Type::asciiString).item;
    if (!list_.isText(archiver, kArchiver)) {
        throw Exception(fmt::format("The archive was written by \"{}\", not by {}.",
                                    list_.text(archiver), kArchiver));
    }
    const Item version = requiredEntry(root, "$version", Type::integer).item;
    if (list_.integer(version) != kArchiveVersion) {
        throw Exception(fmt::format("The archive has the version {}, not {}.",
                                    list_.integer(version), kArchiveVersion));
    }
    objects_ = requiredEntry(root, "$objects", Type::array).item;
    top_ = requiredEntry(root, "$top", Type::dictionary).ref;
}

std::string_view ArchiveObjects::nameOf(Kind kind)
{
    switch (kind) {
    case Kind::null:
        return "null";
    case Kind::number:
        return "a number";
    case Kind::string:
        return "a string";
    case Kind::data:
        return "data";
    case Kind::array:
        return "an array";
    case Kind::dictionary:
        return "a dictionary";
    case Kind::object:
        break;
    }
    return "an object";
}

void ArchiveObjects::spend(std::size_t work)
{
    if (work > workLeft_) {
        throw Exception(fmt::format("The archive of {} bytes refers to its values over and over; "
                                    "reading it was given up.",
                                    list_.byteCount()));
    }
    workLeft_ -= work;
}

std::optional<ArchiveObjects::Ref> ArchiveObjects::find(Ref dictionary, std::string_view key)
{
    return find(placeOf(dictionary), key);
}

std::optional<ArchiveObjects::Ref> ArchiveObjects::find(const Place &dictionary,
                                                        std::string_view key)
{
    const Item &item = dictionary.item;
    const auto at = position(places_, dictionary, key, [this, &item](std::size_t i) {
        return list_.item(list_.key(item, i));
    });
    if (!at) {
        return std::nullopt;
    }
    return list_.value(item, *at);
}

ArchiveObjects::Place ArchiveObjects::requiredEntry(const Place &dictionary, std::string_view key,
                                                    Type type)
{
    const std::optional<Ref> ref = find(dictionary, key);
    if (!ref) {
        throw Exception(fmt::format("The archive has no \"{}\" in value {}.", key, dictionary.ref));
    }
    const Place target = followed(placeOf(*ref));
    if (target.item.type != type) {
        throw Exception(fmt::format("The archive's \"{}\" in value {} has the wrong type.", key,
                                    dictionary.ref));
    }
    return target;
}

ArchiveObjects::Place ArchiveObjects::followed(const Place &place) const
{
    if (place.item.type != Type::uid) {
        return place;
    }
    const std::uint64_t uid = list_.uid(place.item);
    if (uid >= objects_.count) {
        throw Exception(
            fmt::format("The archive has no object {}; it has {}.", uid, objects_.count));
    }
    return placeOf(list_.element(objects_, uid));
}

ArchiveObjects::Value ArchiveObjects::value(Ref ref)
{
    const Place place = placeOf(ref);
    if (place.item.type == Type::uid && list_.uid(place.item) == 0) {
        return {};
    }
    const Place target = followed(place);
    switch (target.item.type) {
    case Type::null:
        return {};
    case Type::boolean:
    case Type::integer:
    case Type::real:
        return {Kind::number, target.ref, 0};
    case Type::asciiString:
    case Type::utf16String:
        return {Kind::string, target.ref, 0};
    case Type::data:
        return {Kind::data, target.ref, 0};
    case Type::dictionary:
        return classedValue(target);
    default:
        throw Exception(
            fmt::format("The archive's value {} is of a type that no object has.", target.ref));
    }
}

ArchiveObjects::Value ArchiveObjects::classedValue(const Place &dictionary)
{
    const Place description = requiredEntry(dictionary, "$class", Type::dictionary);
    const Kind kind = kindOfClass(description);
    switch (kind) {
    case Kind::string: {
        const std::optional<Ref> content = find(dictionary, "NS.string");
        const Place text = content ? followed(placeOf(*content)) : dictionary;
        if (text.item.type != Type::asciiString && text.item.type != Type::utf16String) {
            throw Exception(fmt::format("The archive's string {} has no text.", dictionary.ref));
        }
        return {kind, text.ref, 0};
    }
    case Kind::data:
        return {kind, requiredEntry(dictionary, "NS.data", Type::data).ref, 0};
    case Kind::array:
        return {kind, requiredEntry(dictionary, "NS.objects", Type::array).ref, 0};
    case Kind::dictionary: {
        const Place values = requiredEntry(dictionary, "NS.objects", Type::array);
        const Place keys = requiredEntry(dictionary, "NS.keys", Type::array);
        if (values.item.count != keys.item.count) {
            throw Exception(fmt::format("The archive's dictionary {} has {} keys and {} values.",
                                        dictionary.ref, keys.item.count, values.item.count));
        }
        return {kind, values.ref, keys.ref};
    }
    default:
        return {Kind::object, dictionary.ref, description.ref};
    }
}

ArchiveObjects::Kind ArchiveObjects::kindOfClass(const Place &description)
{
    const auto [known, isNew] = classKinds_.try_emplace(description.ref, Kind::object);
    if (isNew) {
        const Item name = requiredEntry(description, "$classname", Type::asciiString).item;
        const auto is = [&](std::string_view immutable, std::string_view mutableForm) {
            return list_.isText(name, immutable) || list_.isText(name, mutableForm);
        };
        if (is("NSArray", "NSMutableArray")) {
            known->second = Kind::array;
        } else if (is("NSDictionary", "NSMutableDictionary")) {
            known->second = Kind::dictionary;
        } else if (is("NSString", "NSMutableString")) {
            known->second = Kind::string;
        } else if (is("NSData", "NSMutableData")) {
            known->second = Kind::data;
        }
    }
    return known->second;
}

std::string ArchiveObjects::className(const Value &object)
{
    const Item name = requiredEntry(placeOf(object.extra), "$classname", Type::asciiString).item;
    spend(name.count);
    return list_.text(name);
}

std::size_t ArchiveObjects::count(const Value &container) const
{
    return list_.item(container.ref).count;
}

ArchiveObjects::Value ArchiveObjects::element(const Value &array, std::size_t index)
{
    const Item item = list_.item(array.ref);
    if (index >= item.count) {
        throw Exception(fmt::format("The archive's array {} has no value {}; it has {}.", array.ref,
                                    index, item.count));
    }
    return value(list_.element(item, index));
}

ArchiveObjects::Value ArchiveObjects::entry(const Value &dictionary, std::string_view key)
{
    const Place keys = placeOf(dictionary.extra);
    const auto at = position(archivedPlaces_, keys, key, [this, &keys](std::size_t i) {
        return keyItem(list_.element(keys.item, i));
    });
    return at ? value(list_.element(list_.item(dictionary.ref), *at)) : Value{};
}

ArchiveObjects::Item ArchiveObjects::keyItem(Ref ref)
{
    const Value key = value(ref);
    if (key.kind != Kind::string) {
        throw Exception(fmt::format("The archive has a dictionary with {} as a key in value {}.",
                                    nameOf(key.kind), ref));
    }
    return list_.item(key.ref);
}

std::optional<std::size_t> ArchiveObjects::position(RecentPlaces &recent, const Place &keys,
                                                    std::string_view key, const KeyAt &keyAt)
{
    if (keys.item.count > kLongestScan) {
        return indexedPosition(keys, key, keyAt);
    }
    if (const auto place = recent.find(list_, keys.item, key)) {
        return place;
    }
    for (std::size_t i = 0; i < keys.item.count; ++i) {
        if (list_.isText(keyAt(i), key)) {
            recent.remember(keys.item, key, i);
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> ArchiveObjects::indexedPosition(const Place &keys, std::string_view key,
                                                           const KeyAt &keyAt)
{
    const Index &places = index(keys, keyAt);
    const std::size_t hash = std::hash<std::string_view>{}(key);
    for (auto place = std::lower_bound(places.begin(), places.end(), Index::value_type{hash, 0});
         place != places.end() && place->first == hash; ++place) {
        spend(1);
        if (list_.isText(keyAt(place->second), key)) {
            return place->second;
        }
    }
    return std::nullopt;
}

const ArchiveObjects::Index &ArchiveObjects::index(const Place &keys, const KeyAt &keyAt)
{
    const auto known = indexes_.find(keys.ref);
    if (known != indexes_.end()) {
        return known->second;
    }
    Index places;
    places.reserve(keys.item.count);
    for (std::size_t i = 0; i < keys.item.count; ++i) {
        const Item item = keyAt(i);
        spend(1 + item.count / kKeyBytesPerWork);
        places.emplace_back(std::hash<std::string>{}(list_.text(item)), i);
    }
    std::sort(places.begin(), places.end());
    return indexes_.emplace(keys.ref, std::move(places)).first->second;
}

std::int64_t ArchiveObjects::asInt(const Value &number) const
{
    const Item item = list_.item(number.ref);
    if (item.type != Type::real) {
        return list_.integer(item);
    }
    // The limits as doubles: the upper one is the first number that no longer fits.
    constexpr double kBound = 9223372036854775808.0;
    const double real = list_.real(item);
    if (!(real >= -kBound && real < kBound)) {
        throw Exception(fmt::format("The number {} is no 64-bit integer.", real));
    }
    return static_cast<std::int64_t>(real);
}

double ArchiveObjects::asDouble(const Value &number) const
{
    const Item item = list_.item(number.ref);
    return item.type == Type::real ? list_.real(item) : static_cast<double>(list_.integer(item));
}

std::string ArchiveObjects::asString(const Value &string)
{
    const Item item = list_.item(string.ref);
    spend(item.count);
    return list_.text(item);
}

std::span<const std::uint8_t> ArchiveObjects::asData(const Value &data) const
{
    return list_.data(list_.item(data.ref));
}

} // namespace orv::platform
