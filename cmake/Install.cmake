# What an installation holds besides the programs and the script module: the library, its headers for C and C++, its
# data, the manual page, and the package by which other projects find it.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Quillbox)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/quillbox)

set_target_properties(quillbox PROPERTIES EXPORT_NAME Quillbox)
target_compile_features(quillbox INTERFACE cxx_std_20)
install(TARGETS quillbox EXPORT QuillboxTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${header_dir})
install(EXPORT QuillboxTargets NAMESPACE Quillbox:: DESTINATION ${package_dir})

install(DIRECTORY include/quillbox DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# The classes themselves; adapters and the engine stand behind them.
foreach(layer base platform frame project topics content sourcecontrol build booklets links headerids)
    install(DIRECTORY src/${layer} DESTINATION ${header_dir} FILES_MATCHING PATTERN "*.h" PATTERN "*.type.h" EXCLUDE)
endforeach()

configure_package_config_file(cmake/QuillboxConfig.cmake.in ${CMAKE_BINARY_DIR}/QuillboxConfig.cmake
    INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/QuillboxConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/QuillboxConfig.cmake ${CMAKE_BINARY_DIR}/QuillboxConfigVersion.cmake
    DESTINATION ${package_dir})

install(DIRECTORY share/quillbox DESTINATION ${CMAKE_INSTALL_DATADIR})
install(FILES docs/quillbox.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
