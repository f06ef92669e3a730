# Reads the version out of the public header into VOREK_VERSION.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../include/vorek/version.h lines
     REGEX "^#define VOREK_VERSION_(MAJOR|MINOR|PATCH) [0-9]+$")
list(TRANSFORM lines REPLACE ".* " "" OUTPUT_VARIABLE numbers)
list(JOIN numbers "." VOREK_VERSION)
# A header that changes asks for a new look.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${CMAKE_CURRENT_LIST_DIR}/../include/vorek/version.h)
