# What all parts of an installation share. Each part is a component of its own, named like the Debian package that holds
# it: cmake --install build/release --component vesmar-tools.

file(RELATIVE_PATH VESMAR_PREFIX_FROM_PKGCONFIG "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")

# Installs a library, its targets for CMake and its file for pkg-config. The library itself is in the component
# lib<name>, and what one builds with in lib<name>-dev. REQUIRES names what the library needs and its headers do not.
#
#   vesmar_install_library(VesmarClient DESCRIPTION "..." REQUIRES vesmar)
function(vesmar_install_library target)
  cmake_parse_arguments(LIBRARY "" "DESCRIPTION;REQUIRES" "" ${ARGN})
  string(TOLOWER "${target}" name)
  install(
    TARGETS ${target}
    EXPORT ${target}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            COMPONENT lib${name}
            NAMELINK_COMPONENT lib${name}-dev)
  install(
    EXPORT ${target}Targets
    NAMESPACE Vesmar::
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/Vesmar"
    COMPONENT lib${name}-dev)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" ${name}.pc @ONLY)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
          COMPONENT lib${name}-dev)
endfunction()

add_custom_target(
  uninstall
  COMMAND "${CMAKE_COMMAND}" "-DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt" -P
          "${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake"
  COMMENT "Removing what was installed last from this build"
  VERBATIM)
