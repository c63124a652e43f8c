#pragma once

#include "platform/foundation/UserInfo.h"

#include <functional>
#include <string>

namespace orv {

/// A canvas file that is to be written.
struct CanvasSave {
    std::string path;
    /// Who asked, as the log names it.
    std::string operation;
    /// Makes the bytes, on the thread that writes; not called when the save is dropped.
    std::function<platform::Data()> encode;
};

/// Encodes and writes on a worker thread. Of the saves of one file the one that was asked for last
/// wins, whichever way and by whichever canvas: older ones that still wait are dropped.
///
/// Fails    with a line in the log; the file is then as it was.
void saveOnWorker(CanvasSave save);
/// The same on the calling thread; first waits for a write of this file that is under way.
void saveAtOnce(const CanvasSave &save);

} // namespace orv
