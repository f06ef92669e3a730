#ifndef VOREK_ADAPTERS_QT_PAPER_BAR_H_
#define VOREK_ADAPTERS_QT_PAPER_BAR_H_

#include <QWidget>
#include <functional>

#include "print/page_setup.h"

class QCheckBox;
class QComboBox;
class QSpinBox;

namespace vorek::qt {

// The choices of a paper: its size, the way it lies, its margins, whether columns fit its width.
class PaperBar : public QWidget {
 public:
  PaperBar(const print::PageSetup& setup, QWidget* parent);

  // The user chose another paper.
  std::function<void(const print::PageSetup& setup)> on_changed;
  // Shows the paper again that was chosen before.
  void TakeBack();

 private:
  void Show(const print::PageSetup& setup);
  void Changed();

  print::PageSetup setup_;
  print::PageSetup before_;
  bool showing_ = false;
  QComboBox* size_;
  QCheckBox* landscape_;
  QCheckBox* fit_;
  QSpinBox* margin_;
};

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_PAPER_BAR_H_
