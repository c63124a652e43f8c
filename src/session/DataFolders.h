#pragma once

namespace orv {

/// Sets the names of the application and of its data folders for the active plug-in, and the
/// device name "Default Data".
void initializeDefaultPathSetting();

/// Makes the folders that the names stand for, with a link on the desktop and icons, and puts work
/// of the old flat layout aside. Runs at the start and before each save, so that a folder that the
/// user deleted comes back. What can't be made is not there; nothing is reported.
void checkWhiteboardDataFolder();

/// Gives the folder of the present device its own copy of the old work, and the folders that it
/// lacks. Thread: any, on its own or under the monitor.
void moveDefaultDataToUserFolder();

/// Makes the folder of the present device; true when it was not there before.
bool makeUserFolder();

} // namespace orv
