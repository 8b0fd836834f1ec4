# What "cmake --install" puts where: the library with its headers and package files, the terminal,
# the sample data and the translations.
include(CMakePackageConfigHelpers)

set(ta_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TaDialogs)
set(ta_share_dir ${CMAKE_INSTALL_DATADIR}/tadialogs)

install(TARGETS tadialogs EXPORT TaDialogsTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tadialogs)
install(EXPORT TaDialogsTargets NAMESPACE TaDialogs:: DESTINATION ${ta_package_dir})

set(TA_LANG_DIR ${ta_share_dir}/lang)
configure_package_config_file(cmake/library/TaDialogsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/TaDialogsConfig.cmake
    INSTALL_DESTINATION ${ta_package_dir} PATH_VARS TA_LANG_DIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TaDialogsConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TaDialogsConfig.cmake
    ${PROJECT_BINARY_DIR}/TaDialogsConfigVersion.cmake
    DESTINATION ${ta_package_dir})

# The installed terminal finds the library beside itself, wherever the prefix is moved.
file(RELATIVE_PATH ta_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(terminal PROPERTIES INSTALL_RPATH "$ORIGIN/${ta_bin_to_lib}")
install(TARGETS terminal RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY data/ DESTINATION ${ta_share_dir}/data PATTERN generator EXCLUDE)
install(FILES ${TA_QM_FILES} DESTINATION ${TA_LANG_DIR})
