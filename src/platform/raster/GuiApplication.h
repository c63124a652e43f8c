#pragma once

namespace orv::platform {

/// Makes sure that text can be painted: without an application object it makes one that needs no
/// display, for the rest of the process. Does nothing when there is one.
///
/// Thread   the main thread.
void ensureGuiApplication();

} // namespace orv::platform
