#include "export/long_work.h"

#include <utility>

namespace vorek {

LongWork::LongWork(ReportContext& report, std::int32_t rows)
    : watch_(report.process.watch),
      pass_(watch_, PassWatch::Leaves::kAll),
      bar_(report.Progress),
      outer_(watch_.on_progress),
      rows_(rows) {
  if (bar_ == nullptr) return;
  bar_->SetValue(0);
  bar_->SetVisible(true);
  bar_->ZOrder();
  watch_.on_progress = [bar = bar_](std::int32_t percent) { bar->SetValue(percent); };
}

LongWork::~LongWork() {
  if (bar_ == nullptr) return;
  bar_->SetVisible(false);
  watch_.on_progress = std::move(outer_);
}

}  // namespace vorek
