# How the parts of the project are installed: each library is a component of the CMake package
# Vorek, a target Vorek::NAME there, and a pkg-config module.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(VOREK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Vorek)

# vorek_component(TARGET NAME [MODULES PREFIX MODULE...] [PACKAGES PACKAGE COMPONENT...]) names the
# target Vorek::NAME inside and outside the project and installs it. MODULES are pairs for
# pkg_check_modules, PACKAGES pairs for find_package: what the library links besides the core, which
# a consumer's build has to find again. The pkg-config module of a package's component is its name
# behind the package's.
function(vorek_component target name)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "MODULES;PACKAGES")
  add_library(Vorek::${name} ALIAS ${target})
  # Within 0.x each minor version has an interface of its own.
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name} VERSION ${PROJECT_VERSION}
                        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
                        # A shared library is made of the objects that a static one is.
                        DEFINE_SYMBOL "")
  _vorek_export_symbols(${target})
  if(NOT VOREK_INSTALL)
    return()
  endif()
  install(TARGETS ${target} EXPORT vorek-${name}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT dev)
  install(EXPORT vorek-${name} NAMESPACE Vorek:: FILE Vorek-${name}.cmake
          DESTINATION ${VOREK_CMAKE_DIR} COMPONENT dev)
  if(BUILD_SHARED_LIBS)
    set(arg_MODULES "")  # a shared library brings what it links, but for what its header shows
  endif()
  _vorek_install_needs(${name} "${arg_MODULES}" "${arg_PACKAGES}")
  set(modules ${arg_MODULES})
  while(arg_PACKAGES)
    list(POP_FRONT arg_PACKAGES package component)
    list(APPEND modules ${package} ${package}${component})
  endwhile()
  _vorek_install_module(${target} ${name} ${modules})
endfunction()

# A shared library shows the project's own names alone, under the version that they belong to: a
# program that was linked with another minor version is refused when it starts.
function(_vorek_export_symbols target)
  get_target_property(type ${target} TYPE)
  if(NOT type STREQUAL "SHARED_LIBRARY")
    return()
  endif()
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/vorek.map.in ${script} @ONLY)
  target_link_options(${target} PRIVATE LINKER:--version-script=${script} LINKER:-z,defs)
  set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script})
endfunction()

# The lines by which the package finds the component's modules and packages again.
function(_vorek_install_needs name modules packages)
  set(lines "")
  while(packages)
    list(POP_FRONT packages package component)
    string(APPEND lines "find_package(${package} QUIET COMPONENTS ${component})\n"
                        "if(NOT ${package}_FOUND)\n"
                        "  list(APPEND _vorek_missing ${package})\n"
                        "endif()\n")
  endwhile()
  set(pairs ${modules})
  if(pairs)
    string(APPEND lines "if(NOT PkgConfig_FOUND)\n  list(APPEND _vorek_missing pkg-config)\n"
                        "  return()\nendif()\n")
  endif()
  while(pairs)
    list(POP_FRONT pairs prefix module)
    string(APPEND lines "pkg_check_modules(${prefix} QUIET IMPORTED_TARGET ${module})\n"
                        "if(NOT ${prefix}_FOUND)\n"
                        "  list(APPEND _vorek_missing ${module})\n"
                        "endif()\n")
  endwhile()
  set(file ${CMAKE_CURRENT_BINARY_DIR}/Vorek-${name}-needs.cmake)
  file(WRITE ${file} "${lines}")
  install(FILES ${file} DESTINATION ${VOREK_CMAKE_DIR} COMPONENT dev)
endfunction()

# vorek.pc is the core; vorek-NAME.pc needs it and the component's modules. The libraries are
# static, so that what they need is needed by whoever links them.
function(_vorek_install_module target name)
  set(VOREK_MODULE vorek-${name})
  set(VOREK_LIBRARY ${target})
  set(VOREK_REQUIRES vorek)
  if(name STREQUAL "core")
    set(VOREK_MODULE vorek)
    set(VOREK_REQUIRES "")
  endif()
  set(pairs ${ARGN})
  while(pairs)
    list(POP_FRONT pairs prefix module)
    string(APPEND VOREK_REQUIRES " ${module}")
  endwhile()
  # From the module's own folder, so that an installed tree may be moved.
  file(RELATIVE_PATH VOREK_PREFIX_FROM_MODULE /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
  set(file ${CMAKE_CURRENT_BINARY_DIR}/${VOREK_MODULE}.pc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/vorek.pc.in ${file} @ONLY)
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endfunction()

# vorek_install_manual(PAGE COMPONENT): a manual page of docs/, compressed as they are everywhere.
function(vorek_install_manual page component)
  set(packed ${CMAKE_CURRENT_BINARY_DIR}/${page}.gz)
  execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/docs/${page} OUTPUT_FILE ${packed}
                  COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/${page})
  install(FILES ${packed} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

# The package itself and the public headers.
function(vorek_install_package)
  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/VorekConfig.cmake.in ${PROJECT_BINARY_DIR}/VorekConfig.cmake
    INSTALL_DESTINATION ${VOREK_CMAKE_DIR} NO_SET_AND_CHECK_MACRO)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/VorekConfigVersion.cmake
                                   COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/VorekConfig.cmake
                ${PROJECT_BINARY_DIR}/VorekConfigVersion.cmake
          DESTINATION ${VOREK_CMAKE_DIR} COMPONENT dev)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vorek DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
          COMPONENT dev)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
          PATTERN "*.1" EXCLUDE)
  install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
          DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
          COMPONENT examples)
endfunction()
