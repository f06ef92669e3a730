#include "print/template_job.h"

#include <algorithm>
#include <utility>

#include "print/print_document.h"
#include "text/utf8.h"
#include "vorek/error.h"
#include "vorek/print.h"

namespace vorek::print {
namespace {

constexpr int kTimeout = 6000;  // seconds, as for a report

std::string FileName(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

std::string ProviderOf(const std::string& connection) {
  const std::size_t equal = connection.find('=');
  const std::size_t end = std::min(connection.find(';'), connection.size());
  return equal >= end ? "" : connection.substr(equal + 1, end - equal - 1);
}

}  // namespace

PrintTemplate ParseTemplate(const XmlReader& read_xml, const std::string& bytes,
                            const std::string& name) {
  try {
    return ReadTemplate(read_xml(bytes));
  } catch (const Error& error) {
    throw Error(ErrorNumber::kBadTemplate,
                "فايل " + name + " الگوي چاپ اين برنامه نيست. " + error.Description());
  }
}

PrintTemplate LoadTemplate(const Files& files, const XmlReader& read_xml, const std::string& path) {
  return ParseTemplate(read_xml, files.Read(path), FileName(path));
}

void TemplateJob::AddFormula(std::int32_t&, const std::string& text) {
  auto [name, value] = ParseFormula(text);
  formulas_[name] = std::move(value);
}

ResultSetPtr TemplateJob::RunQuery() {
  const auto connection =
      FindProvider(parts_.providers, ProviderOf(connection_)).Connect(connection_);
  ResultSetPtr rows = connection->Execute(query_, {kTimeout, {}});
  if (rows != nullptr) return rows;
  throw Error(ErrorNumber::kObjectClosed, "پرسش چاپ سطري نداد: " + query_);
}

void TemplateJob::StartJob(std::int32_t) {
  PrintTemplate made = LoadTemplate(*parts_.files, parts_.read_xml, path_);
  FieldValues values{RunQuery(), formulas_};
  const std::string title = made.title;
  parts_.output->Show(std::make_shared<PrintDocument>(std::move(made), std::move(values)), title);
}

}  // namespace vorek::print

namespace vorek {

std::shared_ptr<PrintJobs> PrintsThroughTemplates(
    const WorldOptions& options, std::function<XmlElement(std::string_view)> read_xml,
    std::shared_ptr<print::PrintOutput> output) {
  return std::make_shared<print::TemplateJobs>(
      print::JobParts{options.providers, options.files, std::move(read_xml), std::move(output)});
}

}  // namespace vorek
