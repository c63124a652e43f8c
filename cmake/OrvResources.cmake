# The resource folder as programs find it: in the build tree, and as it is installed. What lies in
# resources/ is copied, but for the pictures, which are drawn from their templates, and for what is
# installed elsewhere.

set(ORV_BUILT_RESOURCES ${PROJECT_BINARY_DIR}/share/OrvAnnotation)

set(orv_copies)
file(GLOB orv_folders CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/*)
list(REMOVE_ITEM orv_folders ${PROJECT_SOURCE_DIR}/resources/desktop
     ${PROJECT_SOURCE_DIR}/resources/pictures)
foreach(folder ${orv_folders})
    cmake_path(GET folder FILENAME name)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${folder}/*)
    set(copy ${PROJECT_BINARY_DIR}/share/${name}.stamp)
    add_custom_command(
        OUTPUT ${copy}
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${ORV_BUILT_RESOURCES}/${name}
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${folder} ${ORV_BUILT_RESOURCES}/${name}
        COMMAND ${CMAKE_COMMAND} -E touch ${copy}
        DEPENDS ${files}
        VERBATIM)
    list(APPEND orv_copies ${copy})
endforeach()
add_custom_target(orv_resources ALL DEPENDS ${orv_copies})

# orv_stage_pictures(PROGRAM): `orv_resources` has the pictures as this program draws them.
function(orv_stage_pictures program)
    set(templates ${PROJECT_SOURCE_DIR}/resources/pictures)
    set(drawn ${PROJECT_BINARY_DIR}/share/pictures.stamp)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${templates}/*.svg ${templates}/*.json)
    add_custom_command(
        OUTPUT ${drawn}
        COMMAND ${program} --templates ${templates} --out ${ORV_BUILT_RESOURCES}/pictures
        COMMAND ${CMAKE_COMMAND} -E touch ${drawn}
        DEPENDS ${program} ${files}
        VERBATIM)
    add_custom_target(orv_pictures DEPENDS ${drawn})
    add_dependencies(orv_resources orv_pictures)
endfunction()

# orv_use_resources(PROGRAM): it knows the folder as ORV_BUILT_RESOURCES, and building it fills that.
function(orv_use_resources program)
    target_compile_definitions(${program} PRIVATE ORV_BUILT_RESOURCES="${ORV_BUILT_RESOURCES}")
    add_dependencies(${program} orv_resources)
endfunction()
