// vorek-test-tds-server DATABASE: serves an embedded database until its input ends, at a port that
// it prints first. Ends by itself after an hour.

#include <unistd.h>

#include <exception>
#include <iostream>

#include "odbc/tds/server.h"
#include "vorek/connection_string.h"
#include "vorek/sqlite.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "vorek-test-tds-server DATABASE\n";
    return 2;
  }
  constexpr unsigned kLongestSeconds = 3600;
  alarm(kLongestSeconds);
  try {
    vorek::tds::Server server(
        {vorek::SqliteProvider(), vorek::FormatConnectionString({{"Provider", "VorekSQLite"},
                                                                 {"Data Source", arguments[1]}})});
    std::cout << server.Port() << std::endl;
    while (std::cin.get() != EOF) continue;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  return 0;
}
