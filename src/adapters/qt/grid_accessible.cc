#include "adapters/qt/grid_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <algorithm>
#include <unordered_map>

#include "adapters/qt/control_view.h"
#include "grid/outline_mark.h"

namespace vorek::qt {
namespace {

class GridInterface;

// A cell as long as a reader holds it. Row 0 is the header.
class CellInterface : public QAccessibleInterface, public QAccessibleTableCellInterface {
 public:
  CellInterface(GridInterface& table, GridCell cell) : table_(table), cell_(cell) {}

  bool isValid() const override { return rect_area() != nullptr; }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
  }

  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  int columnIndex() const override { return cell_.col; }
  int rowIndex() const override { return cell_.row; }
  bool isSelected() const override;
  QList<QAccessibleInterface*> columnHeaderCells() const override;
  QList<QAccessibleInterface*> rowHeaderCells() const override;
  QAccessibleInterface* table() const override;

 private:
  GridArea* rect_area() const;

  GridInterface& table_;
  GridCell cell_;
};

class GridInterface : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit GridInterface(GridArea& area) : QAccessibleWidget(&area, QAccessible::Table) {}
  ~GridInterface() override {
    for (const auto& [key, id] : cells_) QAccessible::deleteAccessibleInterface(id);
  }

  GridArea* Area() const { return static_cast<GridArea*>(object()); }
  Grid* Shown() const { return Area() == nullptr ? nullptr : Area()->Shown(); }

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  int childCount() const override {
    return static_cast<int>(
        std::min<std::int64_t>(std::int64_t{rowCount()} * columnCount(), 0x7FFFFFFF));
  }
  QAccessibleInterface* child(int index) const override {
    const int columns = columnCount();
    return columns == 0 ? nullptr : cellAt(index / columns, index % columns);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto* const cell = dynamic_cast<const CellInterface*>(child);
    return cell == nullptr ? -1 : cell->rowIndex() * columnCount() + cell->columnIndex();
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const QPoint point = Area()->viewport()->mapFromGlobal(QPoint(x, y));
    const GridCell cell = Area()->Geometry().CellAt(point);
    return cellAt(cell.row, cell.col);
  }
  QAccessibleInterface* focusChild() const override {
    return Shown() == nullptr ? nullptr : cellAt(Shown()->Row(), Shown()->Col());
  }

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override {
    if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount()) return nullptr;
    const std::uint64_t key =
        (static_cast<std::uint64_t>(row) << 32U) | static_cast<std::uint32_t>(column);
    if (const auto known = cells_.find(key); known != cells_.end()) {
      return QAccessible::accessibleInterface(known->second);
    }
    auto* const cell = new CellInterface(const_cast<GridInterface&>(*this), {row, column});
    cells_[key] = QAccessible::registerAccessibleInterface(cell);
    return cell;
  }
  int rowCount() const override { return Shown() == nullptr ? 0 : Shown()->Rows(); }
  int columnCount() const override { return Shown() == nullptr ? 0 : Shown()->Cols(); }
  QString rowDescription(int row) const override { return TextAt(row, 0); }
  QString columnDescription(int column) const override { return TextAt(0, column); }
  QString TextAt(int row, int column) const {
    const bool inside = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return inside ? ToQt(Shown()->TextMatrix(row, column)) : QString();
  }

  // '+' closed, '-' open.
  char SignAt(int row, int column) const {
    std::string scratch;
    const bool inside = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
    return inside ? MarkOf(*Shown(), row, column, Shown()->CellView(row, column, scratch)).sign
                  : '\0';
  }

  bool IsRowSelected(int row) const {
    const auto [top, bottom] = std::minmax({Shown()->Row(), Shown()->RowSel()});
    return row >= top && row <= bottom;
  }
  bool isRowSelected(int row) const override { return Shown() != nullptr && IsRowSelected(row); }
  bool isColumnSelected(int column) const override {
    if (Shown() == nullptr) return false;
    const auto [first, last] = std::minmax({Shown()->Col(), Shown()->ColSel()});
    return column >= first && column <= last;
  }
  int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
  int selectedColumnCount() const override { return static_cast<int>(selectedColumns().size()); }
  int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
  // The end of the selection that moves, so that a reader isn't handed a million cells.
  QList<QAccessibleInterface*> selectedCells() const override {
    if (Shown() == nullptr) return {};
    return {cellAt(Shown()->RowSel(), Shown()->ColSel())};
  }
  QList<int> selectedColumns() const override {
    return Shown() == nullptr ? QList<int>{} : QList<int>{Shown()->ColSel()};
  }
  QList<int> selectedRows() const override {
    return Shown() == nullptr ? QList<int>{} : QList<int>{Shown()->RowSel()};
  }
  bool selectRow(int) override { return false; }
  bool selectColumn(int) override { return false; }
  bool unselectRow(int) override { return false; }
  bool unselectColumn(int) override { return false; }
  void modelChange(QAccessibleTableModelChangeEvent*) override {}

 private:
  mutable std::unordered_map<std::uint64_t, QAccessible::Id> cells_;
};

