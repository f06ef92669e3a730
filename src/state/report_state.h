#ifndef VOREK_STATE_REPORT_STATE_H_
#define VOREK_STATE_REPORT_STATE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "state/calculation_trace.h"
#include "state/confirmed_value.h"
#include "state/form_metadata.h"
#include "vorek/result_set.h"

namespace vorek {

// What a run keeps of a field when its recordset is closed.
struct FieldInfo {
  std::string name;
  int type = 0;  // one of FieldType
  ResultColumn::Storage storage = ResultColumn::Storage::kText;
  int scale = 0;  // decimal places of a kScaled field
};

// What all code of one report control shares. -1 stands for no report, form, user or column.
struct ReportState {
  // Set by the host.
  std::int32_t UserID = -1;
  std::int32_t PeriodID = -1;
  std::int16_t OperationMode = -1;
  std::int32_t PositionID = -1;
  std::int32_t EmployeeID = -1;
  std::string OleConnectionString;
  std::string UseThisQuery;    // replaces the stored query at the next View
  std::string StoredSQLQuery;  // stored under the key "SQLQuery" and read by nobody
  bool Enable_DbClick = false;
  bool Enabled = true;  // of both grids
  bool Editable = false;
  bool CancelVisible = false;
  std::int32_t ParentID = 0;  // parent row whose children are shown; 0 and -1 for the top level
  std::int32_t CallerID = 0;
  std::int32_t local_ParentID = 0;

  // Kept up to date for the host.
  std::int32_t FormID = 0;
  std::int32_t FormTypeID = 0;
  std::string UniqueWC = "''<>''";
  std::int32_t flxMainRows = 0;
  std::int32_t flxMainHeight = 0;
  std::int32_t flxMainRowHeight = 0;
  bool ShowDiagram = false;
  bool isTransposedResult = false;

  // The definition.
  std::int32_t ReportID = -1;
  std::string Title;
  std::string ReportNotes;
  std::int32_t ReportFormTypeID = -1;
  std::int32_t ReportFontSize = -1;
  std::int32_t ReportRowHeight = -1;
  bool MakeTreeFlag = false;
  bool MakeMergeFlag = false;
  bool MakeTransposeFlag = false;
  bool ShowPopupTree = false;
  bool LockPrintPreview = false;
  bool MakeSecure = false;
  bool IsStoredProcedure = false;
  bool ShowFlatternParameters = true;
  bool HasProgressBar = false;
  std::string SQLSP;
  std::string SQLQuery;
  std::string roughSQL;    // the query with its markers
  std::string QueryText;   // the text that will be run
  bool Missing = false;    // the catalogue has no such report: an empty grid is shown
  bool Denied = false;     // the last View had no right: the report before stays
  std::string StopReason;  // of a run that ended without a word: what stopped it; "" for none

  // The run.
  bool NewDefinition = false;  // no run of the definition has filled the grid by now
  bool AnswersPut = false;     // QueryText comes from a confirmed form: an "@" in it is a value's
  std::string ParameterString;
  std::string LastParameterString;
  std::string CallerStringValue;
  std::string ListOfParameters;
  std::string ListOfVisualParameters;
  std::vector<ConfirmedValue> ConfirmedValues;  // of the form that AnswersPut tells of
  std::string QuerySource;
  std::int32_t QueryRecordCount = -1;
  CalculationTrace* Trace = nullptr;  // of a cell that somebody asks about; null for nobody
  std::int32_t FoundRows = -1;  // of the result on show before any filter; -1 without a result
  std::int32_t FilledRows = 0;  // those of them that flxMain was filled with
  std::vector<FieldInfo> QueryFields;  // field n stands in grid column n + 1
  std::int32_t ParentIDColumn = -1;    // ordinals of the key fields
  std::int32_t IDColumn = -1;
  std::int32_t TransposeRowColumn = -1;
  std::vector<std::int32_t> TransposeColumns;
  std::uint8_t GroupMode = 0;  // what was asked for: 0 plain, 1 subtotals, 3 both
  bool HasSumRow = false;      // in the grid when it was last gone through
  bool HasAvgRow = false;
  std::int32_t SortColumn = 0;         // the last one of flxMain; 0 for none
  std::int32_t SortCode = 1;           // 1 ascending, 2 descending
  std::int32_t TransposeSortCode = 0;  // the last sort of flxTranspose; 0 for none
  std::int32_t TreeSortColumn = 0;
  bool TreeSortDescending = false;
  bool ReapplySort = false;
  std::int32_t LastSearchColumn = -1;
  std::string LastSearchText;
  std::string Filter;               // that the rows on show have passed; "" for none
  std::uint32_t FilterBinding = 0;  // DataSession::Binding when it was set: it ends with that
  std::int32_t RememberedRow = 0;
  std::int32_t RememberedSearchRow = 0;
  std::int32_t ClearedRow = 0;
  bool AskFormFromMenu = false;
  std::string ReportDistributed;
  bool SecondaryWanted = false;  // the next double click takes the secondary link

  // From a row to its form.
  FormColumnCache FormColumns;
  FormMetadata Forms;

  bool IsResultEmpty() const { return QueryRecordCount == 0; }
  // The result is shown as a tree.
  bool MakeTree() const {
    return IDColumn != -1 && ParentIDColumn != -1 && !MakeTransposeFlag && MakeTreeFlag;
  }
  bool isTransposeFlexTree() const { return MakeTree() && IDColumn != -1 && ParentIDColumn != -1; }
};

}  // namespace vorek

#endif  // VOREK_STATE_REPORT_STATE_H_
