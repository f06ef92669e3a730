#include "vorek/spreadsheet.h"

#include <utility>

#include "adapters/xlsx/template_workbook.h"
#include "adapters/xlsx/workbook_writer.h"
#include "vorek/xlsx.h"

namespace vorek {
namespace {

class Xlsx : public Spreadsheet {
 public:
  std::unique_ptr<WorkbookWriter> NewWorkbook(std::unique_ptr<OutputFile> out,
                                              WorkbookLook look) override {
    return std::make_unique<xlsx::StreamedWorkbook>(std::move(out), std::move(look));
  }
  std::unique_ptr<TemplateSheet> OpenTemplate(std::string bytes, const std::string& name,
                                              Question question) override {
    return std::make_unique<xlsx::TemplateWorkbook>(std::move(bytes), name, std::move(question));
  }
};

}  // namespace

std::shared_ptr<Spreadsheet> XlsxSpreadsheet() { return std::make_shared<Xlsx>(); }

}  // namespace vorek
