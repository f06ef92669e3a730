#include <algorithm>
#include <array>

#include "adapters/qt/grid_accessible.h"
#include "adapters/qt/grid_area.h"
#include "adapters/qt/view_registry.h"

namespace vorek::qt {
namespace {

// What changes the picture and no place in it.
bool IsPaintedOnly(std::string_view property) {
  constexpr std::array<std::string_view, 5> kPainted = {"Formats", "FocusRect", "HighLight",
                                                        "SortedBy", "OutlineKind"};
  return std::find(kPainted.begin(), kPainted.end(), property) != kPainted.end();
}

class GridView : public ControlView {
 public:
  GridView(Presenter& presenter, Grid& grid, QWidget& parent)
      : ControlView(presenter, grid,
                    new GridArea(grid, &parent,
                                 [this](const std::function<void()>& event) { Feed(event); })) {
    // A name makes the object that readers ask: not before its kind is known.
    InstallGridAccessibility();
    Widget().setAccessibleName("جدول گزارش");
  }

  void Set(std::string_view property) override {
    constexpr std::array<std::string_view, 3> kRows = {"Rows", "Cells", "RowHeight"};
    constexpr std::array<std::string_view, 7> kLayout = {
        "Cols", "ColWidth", "FixedRows", "FixedCols", "TopRow", "LeftCol", "ColAlignment"};
    const auto is_in = [property](const auto& names) {
      return std::find(names.begin(), names.end(), property) != names.end();
    };
    if (is_in(kRows)) {
      Area().RowsChanged();
    } else if (is_in(kLayout)) {
      Area().LayoutChanged();
    } else if (property == "FontSize") {
      Area().Restyle();
    } else if (property == "Selection") {
      Area().SelectionChanged();
      TellSelection(Area());
    } else if (IsPaintedOnly(property)) {
      Area().viewport()->update();
    } else {
      ControlView::Set(property);
    }
  }
  void SetAll() override {
    ControlView::SetAll();
    Area().Restyle();
    Area().RowsChanged();
  }

 protected:
  void Forget() override { Area().Forget(); }

 private:
  GridArea& Area() { return static_cast<GridArea&>(Widget()); }
};

}  // namespace

ControlView* MakeGridView(Presenter& presenter, Control& control, QWidget& parent) {
  return new GridView(presenter, static_cast<Grid&>(control), parent);
}

}  // namespace vorek::qt
