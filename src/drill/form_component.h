#ifndef VOREK_DRILL_FORM_COMPONENT_H_
#define VOREK_DRILL_FORM_COMPONENT_H_

#include <cstdint>
#include <memory>
#include <string>

#include "grid/report_context.h"
#include "vorek/components.h"

namespace vorek {

// The name of a form's component, from the name of its file: "comSale.comGoods.dll#3" is the
// component comSale.comGoods, with the number 3.
struct ComponentName {
  std::string file;     // without the number
  std::string prog_id;  // without the extension of four characters
  std::int32_t number = -1;
};
ComponentName ParseComponentName(const std::string& file_name);

// The form's component, with the user, the number and the connection set; null, and the user told,
// if there is none also after it was registered.
std::unique_ptr<Component> MakeFormComponent(ReportContext& report, const std::string& file_name,
                                             std::int32_t form_type);

}  // namespace vorek

#endif  // VOREK_DRILL_FORM_COMPONENT_H_
