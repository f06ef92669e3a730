#include "parameters/vorek_parameters.h"

#include <utility>

namespace vorek {

VorekParameters::VorekParameters(Control* parent, std::string name, Process& process,
                                 Notices& notices)
    : Frame(parent, std::move(name)), process_(process), notices_(notices) {
  SetVisible(false);
}

bool VorekParameters::View(std::int32_t, std::string&, std::int32_t) {
  result = false;
  static_cast<void>(process_);
  static_cast<void>(notices_);
  return false;
}

void VorekParameters::SetReportCaption(const std::string& caption) {
  lblCaption.SetCaption(caption);
}

}  // namespace vorek
