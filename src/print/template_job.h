#ifndef VOREK_PRINT_TEMPLATE_JOB_H_
#define VOREK_PRINT_TEMPLATE_JOB_H_

#include <map>
#include <memory>
#include <string>

#include "catalog/data_connection.h"
#include "platform/xml_element.h"
#include "print/print_output.h"
#include "vorek/files.h"
#include "vorek/print_job.h"

namespace vorek::print {

// What a job works with.
struct JobParts {
  ProviderList providers;
  std::shared_ptr<Files> files;
  XmlReader read_xml;
  std::shared_ptr<PrintOutput> output;
};

// A print job of our own: reads the template, runs the query on a connection of its own, and hands
// the pages to the output.
class TemplateJob : public PrintJob {
 public:
  explicit TemplateJob(JobParts parts) : parts_(std::move(parts)) {}

  void ReportFilePath(const std::string& path) override { path_ = path; }
  void DatabaseConnection(const std::string& text) override { connection_ = text; }
  // Of two formulas of one name the last one holds.
  void AddFormula(std::int32_t& index, const std::string& text) override;
  void DataQuery(const std::string& text) override { query_ = text; }
  void OutputTarget(std::int32_t) override {}
  void StartJob(std::int32_t) override;

 private:
  ResultSetPtr RunQuery();

  JobParts parts_;
  std::string path_;
  std::string connection_;
  std::string query_;
  std::map<std::string, std::string> formulas_;
};

class TemplateJobs : public PrintJobs {
 public:
  explicit TemplateJobs(JobParts parts) : parts_(std::move(parts)) {}
  std::unique_ptr<PrintJob> Make() override { return std::make_unique<TemplateJob>(parts_); }

 private:
  JobParts parts_;
};

// The template in these bytes, which `name` stands for in a refusal. Throws Error(kBadTemplate).
PrintTemplate ParseTemplate(const XmlReader& read_xml, const std::string& bytes,
                            const std::string& name);

// The template in a file. Throws Error(kBadTemplate), with the file's name, for one that is none.
PrintTemplate LoadTemplate(const Files& files, const XmlReader& read_xml, const std::string& path);

}  // namespace vorek::print

#endif  // VOREK_PRINT_TEMPLATE_JOB_H_
