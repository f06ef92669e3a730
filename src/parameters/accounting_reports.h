#ifndef VOREK_PARAMETERS_ACCOUNTING_REPORTS_H_
#define VOREK_PARAMETERS_ACCOUNTING_REPORTS_H_

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace vorek {

// The reports on vouchers: their dates may not be left empty.
inline bool IsAccountingReport(std::int32_t report_id) {
  constexpr std::int32_t kReports[] = {2834, 2846, 2848, 2849, 2850, 2851,
                                       2852, 2853, 2856, 2857, 2858, 2859};
  return std::find(std::begin(kReports), std::end(kReports), report_id) != std::end(kReports);
}

}  // namespace vorek

#endif  // VOREK_PARAMETERS_ACCOUNTING_REPORTS_H_
