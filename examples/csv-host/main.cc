// Shows a report over a folder of CSV files:
//   csv-host data /usr/share/vorek/samples/10-metadata.sql 1

#include <vorek/error.h>
#include <vorek/report.h>
#include <vorek/system.h>
#include <vorek/world.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "csv_provider.h"

namespace {

bool Show(const std::string& folder, const std::string& catalogue, std::int32_t number) {
  vorek::WorldOptions options;
  options.providers = {CsvFolderProvider()};
  vorek::AddSystemServices(options);
  vorek::World world(options);
  vorek::VorekReport1 report(world);
  report.SetOleConnectionString("Provider=CsvFolder;Folder=" + folder + ";Catalogue=" + catalogue);
  report.SetUserID(1);
  if (!report.View(number)) return false;
  for (std::int32_t row = 0; row < report.Rows(); ++row) {
    for (std::int32_t col = 1; col < report.Cols(); ++col) {
      std::cout << (col == 1 ? "" : "\t") << report.TextMatrix(row, col);
    }
    std::cout << '\n';
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: csv-host FOLDER CATALOGUE REPORT\n";
    return 2;
  }
  try {
    return Show(argv[1], argv[2], std::atoi(argv[3])) ? 0 : 1;
  } catch (const vorek::Error& error) {
    std::cerr << error.Description() << " (" << error.Number() << ")\n";
    return 1;
  }
}
