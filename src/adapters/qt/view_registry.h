#ifndef VOREK_ADAPTERS_QT_VIEW_REGISTRY_H_
#define VOREK_ADAPTERS_QT_VIEW_REGISTRY_H_

#include "adapters/qt/control_view.h"

// Which view shows which kind of control. A new kind is a file of its own and a line in the table.
namespace vorek::qt {

// Makes the view of a control of that kind, its widget below the parent.
using ViewMaker = ControlView* (*)(Presenter& presenter, Control& control, QWidget& parent);

ControlView* MakeButtonView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeCheckBoxView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeComboBoxView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeCurrencyView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeDateView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeFrameView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeGridView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeLabelView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeListView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeMinutesView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeParametersView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeProgressView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeTabStripView(Presenter& presenter, Control& control, QWidget& parent);
ControlView* MakeTextBoxView(Presenter& presenter, Control& control, QWidget& parent);

// By the control's kind; null for one that isn't shown by a widget, such as a menu. A kind that the
// table doesn't hold is shown as a frame.
ControlView* MakeView(Presenter& presenter, Control& control, QWidget& parent);
// The view of a root, whose widget is the window itself.
ControlView* MakeRootView(Presenter& presenter, Control& root, QWidget& window);

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_VIEW_REGISTRY_H_
