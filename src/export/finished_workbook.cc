#include "export/finished_workbook.h"

#include "export/document_name.h"
#include "vorek/error.h"

namespace vorek {

FinishedWorkbook::FinishedWorkbook(ReportContext& report) : process_(report.process) {
  const Services& with = process_.services;
  if (with.documents == nullptr || with.files == nullptr) {
    throw Error(ErrorNumber::kPathAccess, "جايي براي ذخيره فايل اكسل نيست.");
  }
  path_ = with.documents->NewPath(DocumentName(report.state.Title, process_.clock().Now(), "xlsx"));
}

std::unique_ptr<OutputFile> FinishedWorkbook::Create() const {
  process_.services.files->MakeFoldersFor(path_);
  return process_.services.files->Create(path_);
}

void FinishedWorkbook::Show() const { process_.services.documents->Show(path_); }

}  // namespace vorek
