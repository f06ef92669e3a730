#ifndef VOREK_FORM_PLUGIN_H_
#define VOREK_FORM_PLUGIN_H_

#include <stdint.h>  // NOLINT(modernize-deprecated-headers): C has no other

// The interface of a form in a shared library, in C. The library lies in the host's folder of
// components under the form's name, comSale.comGoods.so for "comSale.comGoods.dll", and exports
//
//   const VorekFormPlugin* vorek_form_plugin(void);
//
// All texts are UTF-8 and end with a zero; they belong to the caller and hold for the call alone.
// Functions are called from the host's thread of windows. They must let no exception out; those
// that answer return 0, or any other number for a failure, which the system ignores: a form that
// fails tells its user by itself.
#ifdef __cplusplus
extern "C" {
#endif

// Of this header. A library of another version isn't used.
#define VOREK_FORM_PLUGIN_VERSION 1

// A form that was made; known to the library alone.
typedef struct VorekForm VorekForm;

typedef struct VorekFormPlugin {
  // VOREK_FORM_PLUGIN_VERSION. REQUIRED to stay the first member in every version.
  uint32_t version;

  // Makes the form of that name for a form type (tblVorekFormType); null if the library doesn't
  // have it.
  VorekForm* (*create)(const char* prog_id, int32_t form_type);
  // The form's handle goes; a window that it has opened may stay.
  void (*destroy)(VorekForm* form);

  // Sets a property: UserID, Number, PositionID, EmployeeID and ReturnType are numbers,
  // OleConnectionString is a text.
  int (*set_number)(VorekForm* form, const char* property, int32_t value);
  int (*set_text)(VorekForm* form, const char* property, const char* value);

  // Calls View with the text of the row's key, or ClearShow with null.
  int (*call)(VorekForm* form, const char* method, const char* argument);
} VorekFormPlugin;

// The library's one entry.
typedef const VorekFormPlugin* (*VorekFormPluginEntry)(void);
#define VOREK_FORM_PLUGIN_ENTRY "vorek_form_plugin"

#ifdef __cplusplus
}
#endif

#endif  // VOREK_FORM_PLUGIN_H_
