// A host in a page: shows a report by number and prints its grid.
//   embed "Provider=VorekSQLite;Data Source=sample.db" 201 1

#include <vorek/error.h>
#include <vorek/report.h>
#include <vorek/sqlite.h>
#include <vorek/system.h>
#include <vorek/world.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

void PrintGrid(const vorek::VorekReport1& report) {
  for (std::int32_t row = 0; row < report.Rows(); ++row) {
    for (std::int32_t col = 0; col < report.Cols(); ++col) {
      std::cout << (col == 0 ? "" : "\t") << report.TextMatrix(row, col);
    }
    std::cout << '\n';
  }
}

void Listen(vorek::VorekReport1& report) {
  report.Events().ViewCelChange = [&report] {
    if (report.FormTypeID() < 1) return;  // no form behind the row
    std::cout << "record: form " << report.FormTypeID() << ", " << report.UniqueWC() << '\n';
  };
  report.Events().DblClick = [](bool& cancel) {
    std::cout << "double click\n";
    cancel = true;  // no drill-through here
  };
}

bool Show(const std::string& connection, std::int32_t number, std::int16_t user) {
  // One world for the program: what its controls share.
  vorek::WorldOptions options;
  options.providers = {vorek::SqliteProvider()};
  vorek::AddSystemServices(options);
  vorek::World world(options);

  vorek::VorekReport1 report(world);
  Listen(report);
  report.SetOleConnectionString(connection);
  report.SetUserID(user);
  const bool shown = report.View(number);
  const std::string reason = report.StopReason();  // what no message has told
  if (!reason.empty()) std::cerr << reason << '\n';
  if (!shown || !reason.empty()) return false;
  std::cout << report.Title() << ", " << report.QueryRecordCount() << " records\n";
  PrintGrid(report);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: embed CONNECTION REPORT USER\n";
    return 2;
  }
  try {
    const bool shown =
        Show(argv[1], std::atoi(argv[2]), static_cast<std::int16_t>(std::atoi(argv[3])));
    return shown ? 0 : 1;
  } catch (const vorek::Error& error) {
    std::cerr << error.Description() << " (" << error.Number() << ")\n";
    return 1;
  }
}
