// A form that keeps what it is told in a text that the test reads; of version FORM_VERSION.
#include <cstring>
#include <string>

#include "vorek/form_plugin.h"

struct VorekForm {
  std::string told;
};

namespace {

std::string g_told;

VorekForm* Create(const char* prog_id, int32_t form_type) {
  if (std::strcmp(prog_id, "test.nobody") == 0) return nullptr;
  return new VorekForm{std::string(prog_id) + " " + std::to_string(form_type) + ";"};
}
void Destroy(VorekForm* form) {
  g_told = form->told + "gone";
  delete form;
}
int SetNumber(VorekForm* form, const char* property, int32_t value) {
  form->told += std::string(property) + "=" + std::to_string(value) + ";";
  return 0;
}
int SetText(VorekForm* form, const char* property, const char* value) {
  form->told += std::string(property) + "='" + value + "';";
  return std::strcmp(property, "Wrong") == 0 ? 7 : 0;
}
int Call(VorekForm* form, const char* method, const char* argument) {
  form->told += std::string(method) + "(" + (argument == nullptr ? "null" : argument) + ");";
  return 0;
}

}  // namespace

extern "C" const VorekFormPlugin* vorek_form_plugin(void) {
  static const VorekFormPlugin plugin = {FORM_VERSION, Create, Destroy, SetNumber, SetText, Call};
  return &plugin;
}
extern "C" const char* told(void) { return g_told.c_str(); }
