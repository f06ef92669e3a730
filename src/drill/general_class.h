#ifndef VOREK_DRILL_GENERAL_CLASS_H_
#define VOREK_DRILL_GENERAL_CLASS_H_

#include <cstdint>
#include <string>

#include "grid/grid.h"

namespace vorek {

// Keeps the horizontal position of grids by report. By now it only takes the calls.
class GeneralClass {
 public:
  void Clear() {}
  void Add(const std::string& /*grid_name*/) {}
  void AddReport(Grid& /*grid*/, std::int32_t /*report_id*/) {}
  void setReport(Grid& /*grid*/, std::int32_t /*report_id*/) {}
  void MouseDown(Grid& /*grid*/) {}
  void Scroll(Grid& /*grid*/) {}
};

}  // namespace vorek

#endif  // VOREK_DRILL_GENERAL_CLASS_H_
