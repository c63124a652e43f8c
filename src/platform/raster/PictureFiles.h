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
/// Thread   any; nobody waits while another thread decodes.
class PictureFiles final : public Pictures {
public:
    /// What is kept takes at most about this many bytes, or else it is one picture alone.
    static constexpr std::size_t kept = std::size_t{64} * 1024 * 1024;

    [[nodiscard]] ImagePtr picture(const std::string &path) override;
    [[nodiscard]] ImagePtr paint(int width, int height,
                                 const std::function<void(GraphicsContext &)> &body) override;
    bool save(const std::string &path, const Image &image, PictureKind kind,
              float quality) override;

    /// How often a file was decoded so far, its finer one with it.
    [[nodiscard]] std::uint64_t decoded() const;

private:
    /// What tells one state of a file from another. The time is that of the last change of any
    /// kind, which no program can set back.
    struct Stamp {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::int64_t bytes = -1;
        std::uint64_t inode = 0;
        std::uint64_t device = 0;
        friend bool operator==(const Stamp &, const Stamp &) = default;
    };
    struct Entry {
        std::string path;
        Stamp stamp;
        Stamp finerStamp;
        /// Null for a file that is no picture.
        ImagePtr image;
        std::size_t size = 0;
    };

    [[nodiscard]] static Stamp stampOf(const std::string &path);
    void keep(Entry entry);
    void forget(const std::string &path);

    mutable std::mutex mutex_;
    std::list<Entry> entries_;
    std::unordered_map<std::string, std::list<Entry>::iterator> byPath_;
    std::size_t size_ = 0;
    std::uint64_t decoded_ = 0;
};

} // namespace orv::platform
