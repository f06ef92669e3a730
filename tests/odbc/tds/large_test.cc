// A million rows: none is lost, and the memory is that of the result.

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>

#include "odbc/tds/wire.h"

namespace vorek::tds {
namespace {

constexpr std::int64_t kRows = 1000000;

// The most that the process has held so far.
std::size_t PeakMegabytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::size_t kilobytes = 0;
    if (word == "VmHWM:" && status >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

std::size_t PutAMillion(const std::vector<Column>& columns, PacketStream& out) {
  Row row(columns);
  for (std::int64_t i = 0; i < kRows; ++i) {
    row.Whole(i).Text("مشتري شماره " + std::to_string(i % 2000)).Money(i * 12345);
    out.Put((i % 10 == 0 ? row.Null() : row.Real(static_cast<double>(i) / 4)).Token());
  }
  return static_cast<std::size_t>(kRows);
}

auto AMillion() {
  return RowsAnswer({{"n", Kind::kInt, 4},
                     {"t", Kind::kNVarChar, 100},
                     {"m", Kind::kMoney, 8},
                     {"r", Kind::kFloat, 8}},
                    PutAMillion);
}

TEST(LargeTest, ReadsAMillionRows) {
  Server server(InMemory());
  server.Told().On("million", AMillion());
  const auto connection = ConnectTo(StringFor(server));
  const std::size_t before = PeakMegabytes();
  const auto begin = std::chrono::steady_clock::now();
  const ResultSetPtr rows = connection->Execute("million", {110, {}});
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  RecordProperty("seconds", std::to_string(seconds.count()));
  RecordProperty("megabytes", std::to_string(PeakMegabytes() - before));
  ASSERT_EQ(rows->rows, static_cast<std::size_t>(kRows));
  std::int64_t sum = 0;
  std::int64_t money = 0;
  double real = 0;
  std::size_t nulls = 0;
  for (std::size_t row = 0; row < rows->rows; ++row) {
    sum += rows->columns[0].Scaled(row);
    money += rows->columns[2].Scaled(row);
    ASSERT_EQ(rows->columns[1].Text(row), "مشتري شماره " + std::to_string(row % 2000));
    if (rows->columns[3].IsNull(row)) {
      ++nulls;
    } else {
      real += rows->columns[3].Double(row);
    }
  }
  EXPECT_EQ(sum, kRows * (kRows - 1) / 2);
  EXPECT_EQ(money, kRows * (kRows - 1) / 2 * 12345);
  EXPECT_EQ(nulls, static_cast<std::size_t>(kRows / 10));
  // Every tenth is left out: 0 + 10 + 20 + ...
  constexpr int kTenths = kRows / 10;
  constexpr double kLeftOut = 10.0 * kTenths * (kTenths - 1) / 2;
  EXPECT_EQ(real, (static_cast<double>(kRows) * (kRows - 1) / 2 - kLeftOut) / 4);
#ifndef __SANITIZE_ADDRESS__  // which keeps what is freed for a while
  std::size_t memory = 0;
  for (const ResultColumn& column : rows->columns) memory += column.Memory();
  // The result, and what the driver and the blocks take beside it.
  EXPECT_LT(PeakMegabytes() - before, (memory >> 20) + 40);
#endif
}

// A query without an end is left where its limit is, and the connection goes on.
TEST(LargeTest, IsRefusedBeyondTheLimits) {
  Server server(InMemory());
  server.Told().On("million", AMillion());
  const auto connection = ConnectTo(StringFor(server));
  for (const ResultLimits& limits :
       {ResultLimits{5000, 0}, ResultLimits{0, std::size_t{1} << 20U}}) {
    ExecuteOptions options;
    options.limits = limits;
    std::size_t rows = 0;
    options.progress = [&rows](std::size_t read) {
      rows = read;
      return true;
    };
    try {
      connection->Execute("million", options);
      ADD_FAILURE() << limits.rows;
    } catch (const Error& error) {
      EXPECT_TRUE(error.Is(ErrorNumber::kOutOfMemory)) << error.Description();
    }
    EXPECT_LT(rows, 100'000U);
    EXPECT_EQ(connection->Execute("select 7 as n", {})->columns[0].Scaled(0), 7);
  }
}

}  // namespace
}  // namespace vorek::tds
