#include "author/grid_difference.h"

#include <algorithm>
#include <cstdint>

namespace vorek {
namespace {

using Row = std::vector<std::string>;
using Kind = GridChange::Kind;

// Above it, rows are matched by their places: the table of all pairs would be too large.
constexpr std::size_t kMostPairs = 4'000'000;

// What is told of a row's number: of "2-3-", the open third child of row 2, the level and the mark.
// A row that comes in moves the numbers behind it. "" for a text that is no number.
std::string NumberShape(std::string text) {
  const std::size_t last = text.find_last_not_of(' ');
  const bool number = !text.empty() && text[0] >= '0' && text[0] <= '9' &&
                      text.find_first_not_of("0123456789-+ ") == std::string::npos;
  if (!number) return "";
  text.resize(last + 1);
  std::string shape = "#";
  for (const char c : text) {
    if (c == '-' || c == '+') shape += c;
  }
  // An open row of one level isn't a closed leaf of the next.
  return shape + (text.back() == '-' ? "." : "");
}

bool SameCell(const Row& a, const Row& b, std::size_t column) {
  const std::string& before = column < a.size() ? a[column] : std::string();
  const std::string& after = column < b.size() ? b[column] : std::string();
  if (before == after) return true;
  return column == 0 && !NumberShape(before).empty() && NumberShape(before) == NumberShape(after);
}

bool SameRow(const Row& a, const Row& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t column = 0; column < a.size(); ++column) {
    if (!SameCell(a, b, column)) return false;
  }
  return true;
}

std::string Joined(const Row& row) {
  std::string all;
  for (const std::string& cell : row) all += (all.empty() ? "" : " | ") + cell;
  return all;
}

class Comparison {
 public:
  Comparison(const GridText& before, const GridText& after) : before_(before), after_(after) {}

  std::vector<GridChange> Run() {
    Tell("title", before_.title, after_.title);
    Tell("parameters", before_.parameters, after_.parameters);
    Tell("messages", Joined(before_.messages), Joined(after_.messages));
    Tell("failure", before_.failure, after_.failure);
    if (!before_.failure.empty() || !after_.failure.empty()) return std::move(changes_);
    Tell("cut", before_.cut, after_.cut);
    Columns("header", before_.headers, after_.headers);
    Columns("width", before_.widths, after_.widths);
    Columns("alignment", before_.alignments, after_.alignments);
    Rows();
    return std::move(changes_);
  }

 private:
  // Rows from `begin` up to `end` of either side.
  struct Range {
    std::size_t begin;
    std::size_t end;
    std::size_t Size() const { return end - begin; }
  };

  void Tell(const char* what, const std::string& before, const std::string& after) {
    if (before == after) return;
    changes_.push_back({.kind = Kind::kReport, .what = what, .before = before, .after = after});
  }

  std::string HeaderOf(std::size_t column) const {
    if (column < after_.headers.size()) return after_.headers[column];
    return column < before_.headers.size() ? before_.headers[column] : "";
  }

  void Columns(const char* what, const Row& before, const Row& after) {
    for (std::size_t column = 0; column < std::max(before.size(), after.size()); ++column) {
      const std::string& was = column < before.size() ? before[column] : std::string();
      const std::string& is = column < after.size() ? after[column] : std::string();
      if (was == is) continue;
      changes_.push_back({.kind = Kind::kColumn,
                          .what = what,
                          .column = column,
                          .header = HeaderOf(column),
                          .before = was,
                          .after = is});
    }
  }

  void Rows();
  void Match(Range before, Range after);
  void Block(Range before, Range after);
  void Cells(std::size_t before, std::size_t after);

  const GridText& before_;
  const GridText& after_;
  std::vector<GridChange> changes_;
};

// Most rows are as they were: only what lies between the equal ends is looked at.
void Comparison::Rows() {
  const std::vector<Row>& a = before_.rows;
  const std::vector<Row>& b = after_.rows;
  const std::size_t least = std::min(a.size(), b.size());
  std::size_t head = 0;
  while (head < least && SameRow(a[head], b[head])) ++head;
  std::size_t tail = 0;
  while (tail < least - head && SameRow(a[a.size() - 1 - tail], b[b.size() - 1 - tail])) ++tail;
  const Range before{head, a.size() - tail};
  const Range after{head, b.size() - tail};
  const bool small = before.Size() == 0 || after.Size() <= kMostPairs / before.Size();
  small ? Match(before, after) : Block(before, after);
}

// By the longest sequence of rows that both have.
void Comparison::Match(Range before, Range after) {
  const std::size_t width = after.Size() + 1;
  std::vector<std::uint32_t> longest((before.Size() + 1) * width, 0);  // from a pair to the ends
  const auto at = [&](std::size_t i, std::size_t j) -> std::uint32_t& {
    return longest[i * width + j];
  };
  const auto same = [&](std::size_t i, std::size_t j) {
    return SameRow(before_.rows[before.begin + i], after_.rows[after.begin + j]);
  };
  for (std::size_t i = before.Size(); i-- > 0;) {
    for (std::size_t j = after.Size(); j-- > 0;) {
      at(i, j) = same(i, j) ? at(i + 1, j + 1) + 1 : std::max(at(i + 1, j), at(i, j + 1));
    }
  }
  Range was{before.begin, before.begin};  // since the last pair
  Range is{after.begin, after.begin};
  while (was.end < before.end && is.end < after.end) {
    const std::size_t i = was.end - before.begin;
    const std::size_t j = is.end - after.begin;
    if (same(i, j)) {
      Block(was, is);
      was = {was.end + 1, was.end + 1};
      is = {is.end + 1, is.end + 1};
    } else if (at(i + 1, j) >= at(i, j + 1)) {
      ++was.end;
    } else {
      ++is.end;
    }
  }
  Block({was.begin, before.end}, {is.begin, after.end});
}

// Rows without an equal one: by their places, and then those that one side has more.
void Comparison::Block(Range before, Range after) {
  const std::size_t both = std::min(before.Size(), after.Size());
  for (std::size_t i = 0; i < both; ++i) Cells(before.begin + i, after.begin + i);
  for (std::size_t row = before.begin + both; row < before.end; ++row) {
    changes_.push_back(
        {.kind = Kind::kRowRemoved, .row = row + 1, .before = Joined(before_.rows[row])});
  }
  for (std::size_t row = after.begin + both; row < after.end; ++row) {
    changes_.push_back(
        {.kind = Kind::kRowAdded, .row = row + 1, .after = Joined(after_.rows[row])});
  }
}

void Comparison::Cells(std::size_t before, std::size_t after) {
  const Row& was = before_.rows[before];
  const Row& is = after_.rows[after];
  for (std::size_t column = 0; column < std::max(was.size(), is.size()); ++column) {
    if (SameCell(was, is, column)) continue;
    changes_.push_back({.kind = Kind::kCell,
                        .row = after + 1,
                        .column = column,
                        .header = HeaderOf(column),
                        .before = column < was.size() ? was[column] : "",
                        .after = column < is.size() ? is[column] : ""});
  }
}

}  // namespace

std::vector<GridChange> CompareGrids(const GridText& before, const GridText& after) {
  return Comparison(before, after).Run();
}

}  // namespace vorek
