// A drive script of any text, beside a small catalogue: it ends, with its report or with an Error
// that names the line. Slashes are left out of it, so that all that it names lies in its own
// folder: nothing else appears.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "drive/driver.h"
#include "require.h"
#include "vorek/database.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

namespace {

using namespace vorek;
namespace fs = std::filesystem;

constexpr const char* kCatalogue =
    "create table tblVorekReport (ID int, Title nvarchar(50), Notes nvarchar(50), CreateDate "
    "datetime, SQLQuery nvarchar(max), MakeTree int, MakeTranspose bit, MakeMerge bit, MakeSecure "
    "bit, ShowDiagram bit, FormTypeID int, FontSize int, ReportRowHeight int)\n"
    "create table tblVorekReportLayout (ReportID int, ColumnNumber int, Alignment smallint, Width "
    "smallint, MergeType int, TransposeType int, MakeSum bit)\n"
    "create table tblVorekReportTranspose (ReportID int, ColumnNumber int, Alignment smallint, "
    "Width smallint, MergeType int)\n"
    "create table tblVorekReportExpression (ReportID int, ColumnNumber int, Name nvarchar(50), "
    "GeneralExpression nvarchar(200), FirstRowExpression nvarchar(200), JustShowPositiveValue "
    "bit)\n"
    "create table tblVorekSystemParameters (ID int, Value int)\n"
    "create table tblUser (ID int, FullName nvarchar(50), BranchID int)\n"
    "create table tblEmployee (ID int, FirstName nvarchar(50), SureName nvarchar(50))\n"
    "create table tblPosition (ID int, Name nvarchar(50))\n"
    "insert tblVorekReport values (1, N'یک', null, '2024-03-20', 'select 1 as ID, null as "
    "ParentID, "
    "N''a'' as a, 5 as b union all select 2, 1, N''b'', -7', 0, 0, 0, 0, 0, null, -1, -1), (2, "
    "N'درخت', null, '2024-03-20', 'select 1 as ID, null as ParentID, N''a'' as a, 5 as b union all "
    "select 2, 1, N''b'', -7', 1, 0, 0, 0, 0, null, -1, -1), (3, N'دو', null, '2024-03-20', "
    "'select "
    "N''a'' as a, N''x'' as b, 5 as c union all select N''a'', N''y'', 6', 0, 1, 1, 0, 0, null, "
    "-1, "
    "-1)\n"
    "insert tblVorekReportLayout values (1, 4, 1, 900, 0, 0, 1), (3, 1, 1, 900, 1, 1, 0), (3, 2, "
    "1, "
    "900, 0, 2, 0), (3, 3, 1, 900, 0, 3, 1)\n"
    "insert tblVorekReportExpression values (1, 5, N'مانده', 'C''4+C4', 'C4', null)\n";

// A folder in a folder, in which the program is from now on, with its settings and home.
class Place {
 public:
  Place() {
    std::string name = (fs::temp_directory_path() / "vorek-fuzz-XXXXXX").string();
    Require(::mkdtemp(name.data()) != nullptr, "no folder");
    around_ = name;
    fs::create_directory(around_ / "in");
    fs::current_path(around_ / "in");
    ::setenv("HOME", (around_ / "in").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (around_ / "in").c_str(), 1);
    ::setenv("TMPDIR", (around_ / "in").c_str(), 1);
    SqliteProvider()
        ->Connect("Provider=VorekSQLite;Data Source=books.db;Mode=Create")
        ->Execute(kCatalogue, {});
  }
  ~Place() {
    fs::current_path(around_.parent_path());
    fs::remove_all(around_);
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  void ExpectNothingOutside() const {
    const auto count = std::distance(fs::directory_iterator(around_), fs::directory_iterator());
    Require(count == 1, "something lies outside of the folder");
  }
  // All but the catalogue, so that one script finds nothing of another.
  void Clean() const {
    for (const auto& entry : fs::directory_iterator(around_ / "in")) {
      if (entry.path().filename() != "books.db") fs::remove_all(entry.path());
    }
  }

 private:
  fs::path around_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Place place;
  std::string text = "connect books.db;Mode=ReadOnly user=1\n";
  for (const char c : TextOf(data, size)) {
    if (c != '/' && c != '\\') text += c;
  }
  std::istringstream script(text);
  std::ostringstream out;
  try {
    drive::Driver driver(out);
    driver.Run(script);
  } catch (const Error& error) {
    Require(error.Description().starts_with("line "), "no line: " + error.Description());
  }
  place.ExpectNothingOutside();
  place.Clean();
  return 0;
}
