#include <filesystem>
#include <memory>
#include <string>

#include "command.h"
#include "sql_texts.h"
#include "vorek/error.h"

namespace vorek {
namespace {

namespace fs = std::filesystem;

// The tables that describe reports and rights, and those that prints are staged in.
constexpr const char* kCatalogueTexts[] = {"10-metadata.sql", "12-print-staging.sql"};

void MakeCatalogue(const std::string& file) {
  if (fs::exists(file)) {
    throw Error(ErrorNumber::kPathAccess, "There is a file " + file + " already.");
  }
  std::vector<fs::path> texts;
  for (const char* const text : kCatalogueTexts) texts.push_back(SqlTextFolder("") / text);
  MakeDatabase(file, texts);
}

}  // namespace

void AddCreateCommand(CLI::App& app) {
  auto file = std::make_shared<std::string>();
  CLI::App* const command = app.add_subcommand(
      "create", "Make an embedded database with an empty catalogue: reports, rights, forms");
  command->add_option("FILE", *file, "the file of the database; must not be there yet")->required();
  command->callback([file] { WithFiles([&] { MakeCatalogue(*file); }); });
}

}  // namespace vorek
