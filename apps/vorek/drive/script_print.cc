#include "drive/script_print.h"

#include "drive/words.h"

namespace vorek::drive {
namespace {

class ScriptPrint : public PrintJob {
 public:
  explicit ScriptPrint(std::function<void(const std::string&)> print) : print_(std::move(print)) {}

  void ReportFilePath(const std::string& path) override { print_("print " + Quote(path)); }
  void DatabaseConnection(const std::string& text) override { print_("connection " + Quote(text)); }
  void AddFormula(std::int32_t& index, const std::string& text) override {
    print_("formula " + std::to_string(index) + " " + Quote(text));
  }
  void DataQuery(const std::string& text) override { print_("query " + Quote(text)); }
  void OutputTarget(std::int32_t target) override { print_("target " + std::to_string(target)); }
  void StartJob(std::int32_t start) override { print_("start " + std::to_string(start)); }

 private:
  std::function<void(const std::string&)> print_;
};

}  // namespace

std::unique_ptr<PrintJob> ScriptPrints::Make() { return std::make_unique<ScriptPrint>(print_); }

}  // namespace vorek::drive
