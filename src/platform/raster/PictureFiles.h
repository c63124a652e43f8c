#pragma once

#include "platform/ports/Pictures.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>

namespace orv::platform {

/// Picture files, decoded once and kept while they do not change, the latest used ones first.
///
/// Thread   any.
class PictureFiles final : public Pictures {
public:
    /// What is kept is at most about this many bytes of pixels.
    static constexpr std::size_t kept = 64U * 1024U * 1024U;

    [[nodiscard]] ImagePtr picture(const std::string &path) override;

    /// How many files were decoded so far.
    [[nodiscard]] std::uint64_t decoded() const;

private:
    /// What tells one state of a file from another.
    struct Stamp {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::int64_t bytes = -1;
        std::uint64_t inode = 0;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    struct Entry {
        std::string path;
        Stamp stamp;
        Stamp finerStamp;
        ImagePtr image;
        std::size_t size = 0;
    };

    [[nodiscard]] static Stamp stampOf(const std::string &path);
    void forget(std::list<Entry>::iterator entry);

    mutable std::mutex mutex_;
    std::list<Entry> entries_;
    std::unordered_map<std::string, std::list<Entry>::iterator> byPath_;
    std::size_t size_ = 0;
    std::uint64_t decoded_ = 0;
};

} // namespace orv::platform
