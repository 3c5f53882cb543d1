# Installation: the library, its public headers, a CMake package (vfc::vfc, with a version file)
# and a relocatable pkg-config file.
include(CMakePackageConfigHelpers)

set(VFC_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vfc)

install(TARGETS vfc
    EXPORT vfcTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(EXPORT vfcTargets NAMESPACE vfc:: DESTINATION ${VFC_CMAKE_DIR})

configure_package_config_file(cmake/vfcConfig.cmake.in
    ${PROJECT_BINARY_DIR}/vfcConfig.cmake
    INSTALL_DESTINATION ${VFC_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vfcConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vfcConfig.cmake ${PROJECT_BINARY_DIR}/vfcConfigVersion.cmake
    DESTINATION ${VFC_CMAKE_DIR})

# pkg-config: paths are relative to the .pc file so that `cmake --install --prefix` anywhere works.
file(RELATIVE_PATH VFC_PC_TO_PREFIX
    /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
if(VFC_SHARED)
    set(VFC_PC_CFLAGS "")
else()
    set(VFC_PC_CFLAGS "-DVFC_STATIC")
endif()
configure_file(cmake/vfc.pc.in ${PROJECT_BINARY_DIR}/vfc.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vfc.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(VFC_BUILD_TOOLS)
    install(TARGETS vfc-tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# Windows programs find their DLLs beside them: the compiler's runtime goes into bin/ too.
if(WIN32 AND vfc_runtime_dlls)
    install(FILES ${vfc_runtime_dlls} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
