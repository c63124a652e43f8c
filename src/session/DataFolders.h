#pragma once

namespace orv {

/// Sets the names of the application and of its data folders for the active plug-in, and the
/// device name "Default Data".
void initializeDefaultPathSetting();

/// Makes the folders that the names stand for. What can't be made is not there.
void checkWhiteboardDataFolder();

} // namespace orv
