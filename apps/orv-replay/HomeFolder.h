#pragma once

#include <string>

namespace orv::apps {

/// The home folder of one run: the one that was asked for, or a fresh one for that run alone.
///
/// Owns     the fresh one, which goes with all that is in it when this object goes.
/// Fails    the constructor throws `std::runtime_error` when no folder can be made.
class HomeFolder {
public:
    /// An empty text asks for a fresh folder.
    explicit HomeFolder(const std::string &asked);
    ~HomeFolder();
    HomeFolder(const HomeFolder &) = delete;
    HomeFolder &operator=(const HomeFolder &) = delete;

    /// Absolute, without a slash at its end.
    [[nodiscard]] const std::string &path() const { return path_; }

private:
    std::string path_;
    bool temporary_ = false;
};

} // namespace orv::apps
