# What `cmake --install` lays out: the program with its manual page, the library for host
# programs with its header and the Pascal unit, the static core with its headers, and how
# other builds find both (a CMake package, two pkg-config files).
include(CMakePackageConfigHelpers)

set(core_headers ${CMAKE_INSTALL_INCLUDEDIR}/customsconv)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/customsconv)

install(TARGETS customsconv_program)
install(FILES docs/customsconv.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# Whoever uses the exports needs no C++20, and may be written in C.
set_target_properties(customsconv PROPERTIES INTERFACE_COMPILE_FEATURES "")
install(TARGETS customsconv EXPORT customsconv INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES include/customsconv.h TYPE INCLUDE)
install(FILES bindings/pascal/customsconv.pas DESTINATION ${CMAKE_INSTALL_DATADIR}/customsconv/pascal)

# The core's headers include each other as they do here, from one folder.
set_target_properties(customsconv_core PROPERTIES EXPORT_NAME core)
install(TARGETS customsconv_core EXPORT customsconv
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${core_headers})
install(DIRECTORY src/ DESTINATION ${core_headers} FILES_MATCHING PATTERN "*.h"
        PATTERN cli EXCLUDE)

install(EXPORT customsconv NAMESPACE customsconv:: FILE customsconvTargets.cmake
        DESTINATION ${package})
configure_package_config_file(cmake/customsconvConfig.cmake.in customsconvConfig.cmake
                              INSTALL_DESTINATION ${package})
write_basic_package_version_file(customsconvConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/customsconvConfig.cmake
        ${PROJECT_BINARY_DIR}/customsconvConfigVersion.cmake DESTINATION ${package})

# Found from where they lie, so that an installation can be moved.
set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH up_to_prefix /${pkgconfig} /)
foreach(name customsconv customsconv-core)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfig})
endforeach()
