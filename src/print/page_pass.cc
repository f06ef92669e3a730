#include "print/page_pass.h"

#include <algorithm>

#include "vorek/error.h"

namespace vorek::print {
namespace {

constexpr double kHair = 1e-6;  // millimetres that sums of heights may be off

}  // namespace

PagePass::PagePass(PrintDocument& document)
    : document_(document),
      template_(document.template_),
      detail_(*template_.Find(BandKind::kDetail)),
      bottom_(template_.PrintableHeight() - HeightOf(template_.Find(BandKind::kPageFooter))),
      current_group_(document.groups_.size()) {}

const Band* PagePass::GroupBand(BandKind kind, std::size_t level) const {
  return template_.Find(kind, document_.group_names_.at(level));
}

void PagePass::Run() {
  StartPage();
  const std::size_t rows = document_.order_.size();
  const std::size_t levels = document_.groups_.size();
  for (next_row_ = 0; next_row_ < rows; ++next_row_) {
    const std::size_t level = FirstBegunLevel(next_row_);
    if (level < levels && next_row_ > 0) PutFooters(level, next_row_ - 1);
    row_ = next_row_;
    if (level < levels) PutHeaders(level, next_row_);
    MakeRoom(detail_.height);
    Put(&detail_, next_row_);
    document_.pages_.back().last_row = next_row_ + 1;
  }
  if (rows > 0) PutFooters(0, rows - 1);
  if (const Band* const footer = template_.Find(BandKind::kReportFooter)) {
    MakeRoom(footer->height);
    Put(footer, rows == 0 ? 0 : rows - 1);
  }
  EndPage();
}

// The outermost level that begins a group at the row; the count of levels if none does.
std::size_t PagePass::FirstBegunLevel(std::size_t row) const {
  const auto& groups = document_.groups_;
  for (std::size_t level = 0; level < groups.size(); ++level) {
    const std::size_t next = current_group_[level] + (row == 0 ? 0 : 1);
    if (next < groups[level].size() && groups[level][next].first == row) return level;
  }
  return groups.size();
}

void PagePass::StartPage() {
  if (document_.pages_.size() >= PrintDocument::kMostPages) {
    throw Error(ErrorNumber::kBadTemplate,
                "الگوي چاپ: بيش از " + std::to_string(PrintDocument::kMostPages) + " صفحه مي شود.");
  }
  document_.pages_.push_back({{}, next_row_, next_row_});
  top_ = 0;
  if (document_.pages_.size() == 1) Put(template_.Find(BandKind::kReportHeader), 0);
  Put(template_.Find(BandKind::kPageHeader), row_);
  for (std::size_t level = 0; level < open_levels_; ++level) {
    const Band* const header = GroupBand(BandKind::kGroupHeader, level);
    if (header != nullptr && header->repeat) Put(header, row_, level);
  }
  // Behind a report's header, which stands on the first page alone, a new page may have more room.
  const bool headed =
      document_.pages_.size() == 1 && template_.Find(BandKind::kReportHeader) != nullptr;
  content_top_ = headed ? 0 : top_;
}

void PagePass::EndPage() {
  const Band* const footer = template_.Find(BandKind::kPageFooter);
  if (footer == nullptr) return;
  const std::size_t last = document_.pages_.back().last_row;
  PutAt(*footer, bottom_, last == 0 ? 0 : last - 1, 0);
}

// A page that holds nothing yet has room for whatever comes: there is no better one.
void PagePass::MakeRoom(double height) {
  if (top_ + height <= bottom_ + kHair || top_ <= content_top_) return;
  EndPage();
  StartPage();
}

void PagePass::Put(const Band* band, std::size_t row, std::size_t level) {
  if (band == nullptr) return;
  PutAt(*band, top_, row, level);
  top_ += band->height;
}

void PagePass::PutAt(const Band& band, double top, std::size_t row, std::size_t level) {
  const bool has_row = row < document_.order_.size();
  const std::uint32_t group = document_.groups_.empty() ? 0 : current_group_[level];
  document_.pages_.back().bands.push_back({&band, top, has_row ? document_.order_[row] : 0, has_row,
                                           static_cast<std::uint32_t>(level), group});
}

void PagePass::PutHeaders(std::size_t level, std::size_t row) {
  if (row > 0) {
    for (std::size_t below = level; below < current_group_.size(); ++below) ++current_group_[below];
  }
  open_levels_ = level;
  MakeRoom(RoomForHeaders(level));
  for (; open_levels_ < document_.groups_.size(); ++open_levels_) {
    Put(GroupBand(BandKind::kGroupHeader, open_levels_), row, open_levels_);
  }
}

void PagePass::PutFooters(std::size_t level, std::size_t last_row) {
  for (std::size_t below = document_.groups_.size(); below-- > level;) {
    const Band* const footer = GroupBand(BandKind::kGroupFooter, below);
    if (footer == nullptr) continue;
    MakeRoom(footer->height);
    Put(footer, last_row, below);
  }
}

// The headers from the level on with the rows that stay with them, or with their whole group where
// a page has the room for it.
double PagePass::RoomForHeaders(std::size_t level) const {
  double headers = 0;
  double most = 0;
  for (std::size_t below = level; below < document_.groups_.size(); ++below) {
    const Band* const header = GroupBand(BandKind::kGroupHeader, below);
    const PrintDocument::Span& span = document_.groups_[below][current_group_[below]];
    const double before = headers;
    headers += HeightOf(header);
    if (header == nullptr) continue;
    const auto rows = std::min(static_cast<std::size_t>(header->keep), span.last - span.first);
    most = std::max(most, headers + static_cast<double>(rows) * detail_.height);
    const double whole = before + HeightOfGroup(below);
    if (header->keep_all && whole <= bottom_ - content_top_ + kHair) most = std::max(most, whole);
  }
  return std::max(most, headers);
}

double PagePass::HeightOfGroup(std::size_t level) const {
  const PrintDocument::Span& span = document_.groups_[level][current_group_[level]];
  double height = static_cast<double>(span.last - span.first) * detail_.height;
  for (std::size_t below = level; below < document_.groups_.size(); ++below) {
    const auto& groups = document_.groups_[below];
    std::size_t count = 0;
    for (std::size_t group = current_group_[below];
         group < groups.size() && groups[group].first < span.last; ++group) {
      ++count;
    }
    height += static_cast<double>(count) * (HeightOf(GroupBand(BandKind::kGroupHeader, below)) +
                                            HeightOf(GroupBand(BandKind::kGroupFooter, below)));
  }
  return height;
}

}  // namespace vorek::print
