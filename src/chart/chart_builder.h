#ifndef VOREK_CHART_CHART_BUILDER_H_
#define VOREK_CHART_CHART_BUILDER_H_

#include <string>
#include <vector>

#include "chart/chart_area.h"
#include "chart/chart_model.h"

namespace vorek {

// Where the reading of a chart puts series, with the words for what it leaves out.
class ChartBuilder {
 public:
  explicit ChartBuilder(ChartModel& chart) : chart_(chart) {}

  // A value of a series that is being read. One that can't be shown refuses the chart: a gap in
  // its place would tell something else.
  void Take(const ChartCell& cell, const std::string& series, const std::string& category,
            std::vector<ChartValue>& values);
  // A series without a value is left out, and times beside numbers are: the first one decides.
  void Add(std::string name, FigureKind kind, std::vector<ChartValue> values);
  // Tells of a series of the other kind.
  void LeaveOut(std::string name);
  // Fills the chart's refusal or note.
  void Finish();

 private:
  ChartModel& chart_;
  std::size_t series_ = 0;  // those beyond the limit too
  bool rounded_ = false;
  std::string mixed_;  // the first series of the other kind
};

}  // namespace vorek

#endif  // VOREK_CHART_CHART_BUILDER_H_
