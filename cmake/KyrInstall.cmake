# What is installed: libraries, public headers, the QML module, the CMake package and its pkg-config
# file. The editor and its extensions say themselves what of them is.
include(CMakePackageConfigHelpers)

set(KYR_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/KyrSceneOutline)

install(TARGETS kyr_host_core kyr_cpp_utils kyr_host kyr_scene_outline kyr_scene_outline_testkit
    EXPORT KyrSceneOutlineTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT KyrSceneOutlineTargets NAMESPACE Kyr:: DESTINATION ${KYR_INSTALL_CMAKEDIR})

install(DIRECTORY host lib/kyr_cpp_utils
    DESTINATION ${KYR_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES tools/common/string_utils.h DESTINATION ${KYR_INSTALL_INCLUDEDIR}/tools/common)
# The headers at the top of the library are the public ones.
file(GLOB kyr_public_headers CONFIGURE_DEPENDS lib/kyr_scene_outline/*.h)
install(FILES ${kyr_public_headers} ${PROJECT_BINARY_DIR}/include/kyr_scene_outline/version.h
    DESTINATION ${KYR_INSTALL_INCLUDEDIR}/kyr_scene_outline)

install(FILES
    testkit/kyr_scene_outline_testkit/contract.h
    testkit/kyr_scene_outline_testkit/export.h
    testkit/kyr_scene_outline_testkit/random_driver.h
    testkit/kyr_scene_outline_testkit/scene_under_test.h
    DESTINATION ${KYR_INSTALL_INCLUDEDIR}/kyr_scene_outline_testkit)

# The panel is reached through QML alone: its library is part of the module, not of the package.
install(TARGETS kyr_scene_outline_panel LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)
install(TARGETS kyr_scene_outline_panelplugin
    LIBRARY DESTINATION ${KYR_INSTALL_QMLDIR}/Kyr/SceneOutline)
install(DIRECTORY panel/qml/ DESTINATION ${KYR_INSTALL_QMLDIR}/Kyr/SceneOutline)
install(FILES ${KyrSceneOutline_QML_IMPORT_PATH}/Kyr/SceneOutline/plugins.qmltypes
    DESTINATION ${KYR_INSTALL_QMLDIR}/Kyr/SceneOutline OPTIONAL)

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

# Relative to the file itself: the package may be unpacked anywhere.
file(RELATIVE_PATH kyr_pkgconfig_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/kyr_scene_outline.pc.in ${PROJECT_BINARY_DIR}/kyr_scene_outline.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kyr_scene_outline.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(KYR_IS_TOP_LEVEL)
    set(CPACK_GENERATOR DEB)
    set(CPACK_STRIP_FILES ON)
    set(CPACK_PACKAGE_NAME kyr-scene-outline)
    set(CPACK_PACKAGE_CONTACT "Kyr Scene Outline developers")
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR})
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml-module-qtquick2, qml-module-qtquick-controls2, qml-module-qtquick-layouts, qml-module-qtquick-templates2, qml-module-qtquick-window2, qml-module-qtquick-dialogs, qml-module-qtqml, qml-module-qtqml-models2, qml-module-qt-labs-settings")
    include(CPack)
endif()
