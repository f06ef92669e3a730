// Each type of the wire with its extremes and NULL, through the driver and the adapter.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "odbc/tds/tokens.h"
#include "odbc/tds/wire.h"
#include "vorek/field_type.h"

namespace vorek::tds {
namespace {

class TypesTest : public testing::Test {
 protected:
  // One column's values as they arrive, one of them NULL, the others written by `put`.
  ResultSetPtr Arrive(const Column& column, const std::vector<std::function<void(Row&)>>& put) {
    server_.Told().On("values", RowsAnswer({column, {"behind", Kind::kInt, 4}},
                                           [put](const auto& columns, PacketStream& out) {
                                             return Fill(columns, put, out);
                                           }));
    return connection_->Execute("values", {});
  }

  static std::size_t Fill(const std::vector<Column>& columns,
                          const std::vector<std::function<void(Row&)>>& put, PacketStream& out) {
    for (const bool compact : {false, true}) {
      Row row(columns, compact);
      for (const auto& value : put) {
        value(row);
        out.Put(row.Whole(-7).Token());
      }
      out.Put(row.Null().Null().Token());
    }
    return 2 * put.size() + 2;
  }

  void Expect(const Column& column, int ado_type,
              const std::vector<std::pair<std::function<void(Row&)>, std::string>>& cases) {
    std::vector<std::function<void(Row&)>> put;
    for (const auto& [value, shown] : cases) put.push_back(value);
    const ResultSetPtr rows = Arrive(column, put);
    ASSERT_EQ(rows->rows, 2 * cases.size() + 2);
    EXPECT_EQ(rows->columns[0].AdoType(), ado_type);
    EXPECT_EQ(rows->columns[0].Name(), column.name);
    for (std::size_t row = 0; row < rows->rows; ++row) {
      const std::size_t at = row % (cases.size() + 1);
      if (at == cases.size()) {
        EXPECT_TRUE(rows->columns[0].IsNull(row));
        EXPECT_TRUE(rows->columns[1].IsNull(row));
      } else {
        EXPECT_EQ(rows->columns[0].Display(row), cases[at].second) << "row " << row;
        EXPECT_EQ(rows->columns[1].Scaled(row), -7);
      }
    }
  }

  static std::function<void(Row&)> Whole(std::int64_t value) {
    return [value](Row& row) { row.Whole(value); };
  }
  static std::function<void(Row&)> Money(std::int64_t value) {
    return [value](Row& row) { row.Money(value); };
  }
  static std::function<void(Row&)> Real(double value) {
    return [value](Row& row) { row.Real(value); };
  }
  static std::function<void(Row&)> Decimal(const std::string& text) {
    return [text](Row& row) { row.Decimal(text); };
  }
  static std::function<void(Row&)> DateTime(std::int32_t days, std::uint32_t ticks) {
    return [=](Row& row) { row.DateTime(days, ticks); };
  }
  static std::function<void(Row&)> DateTime2(std::int64_t days, std::uint64_t units) {
    return [=](Row& row) { row.DateTime2(days, units); };
  }

