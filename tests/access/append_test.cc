// Catches rows that are lost, doubled or read otherwise by another program, a file that isn't whole
// after an append, and a table that is written though its rules aren't kept.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

#include "access/blank_file.h"
#include "adapters/access/guarded_read.h"
#include "support/scratch_folder.h"
#include "vorek/access.h"
#include "vorek/access_file.h"
#include "vorek/error.h"
#include "vorek/files.h"
#include "vorek/system.h"

namespace vorek {
namespace {

class AccessTest : public testing::Test {
 protected:
  void Put(const std::string& bytes) { files_->Write(path_, bytes); }
  std::string Got() { return files_->Read(path_); }
  std::unique_ptr<AccessConnection> Open() {
    return access_->Open("Provider=x;Data Source=\"" + path_ + "\";Mode=Share Deny None");
  }
  // What another program prints of the file.
  std::string Run(const std::string& command) {
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    std::string out;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) out += static_cast<char>(c);
    pclose(pipe);
    return out;
  }
  std::string Export() { return Run("mdb-export -H " + path_ + " Rows"); }
  // The refusal of one row; empty if it was taken.
  std::string Refusal(const std::vector<std::string>& names,
                      const std::vector<std::string>& values) {
    try {
      const auto connection = Open();
      connection->Insert("Rows", names, values);
      connection->Close();
    } catch (const Error& error) {
      return error.Description();
    }
    return "";
  }

  ScratchFolder folder_;
  std::string path_ = folder_.Path("rows.mdb");
  std::shared_ptr<Files> files_ = MachineFiles();
  std::shared_ptr<AccessFile> access_ = JetAccessFiles(files_);
};

BlankFile Keyed() {
  BlankFile file;
  file.fields = {{"Id", 4}, {"Name", 10, 100, {{"Description", "#2"}}}, {"Amount", 5}};
  file.key = 0;
  return file;
}

struct Border {
  int rows;
  std::uint32_t map_bits;
};

TEST_F(AccessTest, IsWholeAtEachBorder) {
  // A page's end, a leaf's end, a second level, a third one, maps that list pages elsewhere.
  const Border borders[] = {{1, 512},   {60, 512},  {401, 512},   {402, 512},
                            {803, 512}, {5000, 64}, {40000, 512}, {120000, 512}};
  for (const Border& border : borders) {
    SCOPED_TRACE(border.rows);
    BlankFile blank = Keyed();
    blank.map_bits = border.map_bits;
    Put(blank.Bytes());
    for (int part = 0; part < 2; ++part) {
      const auto connection = Open();
      for (int i = 0; i < border.rows; ++i) {
        const int key = (i * 2 + part) * (i % 3 == 0 ? -1 : 1) - part * 1000000;
        connection->Insert("Rows", {"Id", "Name", "Amount"},
                           {std::to_string(key), "'" + std::string(std::size_t(i % 40), 'x') + "'",
                            std::to_string(i)});
      }
      connection->Close();
      ASSERT_EQ(WhatIsWrong(Got()), "");
    }
    std::istringstream lines(Export());
    std::string line;
    std::int64_t rows = 0;
    double sum = 0;
    for (; std::getline(lines, line); ++rows) sum += std::stod(line.substr(line.rfind(',') + 1));
    EXPECT_EQ(rows, 2 * border.rows);
    EXPECT_EQ(sum, static_cast<double>(border.rows) * (border.rows - 1));
    EXPECT_EQ(std::stoi(Run("mdb-count " + path_ + " Rows")), 2 * border.rows);
  }
}

BlankFile OfEveryKind() {
  BlankFile file;
  file.fields = {
      {"No", 4, 4, {}, true}, {"Flag", 1},   {"Byte", 2},   {"Short", 3},
      {"Money", 5},           {"Single", 6}, {"Real", 7},   {"Day", 8},
      {"Text", 10, 40},       {"Memo", 12},  {"Exact", 16}, {"Latin", 10, 40, {}, false, true}};
  return file;
}

TEST_F(AccessTest, IsReadAsItWasWritten) {
  Put(OfEveryKind().Bytes());
  const auto connection = Open();
  const std::vector<std::string> names = {"Flag", "Byte", "Short", "Money", "Single", "Real",
                                          "Day",  "Text", "Memo",  "Exact", "Latin"};
  connection->Insert("Rows", names,
                     {"1", "255", "-32768", "-922337203685477.5807", "1.5", "0.1", "36526",
                      "'حساب علي's'", "12", "-12345678901234.5678", "'plain'"});
  connection->Insert("Rows", names,
                     {"0", "0.5", "1.5", "0.00005", "0", "1E+20", "2", "''", "0", "0", "'ب'"});
  connection->Insert("Rows", {"Byte"}, {"7"});
  connection->Close();
  EXPECT_EQ(WhatIsWrong(Got()), "");
  // mdb-export shows an empty text as it shows none.
  EXPECT_EQ(Export(),
            "1,1,255,-32768,-922337203685477.5807,1.5,0.1,\"01/01/00 00:00:00\",\"حساب علي's\","
            "\"12\",-12345678901234.5678,\"plain\"\n"
            "2,0,0,2,0.0000,0,1e+20,\"01/01/00 00:00:00\",,\"0\",0.0000,\"ب\"\n"
            "3,0,7,,,,,,,,,\n");
}

// A row of random values, and the line that another program prints of it.
class RandomRow {
 public:
  RandomRow(int number, std::mt19937& random) : random_(random) {
    line = std::to_string(number) + ",";
    Add("Flag", std::to_string(Below(2)));
    Add("Byte", std::to_string(Below(256)));
    Add("Short", std::to_string(Below(65536) - 32768));
    Add("Money", Decimal(1000000000000));
    Add("Single", std::to_string(Below(4000)) + ".5");
    Add("Real", "-" + std::to_string(Below(4000)) + ".125");
    const std::int64_t day = Below(9);
    Add("Day", std::to_string(36526 + day), "\"01/0" + std::to_string(day + 1) + "/00 00:00:00\"");
    AddText("Text", "ب");
    Add("Memo", "12", "\"12\"");
    Add("Exact", Decimal(100000000));
    AddText("Latin", Below(2) == 0 ? "x" : "پ");
    line.back() = '\n';
  }

