# The installed package: libraries, public headers, the QML module, KyrSceneOutlineConfig.cmake.
include(CMakePackageConfigHelpers)

set(KYR_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/KyrSceneOutline)
set(KYR_INSTALL_QMLDIR ${CMAKE_INSTALL_LIBDIR}/qml)

set_target_properties(kyr_host kyr_scene_outline kyr_scene_outline_panel PROPERTIES
    INSTALL_RPATH "$ORIGIN")
install(TARGETS kyr_cpp_utils kyr_host kyr_scene_outline kyr_scene_outline_panel
    EXPORT KyrSceneOutlineTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT KyrSceneOutlineTargets NAMESPACE Kyr:: DESTINATION ${KYR_INSTALL_CMAKEDIR})

install(DIRECTORY host lib/kyr_cpp_utils
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES tools/common/string_utils.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tools/common)
install(FILES
    lib/kyr_scene_outline/abstract_filter_data.h
    lib/kyr_scene_outline/abstract_selectable_data.h
    lib/kyr_scene_outline/export.h
    lib/kyr_scene_outline/item_roles.h
    lib/kyr_scene_outline/property_job.h
    lib/kyr_scene_outline/property_paste_report.h
    lib/kyr_scene_outline/scene_browser_data.h
    lib/kyr_scene_outline/scene_browser_extension.h
    lib/kyr_scene_outline/scene_browser_panel_base.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kyr_scene_outline)

install(TARGETS kyr_scene_outline_panelplugin
    LIBRARY DESTINATION ${KYR_INSTALL_QMLDIR}/Kyr/SceneOutline)
install(DIRECTORY panel/qml/ DESTINATION ${KYR_INSTALL_QMLDIR}/Kyr/SceneOutline)

configure_package_config_file(cmake/KyrSceneOutlineConfig.cmake.in
    ${PROJECT_BINARY_DIR}/KyrSceneOutlineConfig.cmake
    INSTALL_DESTINATION ${KYR_INSTALL_CMAKEDIR}
    PATH_VARS KYR_INSTALL_QMLDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KyrSceneOutlineConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/KyrSceneOutlineConfig.cmake
    ${PROJECT_BINARY_DIR}/KyrSceneOutlineConfigVersion.cmake
    DESTINATION ${KYR_INSTALL_CMAKEDIR})
