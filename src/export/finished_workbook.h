#ifndef VOREK_EXPORT_FINISHED_WORKBOOK_H_
#define VOREK_EXPORT_FINISHED_WORKBOOK_H_

#include <memory>
#include <string>

#include "grid/report_context.h"
#include "vorek/output_file.h"

namespace vorek {

// The place of a report's workbook among the user's documents.
class FinishedWorkbook {
 public:
  // Takes a free name. Throws Error(kPathAccess) where there is no place for documents.
  explicit FinishedWorkbook(ReportContext& report);

  const std::string& Path() const { return path_; }
  std::unique_ptr<OutputFile> Create() const;
  // Brings the finished file before the user.
  void Show() const;

 private:
  Process& process_;
  std::string path_;
};

}  // namespace vorek

#endif  // VOREK_EXPORT_FINISHED_WORKBOOK_H_