  std::vector<std::string> names;
  std::vector<std::string> values;
  std::string line;

 private:
  std::int64_t Below(std::int64_t limit) { return static_cast<std::int64_t>(random_()) % limit; }
  std::string Decimal(std::int64_t limit) {
    return (Below(2) == 0 ? "-" : "") + std::to_string(1 + Below(limit)) + "." +
           std::to_string(1000 + Below(9000));
  }
  void Add(const char* name, const std::string& value) { Add(name, value, value); }
  void Add(const char* name, const std::string& value, const std::string& shown) {
    names.emplace_back(name);
    values.push_back(value);
    line += shown + ",";
  }
  void AddText(const char* name, const std::string& letter) {
    std::string text;
    for (std::int64_t length = Below(21); length > 0; --length) text += letter;
    Add(name, "'" + text + "'", text.empty() ? "" : "\"" + text + "\"");
  }

  std::mt19937& random_;
};

TEST_F(AccessTest, IsWholeAfterEachAppendOfRowsOfEveryKind) {
  for (const std::uint32_t map_bits : {64U, 512U}) {
    SCOPED_TRACE(map_bits);
    BlankFile blank = OfEveryKind();
    blank.key = 0;
    blank.map_bits = map_bits;
    Put(blank.Bytes());
    std::mt19937 random(map_bits);
    std::string lines;
    for (int append = 0, number = 0; append < 40; ++append) {
      const auto connection = Open();
      for (auto rows = 1 + random() % 80; rows > 0; --rows) {
        const RandomRow row(++number, random);
        connection->Insert("Rows", row.names, row.values);
        lines += row.line;
      }
      connection->Close();
      ASSERT_EQ(WhatIsWrong(Got()), "") << append;
    }
    EXPECT_EQ(Export(), lines);
  }
}

// Of a row without texts the key may be the last thing before the mask.
TEST_F(AccessTest, ReadsTheKeyAtARowsEnd) {
  BlankFile blank;
  blank.fields = {{"Amount", 5}, {"Id", 4}};
  blank.key = 1;
  Put(blank.Bytes());
  EXPECT_EQ(Refusal({"Id"}, {"1"}), "");
  EXPECT_EQ(Refusal({"Id"}, {"2"}), "");
  EXPECT_NE(Refusal({"Id"}, {"1"}), "");
  EXPECT_EQ(WhatIsWrong(Got()), "");
}

TEST_F(AccessTest, ShowsFieldsAndTheirDescriptions) {
  BlankFile blank = Keyed();
  blank.fields[1].properties["Required"] = "yes";
  Put(blank.Bytes());
  EXPECT_EQ(access_->Tables(path_), std::vector<std::string>{"Rows"});
  const std::vector<AccessField> fields = access_->Fields(path_, "Rows");
  ASSERT_EQ(fields.size(), 3U);
  EXPECT_EQ(fields[1].description, "#2");
  EXPECT_EQ(fields[1].size, 50);
  EXPECT_EQ(fields[1].type, 10);
  EXPECT_TRUE(fields[1].required);
  EXPECT_FALSE(fields[0].required);
  EXPECT_NE(Run("mdb-prop " + path_ + " Rows").find("#2"), std::string::npos);
  EXPECT_NE(Run("mdb-schema " + path_).find("Text (50)"), std::string::npos);
}

TEST_F(AccessTest, KeepsRowsBeforeARefusedOne) {
  Put(Keyed().Bytes());
  const auto connection = Open();
  connection->Insert("Rows", {"Id"}, {"7"});
  EXPECT_THROW(connection->Insert("Rows", {"Id"}, {"7"}), Error);
  EXPECT_THROW(connection->Insert("Rows", {"Amount"}, {"7"}), Error);
  connection->Close();
  EXPECT_EQ(WhatIsWrong(Got()), "");
  EXPECT_EQ(Export(), "7,,\n");
  EXPECT_NE(Refusal({"Id"}, {"7"}), "");
}

TEST_F(AccessTest, RefusesByNameBeforeAByteIsWritten) {
  struct Case {
    const char* what;
    std::function<void(BlankFile&)> change;
    std::vector<std::string> names;
    std::vector<std::string> values;
    const char* told;
  };
  const Case cases[] = {
      {"text index", [](BlankFile& f) { f.key = 1; }, {"Name"}, {"'a'"}, "ايندکس"},
      {"required",
       [](BlankFile& f) { f.fields[1].properties["Required"] = "yes"; },
       {"Id"},
       {"1"},
       "Name"},
      {"rule",
       [](BlankFile& f) { f.fields[2].properties["ValidationRule"] = ">0"; },
       {"Id"},
       {"1"},
       "Amount"},
      {"default",
       [](BlankFile& f) { f.fields[2].properties["DefaultValue"] = "Now()"; },
       {"Id"},
       {"1"},
       "Amount"},
      {"empty",
       [](BlankFile& f) { f.fields[1].properties["AllowZeroLength"] = "no"; },
       {"Id", "Name"},
       {"1", "''"},
       "Name"},
      {"system", [](BlankFile& f) { f.flags = 2; }, {"Id"}, {"1"}, "Rows"},
      {"unknown", [](BlankFile&) {}, {"Other"}, {"1"}, "Other"},
      {"twice", [](BlankFile&) {}, {"Id", "id"}, {"1", "2"}, "id"},
      {"long", [](BlankFile&) {}, {"Id"}, {"2147483648"}, "Id"},
      {"money", [](BlankFile&) {}, {"Id", "Amount"}, {"1", "922337203685477.5808"}, "Amount"},
      {"letters",
       [](BlankFile&) {},
       {"Id", "Name"},
       {"1", "'" + std::string(51, 'a') + "'"},
       "Name"}};
  for (const Case& refused : cases) {
    SCOPED_TRACE(refused.what);
    BlankFile blank = Keyed();
    refused.change(blank);
    Put(blank.Bytes());
    EXPECT_NE(Refusal(refused.names, refused.values).find(refused.told), std::string::npos)
        << Refusal(refused.names, refused.values);
    EXPECT_EQ(Got(), blank.Bytes());
  }
}

// The header's bytes are covered by a stream, under which those of a blank file are zero.
void Cover(std::string& file, std::size_t at, const std::string& bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    file[at + i] = static_cast<char>(file[at + i] ^ bytes[i]);
  }
}

