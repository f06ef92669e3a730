#ifndef VOREK_APPS_VOREK_CHART_KINDS_H_
#define VOREK_APPS_VOREK_CHART_KINDS_H_

#include <map>
#include <string>

#include "vorek/chart_kind.h"

namespace vorek {

// The kinds of charts by the words that commands and scripts call them.
inline const std::map<std::string, ChartKind>& ChartKindsByName() {
  static const std::map<std::string, ChartKind> kinds = {{"bars", ChartKind::kBars},
                                                         {"stacked", ChartKind::kStackedBars},
                                                         {"lines", ChartKind::kLines},
                                                         {"shares", ChartKind::kShares}};
  return kinds;
}

}  // namespace vorek

#endif  // VOREK_APPS_VOREK_CHART_KINDS_H_
