#pragma once

#include "orvane-streamer/remote/PairedBrowsers.h"

#include <functional>
#include <string>
#include <vector>

namespace orv::apps {

/// The file that lets paired browsers come back after the server was started again.
///
/// Only its owner may read it. A file that is damaged, or that others could have read or written,
/// is set aside with ".unusable" after its name. Fails    with a line to `report`; browsers are
/// then paired again.
class BrowsersFile {
public:
    using Report = std::function<void(const std::string &line)>;

    /// An empty path remembers nothing.
    BrowsersFile(std::string path, Report report);

    [[nodiscard]] std::vector<PairedBrowser> load() const;
    /// Replaces the file as a whole; makes its folder.
    void save(const std::vector<PairedBrowser> &browsers) const;

private:
    void setAside(const std::string &why) const;

    std::string path_;
    Report report_;
};

} // namespace orv::apps
