#ifndef VOREK_APPS_VOREK_DESK_REPORT_ACTION_H_
#define VOREK_APPS_VOREK_DESK_REPORT_ACTION_H_

namespace vorek::desk {

// What the toolbar does with the report on show.
enum class ReportAction {
  kRun,
  kParameters,
  kFind,
  kFilter,
  kSum,
  kColumns,
  kAverage,
  kChart,
  kText,           // export
  kWorkbook,       // export, through a template where there is one
  kQuickWorkbook,  // by the clipboard
  kAccess,         // export
  kPrint,          // the grid as it is shown
  kCopyPlain,
  kCopyWithHeaders,
};

}  // namespace vorek::desk

#endif  // VOREK_APPS_VOREK_DESK_REPORT_ACTION_H_