TEST_F(AccessTest, RefusesAFileWithAPassword) {
  constexpr std::size_t kPassword = 0x42;
  constexpr std::size_t kCreated = 0x72;
  const std::string created("\0\0\0\0\x80\xd5\xe1\x40", 8);  // 36524, which is 8eac
  std::string file = Keyed().Bytes();
  Cover(file, kCreated, created);
  for (std::size_t i = 0; i < 40; i += 4) Cover(file, kPassword + i, "\xac\x8e");
  Put(file);
  EXPECT_EQ(Refusal({"Id"}, {"1"}), "");
  Cover(file, kPassword + 38, "1");
  Put(file);
  EXPECT_EQ(Refusal({"Id"}, {"2"}), "فايل اکسس گذرواژه دارد و نوشته نمي شود.");
  EXPECT_EQ(Got(), file);
  EXPECT_THROW(access_->Tables(path_), Error);
}

TEST_F(AccessTest, RefusesOtherFilesAndOnesInUse) {
  std::string jet3 = Keyed().Bytes();
  jet3[0x14] = 0;
  std::string encrypted = Keyed().Bytes();
  encrypted[0x3e] = static_cast<char>(encrypted[0x3e] ^ 1);
  for (const std::string& bytes : {jet3, encrypted, std::string("no file"), std::string()}) {
    Put(bytes);
    EXPECT_NE(Refusal({"Id"}, {"1"}), "");
    EXPECT_EQ(Got(), bytes);
  }
  Put(Keyed().Bytes());
  files_->Write(folder_.Path("rows.ldb"), "someone");
  EXPECT_NE(Refusal({"Id"}, {"1"}).find(path_), std::string::npos);
  EXPECT_EQ(Got(), Keyed().Bytes());
}

