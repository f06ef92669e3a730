#ifndef VOREK_VERSION_H_
#define VOREK_VERSION_H_

// The version, in one place: the build, the packages and the programs read it here. Within 0.x a
// minor version may change the interface; from 1.0 on only a major one does.
#define VOREK_VERSION_MAJOR 0
#define VOREK_VERSION_MINOR 2
#define VOREK_VERSION_PATCH 0

// One number to compare with, as in #if VOREK_VERSION >= VOREK_VERSION_NUMBER(0, 2, 0).
#define VOREK_VERSION_NUMBER(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
#define VOREK_VERSION \
  VOREK_VERSION_NUMBER(VOREK_VERSION_MAJOR, VOREK_VERSION_MINOR, VOREK_VERSION_PATCH)

#define VOREK_VERSION_TEXT_OF(number) #number
#define VOREK_VERSION_TEXT_BY(major, minor, patch) \
  VOREK_VERSION_TEXT_OF(major) "." VOREK_VERSION_TEXT_OF(minor) "." VOREK_VERSION_TEXT_OF(patch)
// "0.2.0"
#define VOREK_VERSION_TEXT \
  VOREK_VERSION_TEXT_BY(VOREK_VERSION_MAJOR, VOREK_VERSION_MINOR, VOREK_VERSION_PATCH)

#endif  // VOREK_VERSION_H_
