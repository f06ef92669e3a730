// A host with a screen of its own: shows a report as lines, and takes its parameters as lines.
//   text-screen CONNECTION REPORT USER

#include <vorek/error.h>
#include <vorek/report.h>
#include <vorek/sqlite.h>
#include <vorek/system.h>
#include <vorek/world.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "text_screen.h"

namespace {

void PrintGrid(const vorek::VorekReport1& report) {
  std::cout << report.Title() << ", " << report.QueryRecordCount() << " records\n";
  for (std::int32_t row = 0; row < report.Rows(); ++row) {
    for (std::int32_t col = 0; col < report.Cols(); ++col) {
      std::cout << (col == 0 ? "" : "\t") << report.TextMatrix(row, col);
    }
    std::cout << '\n';
  }
}

// False if the report can't be shown, or the lines end before it has run.
bool Show(vorek::VorekReport1& report, TextScreen& screen, std::int32_t number) {
  const bool shown = report.View(number);
  const std::string reason = report.StopReason();  // what no form has told
  if (!reason.empty()) std::cout << reason << '\n';
  if (!shown || !reason.empty()) return false;
  while (report.QueryRecordCount() < 0) {  // it waits for its parameters
    screen.Print(report.Root());
    if (!screen.Take(report.Root())) return false;
  }
  PrintGrid(report);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: text-screen CONNECTION REPORT USER\n";
    return 2;
  }
  try {
    const auto screen = std::make_shared<TextScreen>(std::cin, std::cout);
    vorek::WorldOptions options;
    options.providers = {vorek::SqliteProvider()};
    options.windows = screen;
    vorek::AddSystemServices(options);
    vorek::World world(options);
    vorek::VorekReport1 report(world);
    report.SetOleConnectionString(argv[1]);
    report.SetUserID(static_cast<std::int16_t>(std::atoi(argv[3])));
    return Show(report, *screen, std::atoi(argv[2])) ? 0 : 1;
  } catch (const vorek::Error& error) {
    std::cerr << error.Description() << " (" << error.Number() << ")\n";
    return 1;
  }
}