TEST_F(AccessTest, GivesAnUnfilledFieldItsDefault) {
  BlankFile blank = Keyed();
  blank.fields[2].properties["DefaultValue"] = "0";
  Put(blank.Bytes());
  EXPECT_EQ(Refusal({"Id"}, {"3"}), "");
  EXPECT_EQ(Export(), "3,,0.0000\n");
}

// Bytes turned anywhere in a file that has rows, most of them where its catalogue lies.
std::string DamagedFile(std::string bytes, std::mt19937& random) {
  const auto below = [&](std::size_t limit) { return random() % limit; };
  if (below(10) == 0) bytes.resize(below(bytes.size()));
  for (std::size_t turns = 1 + below(20); turns > 0 && !bytes.empty(); --turns) {
    const std::size_t at = below(bytes.size());
    bytes[at] = static_cast<char>(below(3) == 0 ? 0xff : below(256));
  }
  return bytes;
}

// A row would get a place for each of them.
TEST_F(AccessTest, RefusesMoreVariableFieldsThanATableHas) {
  constexpr std::size_t kPage = 4096;
  constexpr std::size_t kVariableFields = 43;
  std::string bytes = Keyed().Bytes();
  for (std::size_t page = 3 * kPage; page < bytes.size(); page += kPage) {
    if (bytes[page] == '\x02') bytes.replace(page + kVariableFields, 2, "\x00\x01", 2);
  }
  Put(bytes);
  EXPECT_NE(Refusal({"Id"}, {"1"}), "");
  EXPECT_TRUE(Got() == bytes);
}

