// A host's own test: a clock that stands still, a screen that remembers what was said, a database
// in files. Nothing of it needs a window or a server.

#include <vorek/clock.h>
#include <vorek/no_windows.h>
#include <vorek/report.h>
#include <vorek/shown_form.h>
#include <vorek/system.h>
#include <vorek/world.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "csv_provider.h"

namespace {

class StoppedClock : public vorek::Clock {
 public:
  vorek::DateTime Now() const override { return {2026, 3, 21, 8, 30, 0}; }
};

class RememberingWindows : public vorek::NoWindows {
 public:
  void ShowModal(vorek::Form& form) override {
    said.push_back(vorek::TextOf(form).main);
    vorek::CloseByBox(form);
  }
  std::vector<std::string> said;
};

void Expect(bool holds, const std::string& what) {
  if (holds) return;
  std::cerr << what << '\n';
  std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const auto windows = std::make_shared<RememberingWindows>();
  vorek::WorldOptions options;
  options.providers = {CsvFolderProvider()};
  options.clock = std::make_shared<StoppedClock>();
  options.windows = windows;
  vorek::World world(options);
  vorek::VorekReport1 report(world);
  report.SetOleConnectionString(std::string("Provider=CsvFolder;Folder=") + argv[1] +
                                ";Catalogue=" + argv[2]);
  report.SetUserID(1);

  Expect(report.View(1), "the report isn't shown");
  Expect(report.QueryRecordCount() == 3, "the report has other rows");
  Expect(report.TextMatrix(1, 2) == "250000", "the first amount is " + report.TextMatrix(1, 2));
  Expect(report.TextMatrix(1, 3) == "1405/01/01", "the day is " + report.TextMatrix(1, 3));
  Expect(!report.View(2), "a report over a table that isn't there is shown");
  Expect(windows->said.size() == 1, "the failure isn't told once");
}
