#include "platform/foundation/KeyedArchiver.h"

namespace orv::platform {

void ArchiveArray::add(std::uint32_t uid)
{
    archiver_.pending_.push_back({0, archiver_.uidRef(uid)});
}

void ArchiveArray::addInt(std::int64_t value)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.leafUid(archiver_.writer_.addInt(value)));
}

void ArchiveArray::addDouble(double value)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.leafUid(archiver_.writer_.addDouble(value)));
}

void ArchiveArray::addBool(bool value)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.leafUid(archiver_.writer_.addBool(value)));
}

void ArchiveArray::addString(const std::optional<std::string> &value)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.stringUid(value));
}

void ArchiveArray::addData(std::span<const std::uint8_t> bytes)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.dataUid(bytes));
}

void ArchiveArray::addObject(const std::shared_ptr<const Archivable> &object)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.objectUid(object));
}

void ArchiveArray::addArray(const Fill &fill)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.arrayUid(fill));
}

void ArchiveArray::addDictionary(const std::function<void(ArchiveDictionary &)> &fill)
{
    archiver_.requireInnermost(depth_);
    add(archiver_.dictionaryUid(fill));
}

void ArchiveDictionary::set(std::string_view key, std::uint32_t uid)
{
    const std::uint32_t keyRef = archiver_.keyRef(key);
    archiver_.pending_.push_back({keyRef, archiver_.uidRef(uid)});
}

void ArchiveDictionary::setInt(std::string_view key, std::int64_t value)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.leafUid(archiver_.writer_.addInt(value)));
}

void ArchiveDictionary::setDouble(std::string_view key, double value)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.leafUid(archiver_.writer_.addDouble(value)));
}

void ArchiveDictionary::setBool(std::string_view key, bool value)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.leafUid(archiver_.writer_.addBool(value)));
}

void ArchiveDictionary::setString(std::string_view key, const std::optional<std::string> &value)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.stringUid(value));
}

void ArchiveDictionary::setData(std::string_view key, std::span<const std::uint8_t> bytes)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.dataUid(bytes));
}

void ArchiveDictionary::setObject(std::string_view key,
                                  const std::shared_ptr<const Archivable> &object)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.objectUid(object));
}

void ArchiveDictionary::setArray(std::string_view key, const ArchiveArray::Fill &fill)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.arrayUid(fill));
}

void ArchiveDictionary::setDictionary(std::string_view key, const Fill &fill)
{
    archiver_.requireInnermost(depth_);
    set(key, archiver_.dictionaryUid(fill));
}

} // namespace orv::platform
