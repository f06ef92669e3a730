# Packages of Debian, by cpack -G DEB: the programs, the desktop, the libraries where they are shared,
# what a host is built with, the documents and the examples. dpkg-shlibdeps finds what they need.
set(CPACK_PACKAGE_VENDOR "Vorek")
set(CPACK_PACKAGE_CONTACT "Vorek <packages@vorek.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENTS_ALL runtime dev doc examples)

# vorek_package(COMPONENT NAME SECTION TEXT): the package of one install component.
function(vorek_package component name section text)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${text}" PARENT_SCOPE)
  # What a package of Debian must bring besides: its changes and its terms.
  set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name})
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${doc} COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/share/copyright DESTINATION ${doc} COMPONENT ${component})
endfunction()

file(READ ${PROJECT_SOURCE_DIR}/share/changelog.in changelog)
string(CONFIGURE "${changelog}" changelog @ONLY)
file(WRITE ${PROJECT_BINARY_DIR}/changelog "${changelog}")
execute_process(COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/changelog)

vorek_package(runtime vorek database "Runs the catalogued reports of a database
 The program vorek shows, exports, prints and checks reports that are rows of a
 database, and makes a sample of one.")
vorek_package(dev libvorek-dev libdevel "Database-driven report engine, for hosts
 Headers, libraries, the CMake package and the pkg-config modules of the
 embeddable report control.")
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_EXAMPLES_PACKAGE_ARCHITECTURE all)
vorek_package(doc vorek-doc doc "Database-driven report engine, documents
 Pages for authors of reports, programmers of hosts and administrators, in
 English and Persian.")
vorek_package(examples vorek-examples doc "Database-driven report engine, examples
 Hosts of the report control: in a page, with windows, with forms of their own.")
if(VOREK_QT AND VOREK_SQLITE AND VOREK_APPS)
  list(APPEND CPACK_COMPONENTS_ALL desktop)
  vorek_package(desktop vorek-desk database "Shows the reports of a database in windows
 Runs reports in tabs and windows, Persian and right to left, with sums, sort,
 filter, search, charts, prints and exports.")
endif()
if(BUILD_SHARED_LIBS)
  list(APPEND CPACK_COMPONENTS_ALL libraries)
  vorek_package(libraries libvorek${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} libs
                "Database-driven report engine, libraries
 The embeddable report control and its adapters.")
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  file(WRITE ${PROJECT_BINARY_DIR}/triggers "activate-noawait ldconfig\n")
  set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/triggers)
  # dpkg-shlibdeps looks for them where they were built, and knows no package of theirs.
  file(GLOB adapters ${PROJECT_SOURCE_DIR}/src/adapters/*/CMakeLists.txt)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
  foreach(adapter IN LISTS adapters)
    cmake_path(GET adapter PARENT_PATH folder)
    cmake_path(GET folder FILENAME name)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src/adapters/${name})
  endforeach()
  foreach(component RUNTIME DESKTOP DEV)
    set(CPACK_COMPONENT_${component}_DEPENDS libraries)
  endforeach()
endif()
include(CPack)
