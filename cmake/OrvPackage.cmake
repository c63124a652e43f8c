# The shared library of all folders, and what `cmake --install` lays down.

include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_RPATH "\$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

get_property(orv_parts GLOBAL PROPERTY ORV_LIBRARIES)

add_library(OrvAnnotation SHARED)
add_library(OrvAnnotation::OrvAnnotation ALIAS OrvAnnotation)
set_target_properties(
    OrvAnnotation
    PROPERTIES LINKER_LANGUAGE CXX
               VERSION ${PROJECT_VERSION}
               SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
target_compile_features(OrvAnnotation INTERFACE cxx_std_20)
target_include_directories(
    OrvAnnotation INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
# All objects of each part are in, used or not; linking the parts brings what they link themselves.
foreach(part ${orv_parts})
    target_sources(OrvAnnotation PRIVATE $<TARGET_OBJECTS:${part}>)
endforeach()
target_link_libraries(OrvAnnotation PRIVATE ${orv_parts})

install(TARGETS OrvAnnotation EXPORT OrvAnnotationTargets)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/OrvAnnotation TYPE INCLUDE FILES_MATCHING
        PATTERN "*.h")
install(DIRECTORY ${ORV_BUILT_RESOURCES}/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/OrvAnnotation
        PATTERN "contact-sheet.png" EXCLUDE)

set(orv_package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/OrvAnnotation)
install(EXPORT OrvAnnotationTargets NAMESPACE OrvAnnotation:: DESTINATION ${orv_package_folder})
configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/OrvAnnotationConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OrvAnnotationConfig.cmake INSTALL_DESTINATION ${orv_package_folder})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/OrvAnnotationConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvAnnotationConfig.cmake
              ${PROJECT_BINARY_DIR}/OrvAnnotationConfigVersion.cmake
        DESTINATION ${orv_package_folder})
