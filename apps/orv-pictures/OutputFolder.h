#pragma once

#include <QByteArray>

#include <string>

namespace orv::pictures {

/// A folder that files are written to; it is made when it is missing.
///
/// Fails    throws `PictureError` that names the path.
class OutputFolder {
public:
    explicit OutputFolder(const std::string &path);

    /// Whole or not at all. A file that has these bytes already is not touched.
    void write(const std::string &name, const QByteArray &bytes) const;

private:
    std::string path_;
};

} // namespace orv::pictures