GridArea* CellInterface::rect_area() const { return table_.Area(); }
QAccessibleInterface* CellInterface::parent() const { return &table_; }
QAccessibleInterface* CellInterface::table() const { return &table_; }

QString CellInterface::text(QAccessible::Text kind) const {
  if (kind == QAccessible::Name || kind == QAccessible::Value) {
    return table_.TextAt(cell_.row, cell_.col);
  }
  return kind == QAccessible::Description ? table_.columnDescription(cell_.col) : QString();
}

QRect CellInterface::rect() const {
  GridArea* const area = table_.Area();
  const QRect inside = area->CellRect(cell_.row, cell_.col);
  return {area->viewport()->mapToGlobal(inside.topLeft()), inside.size()};
}

QAccessible::Role CellInterface::role() const {
  if (cell_.row == 0) return QAccessible::ColumnHeader;
  return cell_.col == 0 ? QAccessible::RowHeader : QAccessible::Cell;
}

QAccessible::State CellInterface::state() const {
  QAccessible::State state;
  state.readOnly = true;
  state.selectable = true;
  state.focusable = true;
  state.selected = isSelected();
  const Grid* const grid = table_.Shown();
  state.focused = grid != nullptr && grid->Row() == cell_.row && grid->Col() == cell_.col &&
                  table_.Area()->hasFocus();
  if (const char sign = table_.SignAt(cell_.row, cell_.col); sign != '\0') {
    state.expandable = true;
    state.expanded = sign == '-';
    state.collapsed = sign == '+';
  }
  state.offscreen = table_.Area()->CellRect(cell_.row, cell_.col).isEmpty();
  return state;
}

bool CellInterface::isSelected() const {
  return table_.isRowSelected(cell_.row) && table_.isColumnSelected(cell_.col);
}

QList<QAccessibleInterface*> CellInterface::columnHeaderCells() const {
  return {table_.cellAt(0, cell_.col)};
}

QList<QAccessibleInterface*> CellInterface::rowHeaderCells() const {
  return {table_.cellAt(cell_.row, 0)};
}

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* const area = dynamic_cast<GridArea*>(object);
  return area == nullptr ? nullptr : new GridInterface(*area);
}

}  // namespace

void InstallGridAccessibility() { QAccessible::installFactory(MakeInterface); }

void TellSelection(GridArea& area) {
  if (!QAccessible::isActive() || area.Shown() == nullptr) return;
  QAccessibleEvent event(&area, QAccessible::Focus);
  event.setChild(area.Shown()->Row() * area.Shown()->Cols() + area.Shown()->Col());
  QAccessible::updateAccessibility(&event);
}

}  // namespace vorek::qt
