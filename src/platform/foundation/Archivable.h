#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orv::platform {

class KeyedArchiver;

/// How deep lists, dictionaries and objects may lie in each other, both ways.
constexpr std::size_t kMaxArchiveDepth = 128;

/// What can stand in a keyed archive as an object of a class.
///
/// The counterpart for reading is a maker in a `ClassTable`, under the first of the class names.
class Archivable {
public:
    virtual ~Archivable() = default;

    /// The class's own archive name first, then those of its bases, without the common root
    /// class. The names are part of the file.
    [[nodiscard]] virtual std::vector<std::string> archiveClassNames() const = 0;
    /// Writes the object's values through the archiver, each under a key of its own.
    virtual void encodeWithCoder(KeyedArchiver &coder) const = 0;

protected:
    Archivable() = default;
    Archivable(const Archivable &) = default;
    Archivable &operator=(const Archivable &) = default;
};

} // namespace orv::platform
