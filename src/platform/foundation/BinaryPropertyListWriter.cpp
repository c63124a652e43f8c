#include "platform/foundation/BinaryPropertyListWriter.h"

#include "platform/foundation/Exception.h"
#include "platform/foundation/TextConversion.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string_view>
#include <utility>

namespace orv::platform {

namespace {

constexpr std::string_view kMagic = "bplist00";
constexpr std::size_t kRefWidth = sizeof(BinaryPropertyListWriter::Ref);
constexpr std::size_t kTrailerPadding = 6;
constexpr std::size_t kTrailerBytes = 32;
constexpr std::size_t kLargestShortCount = 14;

constexpr std::uint8_t kFalse = 0x08;
constexpr std::uint8_t kTrue = 0x09;
constexpr std::uint8_t kInt = 0x10;
constexpr std::uint8_t kReal32 = 0x22;
constexpr std::uint8_t kReal64 = 0x23;
constexpr std::uint8_t kData = 0x40;
constexpr std::uint8_t kAsciiString = 0x50;
constexpr std::uint8_t kUtf16String = 0x60;
constexpr std::uint8_t kUid = 0x80;
constexpr std::uint8_t kArray = 0xA0;
constexpr std::uint8_t kDictionary = 0xD0;

/// 0, 1, 2 or 3 for the 1, 2, 4 or 8 bytes that the number takes.
unsigned widthExponent(std::uint64_t value)
{
    if (value <= std::numeric_limits<std::uint8_t>::max()) {
        return 0;
    }
    if (value <= std::numeric_limits<std::uint16_t>::max()) {
        return 1;
    }
    return value <= std::numeric_limits<std::uint32_t>::max() ? 2 : 3;
}

void writeBigEndian(std::uint8_t *place, std::uint64_t value, std::size_t width)
{
    for (std::size_t i = 0; i < width; ++i) {
        place[i] = static_cast<std::uint8_t>(value >> (8U * (width - 1 - i)));
    }
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<std::uint8_t>(c) < 0x80; });
}

} // namespace

BinaryPropertyListWriter::BinaryPropertyListWriter() : bytes_(kMagic.begin(), kMagic.end()) {}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::begin()
{
    if (offsets_.size() >= std::numeric_limits<Ref>::max()) {
        throw Exception("A property list can't hold more than 4294967295 values.");
    }
    offsets_.push_back(bytes_.size());
    return static_cast<Ref>(offsets_.size() - 1);
}

// Takes back what was written last when an equal value stands in the file already.
BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addUnique()
{
    const std::size_t first = offsets_.back();
    const std::string_view encoded(reinterpret_cast<const char *>(bytes_.data()) + first,
                                   bytes_.size() - first);
    const auto found = unique_.find(encoded);
    if (found == unique_.end()) {
        const auto last = static_cast<Ref>(offsets_.size() - 1);
        unique_.emplace(encoded, last);
        return last;
    }
    offsets_.pop_back();
    bytes_.resize(first);
    return found->second;
}

void BinaryPropertyListWriter::putByte(std::uint8_t byte)
{
    bytes_.push_back(byte);
}

std::uint8_t *BinaryPropertyListWriter::room(std::size_t count)
{
    const std::size_t used = bytes_.size();
    bytes_.resize(used + count);
    return bytes_.data() + used;
}

void BinaryPropertyListWriter::putBigEndian(std::uint64_t value, std::size_t width)
{
    writeBigEndian(room(width), value, width);
}

void BinaryPropertyListWriter::putCount(std::uint8_t kind, std::size_t count)
{
    if (count <= kLargestShortCount) {
        putByte(static_cast<std::uint8_t>(kind | count));
        return;
    }
    const unsigned exponent = widthExponent(count);
    putByte(static_cast<std::uint8_t>(kind | 0x0FU));
    putByte(static_cast<std::uint8_t>(kInt | exponent));
    putBigEndian(count, std::size_t{1} << exponent);
}

void BinaryPropertyListWriter::putRefs(std::span<const Ref> refs)
{
    std::uint8_t *place = room(refs.size() * kRefWidth);
    for (const Ref ref : refs) {
        writeBigEndian(place, ref, kRefWidth);
        place += kRefWidth;
    }
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addInt(std::int64_t value)
{
    begin();
    const auto bits = static_cast<std::uint64_t>(value);
    const unsigned exponent = widthExponent(bits);
    putByte(static_cast<std::uint8_t>(kInt | exponent));
    putBigEndian(bits, std::size_t{1} << exponent);
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addFloat(float value)
{
    begin();
    putByte(kReal32);
    putBigEndian(std::bit_cast<std::uint32_t>(value), sizeof value);
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addDouble(double value)
{
    begin();
    putByte(kReal64);
    putBigEndian(std::bit_cast<std::uint64_t>(value), sizeof value);
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addBool(bool value)
{
    begin();
    putByte(value ? kTrue : kFalse);
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addString(std::string_view text)
{
    begin();
    if (isAscii(text)) {
        putCount(kAsciiString, text.size());
        bytes_.insert(bytes_.end(), text.begin(), text.end());
    } else {
        const std::u16string units = utf16FromUtf8(text);
        putCount(kUtf16String, units.size());
        for (const char16_t unit : units) {
            putBigEndian(unit, sizeof unit);
        }
    }
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addData(std::span<const std::uint8_t> bytes)
{
    const Ref ref = begin();
    putCount(kData, bytes.size());
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return ref;
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addUid(std::uint32_t uid)
{
    const Ref ref = begin();
    const std::size_t width = std::size_t{1} << widthExponent(uid);
    putByte(static_cast<std::uint8_t>(kUid | (width - 1)));
    putBigEndian(uid, width);
    return ref;
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addArray(std::span<const Ref> values)
{
    const Ref ref = begin();
    putCount(kArray, values.size());
    putRefs(values);
    return ref;
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addSharedArray(std::span<const Ref> values)
{
    addArray(values);
    return addUnique();
}

BinaryPropertyListWriter::Ref BinaryPropertyListWriter::addDictionary(std::span<const Ref> keys,
                                                                      std::span<const Ref> values)
{
    const Ref ref = begin();
    putCount(kDictionary, keys.size());
    putRefs(keys);
    putRefs(values);
    return ref;
}

Data BinaryPropertyListWriter::finish(Ref top)
{
    const std::uint64_t table = bytes_.size();
    const std::size_t offsetWidth = std::size_t{1} << widthExponent(table);
    bytes_.reserve(bytes_.size() + offsets_.size() * offsetWidth + kTrailerBytes);
    std::uint8_t *place = room(offsets_.size() * offsetWidth);
    for (const std::uint64_t offset : offsets_) {
        writeBigEndian(place, offset, offsetWidth);
        place += offsetWidth;
    }
    bytes_.insert(bytes_.end(), kTrailerPadding, 0);
    putByte(static_cast<std::uint8_t>(offsetWidth));
    putByte(static_cast<std::uint8_t>(kRefWidth));
    putBigEndian(offsets_.size(), sizeof(std::uint64_t));
    putBigEndian(top, sizeof(std::uint64_t));
    putBigEndian(table, sizeof(std::uint64_t));
    return std::exchange(bytes_, {});
}

} // namespace orv::platform
