# Install rules: headers, libraries, a relocatable CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY GEOMKIT_LIBRARIES)
get_property(dependencies GLOBAL PROPERTY GEOMKIT_DEPENDENCIES)
get_property(static_dependencies GLOBAL PROPERTY GEOMKIT_STATIC_DEPENDENCIES)

set(headers "")
if(GEOMKIT_FILE_SETS)
  set(headers FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
endif()
install(TARGETS ${libraries}
  EXPORT geomKitTargets
  ${headers}
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/geomKit")
install(EXPORT geomKitTargets NAMESPACE geomKit:: DESTINATION "${package_dir}")
list(APPEND dependencies ${static_dependencies})
list(REMOVE_DUPLICATES dependencies)
list(TRANSFORM dependencies REPLACE "(.+)" "find_dependency(\\1)")
list(JOIN dependencies "\n" GEOMKIT_FIND_DEPENDENCIES)
configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/geomKitConfig.cmake.in" geomKitConfig.cmake
  INSTALL_DESTINATION "${package_dir}"
)
write_basic_package_version_file(geomKitConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/geomKitConfig.cmake"
  "${PROJECT_BINARY_DIR}/geomKitConfigVersion.cmake"
  "${CMAKE_CURRENT_LIST_DIR}/GeomKitFlags.cmake"
  DESTINATION "${package_dir}"
)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# GDB reads a file named after a library of its own accord, from a folder that mirrors where the
# library lies. That is known when the package is installed.
set(debuggers "${PROJECT_SOURCE_DIR}/tools/debuggers")
install(FILES "${debuggers}/geomkit_printers.py" "${debuggers}/geomKit.natvis"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/geomKit")
if(BUILD_SHARED_LIBS AND UNIX AND NOT APPLE)
  install(FILES "${debuggers}/geomkit_printers.py"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}"
    RENAME "libgeomKit.so.${PROJECT_VERSION}-gdb.py")
endif()

# The prefix is found from where the .pc file lies, so the tree may be moved.
file(RELATIVE_PATH GEOMKIT_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" GEOMKIT_PC_TO_PREFIX "${GEOMKIT_PC_TO_PREFIX}")
list(REVERSE libraries)
list(TRANSFORM libraries PREPEND "-l")
list(JOIN libraries " " GEOMKIT_LINK_FLAGS)
# What `pkg-config --static` adds. A package is called by one name there and by CMake.
set(GEOMKIT_PC_STATIC "")
set(GEOMKIT_PC_DEFINES "")
if(NOT BUILD_SHARED_LIBS)
  list(JOIN static_dependencies " " GEOMKIT_PC_STATIC)
  string(PREPEND GEOMKIT_PC_STATIC "\nRequires.private: ")
  set(GEOMKIT_PC_DEFINES " -DGEOMKIT_STATIC")
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/geomKit.pc.in" geomKit.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/geomKit.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
