#include "drill/record_selection.h"

#include "drill/cell_number.h"
#include "drill/form_metadata_reader.h"
#include "drill/query_columns.h"
#include "drill/record_condition.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// A selection of flxMain; each step is false where the rest can't be found.
class MainSelection {
 public:
  MainSelection(ReportContext& report, DrillHost& host)
      : report_(report), host_(host), state_(report.state), grid_(report.flxMain) {}

  void Run() {
    if (!IsOnRecord()) return;
    query_ = &StoredQueryOf(report_);
    const bool by_column = state_.ReportFormTypeID == -1;
    if (by_column && cache_.FormTypeColumn == 0 && !query_->procedure.empty()) {
      TakeFromHeaders();
      return;
    }
    if (!TakeFormType() || !TakeFormKey()) return;
    const RecordCondition condition = MakeRecordCondition(report_, state_.FormTypeID, row_);
    state_.UniqueWC = condition.text;
    if (condition.complete) host_.RaiseViewCelChange();
  }

 private:
  bool IsOnRecord() {
    if (state_.ReportID != cache_.CacheReportID) {
      cache_.FormTypeColumn = cache_.FormKeyColumn = 0;
      cache_.CacheReportID = state_.ReportID;
    }
    const std::int32_t col = grid_.Col();
    return col >= 1 && col < grid_.Cols() && row_ >= 1 && row_ < grid_.Rows();
  }

  // The query of a procedure can't be read for its columns.
  void TakeFromHeaders() {
    state_.FormID = state_.FormTypeID = 0;
    for (std::int32_t col = 1; col < grid_.Cols(); ++col) {
      const std::string header = text::ToUpper(grid_.TextMatrix(0, col));
      if (header == "FORMTYPEID" && state_.FormTypeID < 1) {
        state_.FormTypeID = CellWholeNumber(grid_, row_, col);
      } else if ((header == "FORMID" || header == "ID") && state_.FormID < 1) {
        state_.FormID = CellWholeNumber(grid_, row_, col);
      }
    }
    if (state_.FormTypeID > 0 && state_.FormID > 0) host_.RaiseViewCelChange();
  }

  bool TakeFormType() {
    if (state_.ReportFormTypeID != -1) {
      state_.FormTypeID = state_.ReportFormTypeID;
      return true;
    }
    if (cache_.FormTypeColumn == 0) {
      if (!query_->select_list) return false;
      const auto at = FindInList(*query_->select_list, ".FormTypeID");
      if (!at) return false;
      cache_.FormTypeColumn = CommaColumn(*query_->select_list, *at);
    }
    if (cache_.FormTypeColumn >= grid_.Cols()) return false;
    state_.FormTypeID = CellWholeNumber(grid_, row_, cache_.FormTypeColumn);
    return true;
  }

  // A key that isn't in the query leaves FormID as it is, and the condition is tried all the same.
  bool TakeFormKey() {
    if (cache_.FormKeyColumn == 0) {
      if (!query_->select_list) return false;
      const std::string& list = *query_->select_list;
      const std::string key = state_.ReportFormTypeID == -1
                                  ? ".FormID"
                                  : FormTableOf(report_, state_.FormTypeID, list) + ".ID";
      const auto at = FindInList(list, key);
      if (!at) return true;
      cache_.FormKeyColumn = OuterCommaColumn(list, *at);
    }
    state_.FormID = CellWholeNumber(grid_, row_, cache_.FormKeyColumn);
    return true;
  }

  ReportContext& report_;
  DrillHost& host_;
  ReportState& state_;
  Grid& grid_;
  FormColumnCache& cache_ = state_.FormColumns;
  std::int32_t row_ = grid_.Row();
  const StoredQuery* query_ = nullptr;
};

// A selection of flxTranspose, which knows no condition.
class TransposeSelection {
 public:
  TransposeSelection(ReportContext& report, DrillHost& host)
      : report_(report), host_(host), state_(report.state), grid_(report.flxTranspose) {}

  void Run() {
    if (row_ < 1 || grid_.Rows() < 2) {
      host_.RaiseViewCelChange();
    } else if (row_ < grid_.Rows()) {
      const StoredQuery& query = StoredQueryOf(report_);
      if (state_.ReportFormTypeID != -1) {
        TakeFixedForm(query);
      } else if (query.select_list) {
        TakeFormByColumns(*query.select_list);
      }
    }
  }

 private:
  void TakeFixedForm(const StoredQuery& query) {
    state_.FormTypeID = state_.ReportFormTypeID;
    const std::string& table = MasterTableOf(report_, state_.ReportFormTypeID);
    if (table.empty() || !query.select_list) return;
    const auto at = FindInList(*query.select_list, table + ".ID");
    if (!at) return;
    cache_.TransposeFormKeyColumn = CommaColumn(*query.select_list, *at);
    state_.FormID = CellWholeNumber(grid_, row_, cache_.TransposeFormKeyColumn);
    host_.RaiseViewCelChange();
  }

  void TakeFormByColumns(const std::string& list) {
    if (cache_.TransposeFormTypeColumn == 0) {
      const auto at = FindInList(list, ".FormTypeID");
      if (!at) return;
      cache_.TransposeFormTypeColumn = CommaColumn(list, *at);
    }
    if (cache_.TransposeFormTypeColumn >= grid_.Cols()) return;
    state_.FormTypeID = CellWholeNumber(grid_, row_, cache_.TransposeFormTypeColumn);
    if (cache_.TransposeFormKeyColumn == 0) {
      const auto at = FindInList(list, ".FormID");
      if (!at) return;
      cache_.TransposeFormKeyColumn = CommaColumn(list, *at);
    }
    state_.FormID = CellWholeNumber(grid_, row_, cache_.TransposeFormKeyColumn);
  }

  ReportContext& report_;
  DrillHost& host_;
  ReportState& state_;
  Grid& grid_;
  FormColumnCache& cache_ = state_.FormColumns;
  std::int32_t row_ = grid_.Row();
};

}  // namespace

void SelectMainRecord(ReportContext& report, DrillHost& host) {
  IgnoreErrors([&] { MainSelection(report, host).Run(); });
}

void SelectTransposeRecord(ReportContext& report, DrillHost& host) {
  IgnoreErrors([&] { TransposeSelection(report, host).Run(); });
}

}  // namespace vorek
