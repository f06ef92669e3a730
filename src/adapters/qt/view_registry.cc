#include "adapters/qt/view_registry.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace vorek::qt {
namespace {

ControlView* NoView(Presenter&, Control&, QWidget&) { return nullptr; }

struct KnownKind {
  std::string_view kind;
  ViewMaker make;
};
constexpr KnownKind kKinds[] = {
    {"Button", MakeButtonView},
    {"CheckBox", MakeCheckBoxView},
    {"ComboBox", MakeComboBoxView},
    {"Frame", MakeFrameView},
    {"Grid", MakeGridView},
    {"Label", MakeLabelView},
    {"Menu", NoView},
    {"TabStrip", MakeTabStripView},
    {"TextBox", MakeTextBoxView},
    {"Timer", NoView},
    {"VorekCurrency", MakeCurrencyView},
    {"VorekDate", MakeDateView},
    {"VorekDuration", MakeMinutesView},
    {"VorekEntityPicker", MakeListView},
    {"VorekMultiSelect", MakeListView},
    {"VorekParameters", MakeParametersView},
    {"VorekPickerPanel", MakeListView},
    {"VorekProgressBar", MakeProgressView},
    {"VorekSelector", MakeListView},
    {"VorekTime", MakeMinutesView},
};

}  // namespace

ControlView* MakeView(Presenter& presenter, Control& control, QWidget& parent) {
  const auto* const found =
      std::find_if(std::begin(kKinds), std::end(kKinds),
                   [&](const KnownKind& known) { return known.kind == control.Kind(); });
  const ViewMaker make = found == std::end(kKinds) ? MakeFrameView : found->make;
  return make(presenter, control, parent);
}

ControlView* MakeRootView(Presenter& presenter, Control& root, QWidget& window) {
  return new ControlView(presenter, root, &window);
}

}  // namespace vorek::qt