  Server server_{InMemory()};
  std::unique_ptr<DatabaseConnection> connection_ = ConnectTo(StringFor(server_));
};

TEST_F(TypesTest, KeepsWholeNumbers) {
  Expect({"bit", Kind::kBit, 1}, kBoolean, {{Whole(0), "False"}, {Whole(1), "True"}});
  Expect({"tiny", Kind::kInt, 1}, kUnsignedTinyInt, {{Whole(0), "0"}, {Whole(255), "255"}});
  Expect({"small", Kind::kInt, 2}, kSmallInt,
         {{Whole(INT16_MIN), "-32768"}, {Whole(INT16_MAX), "32767"}});
  Expect({"int", Kind::kInt, 4}, kInteger,
         {{Whole(INT32_MIN), "-2147483648"}, {Whole(INT32_MAX), "2147483647"}, {Whole(0), "0"}});
  Expect({"big", Kind::kInt, 8}, kBigInt,
         {{Whole(INT64_MIN), "-9223372036854775808"}, {Whole(INT64_MAX), "9223372036854775807"}});
}

TEST_F(TypesTest, KeepsMoneyToItsFourthPlace) {
  Expect({"money", Kind::kMoney, 8}, kCurrency,
         {{Money(INT64_MIN), "-922337203685477.5808"},
          {Money(INT64_MAX), "922337203685477.5807"},
          {Money(1), "0.0001"},
          {Money(-1), "-0.0001"},
          {Money(12345678), "1234.5678"},
          {Money(0), "0"},
          {Money(-10000), "-1"}});
  Expect({"small", Kind::kMoney, 4}, kCurrency,
         {{Money(INT32_MIN), "-214748.3648"},
          {Money(INT32_MAX), "214748.3647"},
          {Money(-5), "-0.0005"}});
}

TEST_F(TypesTest, KeepsRealNumbers) {
  Expect({"real", Kind::kFloat, 4}, kSingle,
         {{Real(0.5), "0.5"},
          {Real(-1.0e38), "-1E+38"},
          {Real(0.1), "0.1"},
          {Real(-16777216), "-16777216"}});
  Expect({"float", Kind::kFloat, 8}, kDouble,
         {{Real(0.1), "0.1"}, {Real(-1234567890.125), "-1234567890.125"}, {Real(0), "0"}});
}

TEST_F(TypesTest, KeepsDecimals) {
  Expect({"d38", Kind::kDecimal, 0, 38, 10}, kNumeric,
         {{Decimal("9999999999999999999999999999.9999999999"),
           "9999999999999999999999999999.9999999999"},
          {Decimal("-9999999999999999999999999999.9999999999"),
           "-9999999999999999999999999999.9999999999"},
          {Decimal("0.0000000001"), "0.0000000001"},
          {Decimal("0"), "0"}});
  Expect({"d38_38", Kind::kDecimal, 0, 38, 38}, kNumeric,
         {{Decimal("0.00000000000000000000000000000000000001"),
           "0.00000000000000000000000000000000000001"}});
  Expect({"d38_0", Kind::kDecimal, 0, 38, 0}, kNumeric,
         {{Decimal("99999999999999999999999999999999999999"),
           "99999999999999999999999999999999999999"},
          {Decimal("9223372036854775807"), "9223372036854775807"},
          {Decimal("-1"), "-1"}});
  Expect({"d9", Kind::kDecimal, 0, 9, 2}, kNumeric,
         {{Decimal("-0.05"), "-0.05"}, {Decimal("9999999.99"), "9999999.99"}});
  Expect({"d19", Kind::kDecimal, 0, 19, 4}, kNumeric,
         {{Decimal("922337203685477.5807"), "922337203685477.5807"},
          {Decimal("-999999999999999.9999"), "-999999999999999.9999"}});
  Expect({"d28", Kind::kDecimal, 0, 28, 18}, kNumeric,
         {{Decimal("1.000000000000000001"), "1.000000000000000001"}});
}

// What SQL Server shows of its ticks: thousandths that end in 0, 3 and 7.
TEST_F(TypesTest, KeepsDatesAndTimes) {
  constexpr std::uint32_t kDay = 300 * 86400;
  Expect({"datetime", Kind::kDateTime, 8}, kDBTimeStamp,
         {{DateTime(-53690, 0), "1753-01-01 00:00:00"},
          {DateTime(2958463, kDay - 1), "9999-12-31 23:59:59.997"},
          {DateTime(0, 1), "1900-01-01 00:00:00.003"},
          {DateTime(0, 2), "1900-01-01 00:00:00.007"},
          {DateTime(0, 3), "1900-01-01 00:00:00.010"},
          {DateTime(45735, 37), "2025-03-21 00:00:00.123"},
          {DateTime(45735, 38), "2025-03-21 00:00:00.127"},
          {DateTime(-1, kDay - 300), "1899-12-31 23:59:59"}});
  Expect({"small", Kind::kDateTime, 4}, kDBTimeStamp,
         {{DateTime(0, 0), "1900-01-01 00:00:00"}, {DateTime(65535, 1439), "2079-06-06 23:59:00"}});
  Expect({"datetime2", Kind::kDateTime2, 0, 0, 7}, kDBTimeStamp,
         {{DateTime2(0, 0), "0001-01-01 00:00:00"},
          {DateTime2(3652058, 863999999999), "9999-12-31 23:59:59.999"},
          {DateTime2(739330, 1230000), "2025-03-21 00:00:00.123"}});
  Expect({"datetime2_0", Kind::kDateTime2, 0, 0, 0}, kDBTimeStamp,
         {{DateTime2(739330, 30605), "2025-03-21 08:30:05"}});
  Expect({"date", Kind::kDate, 3}, kDBDate,
         {{[](Row& row) { row.Date(0); }, "0001-01-01"},
          {[](Row& row) { row.Date(3652058); }, "9999-12-31"}});
  Expect({"time", Kind::kTime, 0, 0, 7}, kDBTime,
         {{[](Row& row) { row.Time(0); }, "00:00:00"},
          {[](Row& row) { row.Time(863990000000); }, "23:59:59"}});
}

TEST_F(TypesTest, KeepsBytesAndIdentifiers) {
  const auto bytes = [](const std::string& value) {
    return [value](Row& row) { row.Binary(value); };
  };
  const std::vector<std::pair<std::function<void(Row&)>, std::string>> cases = {
      {bytes(std::string("\x00\xFF\x10", 3)), "0x00FF10"},
      {bytes(""), "0x"},
      {bytes(std::string(8000, '\xAB')), "0x" + [] {
         std::string digits;
         for (int i = 0; i < 8000; ++i) digits += "AB";
         return digits;
       }()}};
  Expect({"bytes", Kind::kVarBinary, 8000}, kVarBinary, cases);
  Expect({"max", Kind::kVarBinary, Column::kMax}, kLongVarBinary, cases);
  Expect({"guid", Kind::kGuid, 16}, kGuid,
         {{[](Row& row) {
             row.Guid(std::string(
                 "\xFF\x19\x96\x6F\x86\x8B\x11\xD0\xB4\x2D\x00\xC0\x4F\xC9\x64\xFF", 16));
           },
           "6F9619FF-8B86-D011-B42D-00C04FC964FF"}});
}

}  // namespace
}  // namespace vorek::tds
