#include "author/print_template_check.h"

#include <string>
#include <utility>

#include "catalog/recordset.h"
#include "catalog/report_row.h"
#include "export/attachment.h"
#include "export/crystal_print.h"
#include "print/template_check.h"
#include "print/template_job.h"
#include "vorek/error.h"

namespace vorek {
namespace {

class Templates {
 public:
  Templates(Process& process, std::int32_t id, const XmlReader& read_xml,
            std::vector<Finding>& findings)
      : process_(process), id_(id), read_xml_(read_xml), findings_(findings) {}

  void Run() {
    Recordset& stored = process_.dten().rssqlGeneral1;
    const bool readable = IgnoreErrors([&] {
      OpenSlot(stored, "Select * from tblVorekFormAttachment Where FormTypeID = " +
                           std::to_string(kTemplateFormType) +
                           " and FileExtension like 'rpt' and FormID = " + std::to_string(id_) +
                           " Order by RowNumber");
    });
    if (readable && !stored.AtEnd()) ReadReport();
    for (; readable && !stored.AtEnd(); stored.MoveNext()) CheckStored(stored);
    stored.Close();
  }

 private:
  void Tell(bool stops, std::string what, std::string why) {
    findings_.push_back({stops ? Rule::kPrintStops : Rule::kPrintLook,
                         id_,
                         {.table = CatalogueTable::kAttachment, .row = row_, .field = "FileData"},
                         {std::move(what), std::move(why)}});
  }

  // What the templates may name.
  void ReadReport() {
    Recordset& slot = process_.dten().rssqlGeneral2;
    IgnoreErrors([&] {
      OpenSlot(slot, "Select * from " + StagedSource(process_, id_) + " Where 1 = 0");
      columns_ = slot.SharedResult();
    });
    IgnoreErrors([&] {
      OpenSlot(slot,
               "Select Name from tblVorekReportParameter Where ReportID=" + std::to_string(id_));
      for (; !slot.AtEnd(); slot.MoveNext()) parameters_.push_back(TextOf(slot, "Name"));
    });
    slot.Close();
  }

  void CheckStored(const Recordset& row) {
    row_ = TextOf(row, "RowNumber");
    if (columns_ == nullptr) {
      Tell(true, "the database has no table for the rows of a print", "nothing is printed");
    }
    try {
      const print::PrintTemplate stored =
          print::ParseTemplate(read_xml_, AttachmentBytes(process_, row), TextOf(row, "FileName"));
      for (print::TemplateFault& fault : print::CheckTemplate(stored, columns_, parameters_)) {
        Tell(fault.stops, std::move(fault.what), std::move(fault.why));
      }
    } catch (const Error& error) {
      Tell(true, error.Description(), "nothing is printed but the list without a template");
    }
  }

  Process& process_;
  std::int32_t id_;
  const XmlReader& read_xml_;
  std::vector<Finding>& findings_;
  std::string row_;
  ResultSetPtr columns_;  // null: they can't be read
  std::vector<std::string> parameters_;
};

}  // namespace

void CheckPrintTemplates(Process& process, std::int32_t report_id, const XmlReader& read_xml,
                         std::vector<Finding>& findings) {
  Templates(process, report_id, read_xml, findings).Run();
}

}  // namespace vorek
