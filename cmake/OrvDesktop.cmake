# What makes the streamer a program of a desktop: menu entry, icon, manual, user service.

set(orv_desktop ${PROJECT_SOURCE_DIR}/resources/desktop)
configure_file(${orv_desktop}/orvane-streamer.service.in
               ${PROJECT_BINARY_DIR}/orvane-streamer.service @ONLY)

install(FILES ${orv_desktop}/orvane-streamer.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${orv_desktop}/com.orvane.Orvane-Streamer.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${orv_desktop}/com.orvane.Orvane-Streamer.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${orv_desktop}/com.orvane.Orvane-Streamer.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
# Where the user's service manager looks, whatever the architecture's folder of libraries is.
install(FILES ${PROJECT_BINARY_DIR}/orvane-streamer.service DESTINATION lib/systemd/user)
