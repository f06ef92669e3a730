// What the server says of itself, and how it reaches the host.

#include <gtest/gtest.h>

#include <string>

#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"
#include "vorek/error.h"
#include "vorek/sqlite.h"

namespace vorek::tds {
namespace {

class ErrorsTest : public testing::Test {
 protected:
  void On(const std::string& tokens) {
    server_.Told().On("run", [tokens](PacketStream& out) {
      out.Put(tokens);
      out.End();
    });
  }
  Failure Run() {
    return FailureOf([&] { result_ = connection_->Execute("run", {}); });
  }

  static std::string OneRow(std::int64_t value) {
    const std::vector<Column> columns = {{"a", Kind::kInt, 4}};
    return ColumnsToken(columns) + Row(columns).Whole(value).Token();
  }
  void ExpectUsable() {
    const ResultSetPtr rows = connection_->Execute("select 5 as a", {});
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->columns[0].Scaled(0), 5);
  }

  Server server_{InMemory()};
  std::unique_ptr<DatabaseConnection> connection_ = ConnectTo(StringFor(server_));
  ResultSetPtr result_;
};

TEST_F(ErrorsTest, HaveAdosNumbers) {
  struct Case {
    std::int32_t number;
    int severity;
    long expected;
  };
  const Case cases[] = {
      {208, 16, -2147217865},                             // no such table
      {102, 15, -2147217900},                             // a text that can't be read
      {207, 16, -2147217900},                             // no such column
      {229, 14, -2147217900},                             // no right to read
      {2812, 16, -2147217865},                            // no such procedure
      {8134, 16, -2147217900},                            // a division by zero
      {2627, 14, -2147217873},                            // a key
      {2601, 14, -2147217873},                            // an index that lets none stand twice
      {547, 16, -2147217873},                             // a foreign key
      {515, 16, -2147217873},                             // NOT NULL
      {8152, 16, -2147217833},                            // a text that is too long
      {8115, 16, -2147217833},                            // an overflow
      {220, 16, -2147217833},                             // the same of a small type
      {245, 16, -2147217913},                             // a text that is no number
      {241, 16, -2147217913},                             // nor a date
      {8114, 16, -2147217913},  {1205, 13, -2147217900},  // chosen as the victim of a deadlock
      {1222, 16, -2147217900},                            // waited too long for a lock
      {50000, 16, -2147217900},                           // RAISERROR
  };
  for (const Case& c : cases) {
    const std::string words = "پيغام " + std::to_string(c.number) + " [با] '%s'.";
    On(ErrorToken({c.number, 3, c.severity, words}) + DoneToken(kDoneError));
    const Failure failure = Run();
    EXPECT_EQ(failure.number, c.expected) << c.number;
    EXPECT_EQ(failure.words, words);
    ExpectUsable();
  }
}

TEST_F(ErrorsTest, KeepLongWords) {
  for (const std::size_t letters : Sizes({1, 127, 400, 2046, 2047, 2048, 4000, 20000})) {
    std::string words;
    for (std::size_t i = 0; i < letters; ++i) words += i % 7 == 6 ? " " : "ي";
    words += "!";
    On(ErrorToken({50000, 1, 16, words}) + DoneToken(kDoneError));
    EXPECT_EQ(Run().words, words) << letters;
  }
}

TEST_F(ErrorsTest, TellTheFirstOfSeveral) {
  On(ErrorToken({208, 1, 16, "first"}) + ErrorToken({8180, 1, 16, "second"}) +
     DoneToken(kDoneError));
  const Failure failure = Run();
  EXPECT_EQ(failure.words, "first");
  EXPECT_EQ(failure.number, -2147217865);
}

TEST_F(ErrorsTest, AreToldBeforeWhatIsPrinted) {
  On(InfoToken({0, 1, 0, "printed"}) + ErrorToken({208, 1, 16, "failed"}) +
     InfoToken({0, 1, 0, "printed"}) + DoneToken(kDoneError));
  EXPECT_EQ(Run().words, "failed");
}

// Wherever in the blocks of rows that are read at a time.
TEST_F(ErrorsTest, EndTheRowsThatTheyInterrupt) {
  for (const std::size_t before : Sizes({0, 1, 2, 511, 512, 513, 2000})) {
    const std::vector<Column> columns = {{"a", Kind::kInt, 4}};
    std::string tokens = ColumnsToken(columns);
    for (std::size_t i = 0; i < before; ++i) tokens += Row(columns).Whole(7).Token();
    On(tokens + ErrorToken({8134, 1, 16, "Divide by zero error encountered."}) +
       DoneToken(kDoneError));
    const Failure failure = Run();
    EXPECT_EQ(failure.number, -2147217900) << before;
    EXPECT_EQ(failure.words, "Divide by zero error encountered.");
    ExpectUsable();
  }
}

TEST_F(ErrorsTest, FailTheWholeBehindARowSet) {
  On(OneRow(1) + DoneToken(kDoneMore | kDoneCount, 1) + ErrorToken({208, 1, 16, "later"}) +
     DoneToken(kDoneError));
  EXPECT_EQ(Run().words, "later");
  On(OneRow(1) + DoneToken(kDoneMore | kDoneCount, 1) + OneRow(2) +
     ErrorToken({547, 1, 16, "in the second"}) + DoneToken(kDoneError));
  EXPECT_EQ(Run().words, "in the second");
  On(ErrorToken({208, 1, 16, "before"}) + DoneToken(kDoneError | kDoneMore) + OneRow(1) +
     DoneToken(kDoneCount, 1));
  EXPECT_EQ(Run().words, "before");
  ExpectUsable();
}

TEST_F(ErrorsTest, ArentPrintedWordsNorWarnings) {
  const std::string printed = InfoToken({0, 1, 0, "چاپ"});
  const std::string warning = InfoToken({8153, 1, 10, "Null value is eliminated by an aggregate."});
  On(printed + OneRow(4) + warning + DoneToken(kDoneCount, 1));
  EXPECT_EQ(Run().number, 0);
  ASSERT_NE(result_, nullptr);
  EXPECT_EQ(result_->columns[0].Scaled(0), 4);
  On(printed + DoneToken(kDoneMore) + warning + OneRow(5) + DoneToken(kDoneMore | kDoneCount, 1) +
     printed + DoneToken(kDoneFinal));
  EXPECT_EQ(Run().number, 0);
  ASSERT_NE(result_, nullptr);
  EXPECT_EQ(result_->columns[0].Scaled(0), 5);
  On(printed + DoneToken(kDoneFinal));
  EXPECT_EQ(Run().number, 0);
  EXPECT_EQ(result_, nullptr);
}

TEST_F(ErrorsTest, PassOverCountsInFrontOfTheFirstRows) {
  On(DoneToken(kDoneMore | kDoneCount, 3) + DoneToken(kDoneMore) + OneRow(9) +
     DoneToken(kDoneMore | kDoneCount, 1) + OneRow(10) + DoneToken(kDoneMore | kDoneCount, 1) +
     DoneToken(kDoneCount, 2));
  EXPECT_EQ(Run().number, 0);
  ASSERT_NE(result_, nullptr);
  EXPECT_EQ(result_->columns[0].Scaled(0), 9);
  EXPECT_EQ(result_->rows, 1u);
}

TEST_F(ErrorsTest, ReadAProcedure) {
  On(DoneInProcedureToken(kDoneMore | kDoneCount, 2) + OneRow(3) +
     DoneInProcedureToken(kDoneMore | kDoneCount, 1) + ReturnStatusToken(0) +
     DoneProcedureToken(kDoneFinal));
  EXPECT_EQ(Run().number, 0);
  ASSERT_NE(result_, nullptr);
  EXPECT_EQ(result_->columns[0].Scaled(0), 3);
  On(DoneInProcedureToken(kDoneMore | kDoneCount, 2) +
     ErrorToken({50000, 2, 16, "از رويه", "spBooks", 12}) + ReturnStatusToken(-6) +
     DoneProcedureToken(kDoneError));
  EXPECT_EQ(Run().words, "از رويه");
  ExpectUsable();
}

// What the embedded database says of a text comes over the wire as it said it.
TEST_F(ErrorsTest, AreTheDatabasesOwn) {
  const auto embedded = SqliteProvider()->Connect("Provider=VorekSQLite;Data Source=:memory:");
  for (const char* text :
       {"select * from tblNowhere", "selec 1", "select 1/0 as a", "exec spNowhere",
        "select cast('x' as int) as a", "select cast('2020-13-01' as datetime) as a",
        "select cast(300 as tinyint) as a", "select N'پ' + 1 as a", "raiserror('خطا', 16, 3)",
        "create table t (a int not null primary key) insert t values (1) insert t values (1)",
        "create table u (a int not null) insert u values (null)",
        "create table v (a varchar(2)) insert v values ('long')", "select 1 as a where",
        "print N'سلام' select 1 as a"}) {
    const Failure here = FailureOf([&] { embedded->Execute(text, {}); });
    const Failure there = FailureOf([&] { connection_->Execute(text, {}); });
    EXPECT_EQ(there.number, here.number) << text << ": " << here.words;
    EXPECT_EQ(there.words, here.words) << text;
  }
}

}  // namespace
}  // namespace vorek::tds
