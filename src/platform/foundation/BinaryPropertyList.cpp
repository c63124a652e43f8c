#include "platform/foundation/BinaryPropertyList.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/TextConversion.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace orv::platform {

namespace {

constexpr std::string_view kMagic = "bplist00";
constexpr std::size_t kTrailerBytes = 32;
constexpr std::size_t kWidest = sizeof(std::uint64_t);
constexpr unsigned kCountFollows = 0x0F;
constexpr unsigned kIntKind = 0x1;

bool isPrefix(std::string_view prefix, std::span<const std::uint8_t> bytes)
{
    return bytes.size() >= prefix.size() && std::equal(prefix.begin(), prefix.end(), bytes.begin());
}

[[noreturn]] void throwUnknownMarker(unsigned marker, std::size_t offset)
{
    throw Exception(fmt::format("The property list has an unknown kind of value 0x{:02X} at byte "
                                "{}.",
                                marker, offset));
}

BinaryPropertyList::Type countedType(unsigned marker, std::size_t offset)
{
    using Type = BinaryPropertyList::Type;
    switch (marker >> 4U) {
    case 0x4:
        return Type::data;
    case 0x5:
        return Type::asciiString;
    case 0x6:
        return Type::utf16String;
    case 0xA:
        return Type::array;
    case 0xB:
    case 0xC:
        return Type::set;
    case 0xD:
        return Type::dictionary;
    default:
        throwUnknownMarker(marker, offset);
    }
}

} // namespace

BinaryPropertyList::BinaryPropertyList(Data bytes) : bytes_(std::move(bytes))
{
    readTrailer();
    checkValues();
}

void BinaryPropertyList::readTrailer()
{
    if (!isPrefix(kMagic, bytes_)) {
        throw Exception("The bytes are no binary property list: they don't begin with bplist00.");
    }
    if (bytes_.size() < kMagic.size() + kTrailerBytes) {
        throw Exception(fmt::format("The property list is cut off after {} bytes.", bytes_.size()));
    }
    const std::size_t trailer = bytes_.size() - kTrailerBytes;
    offsetWidth_ = bytes_[trailer + 6];
    refWidth_ = bytes_[trailer + 7];
    const std::uint64_t size = bigEndian(trailer + 8, kWidest);
    const std::uint64_t top = bigEndian(trailer + 16, kWidest);
    const std::uint64_t table = bigEndian(trailer + 24, kWidest);
    if (offsetWidth_ < 1 || offsetWidth_ > kWidest || refWidth_ < 1 || refWidth_ > kWidest) {
        throw Exception(fmt::format("The property list has numbers of {} and {} bytes.",
                                    offsetWidth_, refWidth_));
    }
    if (table < kMagic.size() || table > trailer || (trailer - table) % offsetWidth_ != 0 ||
        (trailer - table) / offsetWidth_ != size) {
        throw Exception(fmt::format("The property list of {} bytes is cut off or damaged: its "
                                    "table of {} values does not lie at byte {}.",
                                    bytes_.size(), size, table));
    }
    if (top >= size || size > std::numeric_limits<Ref>::max()) {
        throw Exception(
            fmt::format("The property list's top value {} is not among its {} values.", top, size));
    }
    table_ = table;
    size_ = static_cast<Ref>(size);
    top_ = static_cast<Ref>(top);
}

void BinaryPropertyList::checkValues() const
{
    std::size_t left = table_ - kMagic.size();
    for (Ref ref = 0; ref < size_; ++ref) {
        const std::uint64_t offset = bigEndian(table_ + ref * offsetWidth_, offsetWidth_);
        if (offset < kMagic.size() || offset >= table_) {
            throw Exception(fmt::format("The property list's value {} lies at byte {}, outside of "
                                        "the values.",
                                        ref, offset));
        }
        const Item item = itemAt(offset);
        const std::size_t taken = item.body + bodyBytes(item) - offset;
        if (taken > left) {
            throw Exception("The property list's values lie on top of each other.");
        }
        left -= taken;
    }
}

BinaryPropertyList::Item BinaryPropertyList::item(Ref ref) const
{
    if (ref >= size_) {
        throw Exception(fmt::format("The property list has no value {}; it has {}.", ref, size_));
    }
    return itemAt(bigEndian(table_ + ref * offsetWidth_, offsetWidth_));
}

BinaryPropertyList::Item BinaryPropertyList::itemAt(std::size_t offset) const
{
    const unsigned marker = bytes_[offset];
    const std::size_t low = marker & 0x0FU;
    Item item{Type::null, 0, offset + 1};
    switch (marker) {
    case 0x00:
        return item;
    case 0x08:
    case 0x09:
        item = {Type::boolean, marker & 1U, offset + 1};
        return item;
    case 0x10:
    case 0x11:
    case 0x12:
    case 0x13:
    case 0x14:
        item = {Type::integer, std::size_t{1} << low, offset + 1};
        break;
    case 0x22:
    case 0x23:
        item = {Type::real, std::size_t{1} << low, offset + 1};
        break;
    case 0x33:
        item = {Type::date, kWidest, offset + 1};
        break;
    default:
        if ((marker >> 4U) != 0x8) {
            return countedItemAt(offset);
        }
        item = {Type::uid, low + 1, offset + 1};
    }
    if (item.count > table_ - item.body) {
        throw Exception(fmt::format("The property list is cut off in a value at byte {}.", offset));
    }
    return item;
}