TEST_F(AccessTest, EndsADamagedFileInAPersianRefusal) {
  Put(Keyed().Bytes());
  ASSERT_EQ(Refusal({"Id", "Name", "Amount"}, {"1", "'a'", "5"}), "");
  const std::string whole = Got();
  std::mt19937 random(5);
  int refused = 0;
  for (int i = 0; i < 150; ++i) {
    const std::string bytes = DamagedFile(whole, random);
    Put(bytes);
    std::string told;
    try {
      for (const std::string& table : access_->Tables(path_)) access_->Fields(path_, table);
      const auto connection = Open();
      connection->Insert("Rows", {"Id", "Name"}, {"2", "'b'"});
      connection->Close();
    } catch (const Error& error) {
      told = error.Description();
    }
    refused += told.empty() ? 0 : 1;
    if (told.empty()) continue;
    EXPECT_EQ(Got(), bytes) << i;
    EXPECT_NE(told.find_first_of("\xd8\xd9\xda\xdb"), std::string::npos) << i << ": " << told;
  }
  EXPECT_GT(refused, 8);
}

// The sample's own file: to write it anew, take it away and run this test twice.
TEST_F(AccessTest, IsTheSamplesFile) {
  constexpr const char* kPath = "samples/invoices.mdb";
  BlankFile invoices;
  invoices.table = "Invoices";
  invoices.fields = {{"Id", 4, 4, {}, true},
                     {"Customer", 10, 100, {{"Description", "#2"}}},
                     {"InvoiceNumber", 4, 4, {{"Description", "#3"}}},
                     {"InvoiceDate", 10, 20, {{"Description", "#4"}}},
                     {"NetValue", 5, 8, {{"Description", "#5"}}},
                     {"Remarks", 12}};
  invoices.key = 0;
  const bool there = files_->Exists(kPath);
  if (!there) files_->Write(kPath, invoices.Bytes());
  EXPECT_TRUE(there);
  EXPECT_EQ(files_->Read(kPath), invoices.Bytes());
  EXPECT_EQ(access_->Tables(kPath), std::vector<std::string>{"Invoices"});
}

std::string GuardedRefusal(const std::function<std::vector<std::string>()>& read) {
  try {
    jet::ReadGuarded(read);
  } catch (const Error& error) {
    return std::to_string(static_cast<long>(error.Number())) + " " + error.Description();
  }
  return "";
}

TEST(GuardedReadTest, KeepsWhatFallsApart) {
  const std::vector<std::string> texts = {"", "a", std::string("b\0c", 3),
                                          std::string(100000, 'x')};
  EXPECT_EQ(jet::ReadGuarded([&] { return texts; }), texts);
  EXPECT_TRUE(jet::ReadGuarded([] { return std::vector<std::string>(); }).empty());
  const std::string damaged =
      std::to_string(static_cast<long>(ErrorNumber::kInvalidCall)) + " فايل اکسس خراب است.";
  EXPECT_EQ(GuardedRefusal([]() -> std::vector<std::string> { std::abort(); }), damaged);
  EXPECT_EQ(GuardedRefusal([]() -> std::vector<std::string> { _exit(0); }), damaged);
  EXPECT_EQ(GuardedRefusal([]() -> std::vector<std::string> { throw std::runtime_error("x"); }),
            damaged);
  EXPECT_EQ(GuardedRefusal([]() -> std::vector<std::string> {
              throw Error(ErrorNumber::kMissingObject, "نيست");
            }),
            std::to_string(static_cast<long>(ErrorNumber::kMissingObject)) + " نيست");
}

}  // namespace
}  // namespace vorek
