# What `cmake --install` gives: headers, both libraries, find_package(quill), and a pkg-config file that finds its
# prefix by itself, so that the installed tree can be moved.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/quill")
install(TARGETS quill quill_static quill_ole EXPORT quillTargets FILE_SET HEADERS FILE_SET inlines)
install(EXPORT quillTargets NAMESPACE quill:: DESTINATION "${package_dir}")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/quillConfig.cmake.in" "${PROJECT_BINARY_DIR}/quillConfig.cmake"
  INSTALL_DESTINATION "${package_dir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/quillConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/quillConfig.cmake" "${PROJECT_BINARY_DIR}/quillConfigVersion.cmake"
        DESTINATION "${package_dir}")

set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH prefix_from_pc "/${pc_dir}" "/")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
if(WIN32)
  set(ole_libs "-lole32 -loleaut32")
  set(static_requires "")
else()
  set(ole_libs -lquill_ole)
  set(static_requires uchardet)
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/quill.pc.in" "${PROJECT_BINARY_DIR}/quill.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/quill.pc" DESTINATION "${pc_dir}")