BinaryPropertyList::Item BinaryPropertyList::countedItemAt(std::size_t offset) const
{
    const unsigned marker = bytes_[offset];
    Item item{countedType(marker, offset), marker & 0x0FU, offset + 1};
    if (item.count == kCountFollows) {
        const unsigned widthMarker = item.body < table_ ? bytes_[item.body] : 0U;
        const std::size_t width = std::size_t{1} << (widthMarker & 0x0FU);
        if ((widthMarker >> 4U) != kIntKind || width > kWidest || width >= table_ - item.body) {
            throw Exception(
                fmt::format("The property list's value at byte {} has no valid count.", offset));
        }
        item.count = bigEndian(item.body + 1, width);
        item.body += 1 + width;
    }
    // No count is larger than the bytes there are, so that its products below can't overflow.
    const std::size_t room = table_ - item.body;
    if (item.count > room || bodyBytes(item) > room) {
        throw Exception(fmt::format("The property list's value at byte {} claims {} parts, more "
                                    "than there are bytes.",
                                    offset, item.count));
    }
    return item;
}

std::size_t BinaryPropertyList::bodyBytes(const Item &item) const
{
    switch (item.type) {
    case Type::null:
    case Type::boolean:
        return 0;
    case Type::utf16String:
        return item.count * sizeof(char16_t);
    case Type::array:
    case Type::set:
        return item.count * refWidth_;
    case Type::dictionary:
        return item.count * 2 * refWidth_;
    default:
        return item.count;
    }
}

std::int64_t BinaryPropertyList::integer(const Item &item) const
{
    if (item.type == Type::boolean) {
        return static_cast<std::int64_t>(item.count);
    }
    const bool isWide = item.count > kWidest;
    const std::size_t low = isWide ? item.body + kWidest : item.body;
    const std::uint64_t bits = bigEndian(low, std::min(item.count, kWidest));
    const auto number = static_cast<std::int64_t>(bits);
    if (isWide) {
        const std::uint64_t high = bigEndian(item.body, kWidest);
        if (high != (number < 0 ? ~std::uint64_t{0} : std::uint64_t{0})) {
            throw Exception(
                fmt::format("The integer at byte {} does not fit into 64 bits.", item.body - 1));
        }
    }
    return number;
}

double BinaryPropertyList::real(const Item &item) const
{
    const std::uint64_t bits = bigEndian(item.body, item.count);
    if (item.count == sizeof(float)) {
        return std::bit_cast<float>(static_cast<std::uint32_t>(bits));
    }
    return std::bit_cast<double>(bits);
}

std::uint64_t BinaryPropertyList::uid(const Item &item) const
{
    if (item.count > kWidest) {
        throw Exception(fmt::format("The UID at byte {} has {} bytes.", item.body - 1, item.count));
    }
    return bigEndian(item.body, item.count);
}

std::span<const std::uint8_t> BinaryPropertyList::data(const Item &item) const
{
    return std::span(bytes_).subspan(item.body, item.count);
}

std::string BinaryPropertyList::text(const Item &item) const
{
    if (item.type == Type::asciiString) {
        const auto ascii = data(item);
        if (std::any_of(ascii.begin(), ascii.end(), [](auto byte) { return byte >= 0x80; })) {
            throw Exception(
                fmt::format("The ASCII string before byte {} has other bytes.", item.body));
        }
        return {ascii.begin(), ascii.end()};
    }
    std::u16string units(item.count, u'\0');
    for (std::size_t i = 0; i < item.count; ++i) {
        units[i] = static_cast<char16_t>(bigEndian(item.body + 2 * i, sizeof(char16_t)));
    }
    return utf8FromUtf16(units);
}

bool BinaryPropertyList::isText(const Item &item, std::string_view text) const
{
    if (item.type == Type::asciiString) {
        const auto ascii = data(item);
        return std::equal(ascii.begin(), ascii.end(), text.begin(), text.end(),
                          [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
    }
    // No unit becomes less than one byte.
    return item.type == Type::utf16String && item.count <= text.size() && this->text(item) == text;
}

BinaryPropertyList::Ref BinaryPropertyList::reference(std::size_t offset) const
{
    const std::uint64_t ref = bigEndian(offset, refWidth_);
    if (ref >= size_) {
        throw Exception(fmt::format("The property list has no value {}, which byte {} refers to; "
                                    "it has {}.",
                                    ref, offset, size_));
    }
    return static_cast<Ref>(ref);
}

BinaryPropertyList::Ref BinaryPropertyList::element(const Item &item, std::size_t index) const
{
    return reference(item.body + index * refWidth_);
}

BinaryPropertyList::Ref BinaryPropertyList::key(const Item &item, std::size_t index) const
{
    return reference(item.body + index * refWidth_);
}

BinaryPropertyList::Ref BinaryPropertyList::value(const Item &item, std::size_t index) const
{
    return reference(item.body + (item.count + index) * refWidth_);
}

bool BinaryPropertyList::haveSameReferences(const Item &a, const Item &b) const
{
    return a.body == b.body ||
           std::memcmp(bytes_.data() + a.body, bytes_.data() + b.body, a.count * refWidth_) == 0;
}

} // namespace orv::platform
