#ifndef VOREK_APPS_VOREK_DRIVE_SCRIPT_PRINT_H_
#define VOREK_APPS_VOREK_DRIVE_SCRIPT_PRINT_H_

#include <functional>
#include <memory>
#include <string>

#include "vorek/print_job.h"

namespace vorek::drive {

// Print jobs that say what they are given, a line each, and print nothing.
class ScriptPrints : public PrintJobs {
 public:
  explicit ScriptPrints(std::function<void(const std::string&)> print) : print_(std::move(print)) {}
  std::unique_ptr<PrintJob> Make() override;

 private:
  std::function<void(const std::string&)> print_;
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_SCRIPT_PRINT_H_
