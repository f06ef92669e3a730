#ifndef VOREK_PRINT_JOB_H_
#define VOREK_PRINT_JOB_H_

#include <cstdint>
#include <memory>
#include <string>

namespace vorek {

// A print through a stored template. Its operations are called in this order; the job sees nothing
// else of the report.
class PrintJob {
 public:
  virtual ~PrintJob() = default;

  // The template's file.
  virtual void ReportFilePath(const std::string& path) = 0;
  // The connection string of the database that the rows stand in.
  virtual void DatabaseConnection(const std::string& text) = 0;
  // "name='value'" or "name=number"; the index isn't changed.
  virtual void AddFormula(std::int32_t& index, const std::string& text) = 0;
  virtual void DataQuery(const std::string& text) = 0;
  virtual void OutputTarget(std::int32_t target) = 0;
  // Brings the print up. Throws Error(kBadTemplate) for a file that is no template, with the reason
  // and the file's name, and what the file and the database throw.
  virtual void StartJob(std::int32_t start) = 0;
};

// Where jobs come from.
class PrintJobs {
 public:
  virtual ~PrintJobs() = default;
  virtual std::unique_ptr<PrintJob> Make() = 0;
};

}  // namespace vorek

#endif  // VOREK_PRINT_JOB_H_
