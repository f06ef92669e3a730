#include "chart/chart_thinning.h"

#include <algorithm>
#include <numeric>

namespace vorek {
namespace {

// Adds what is kept of the points from begin to end.
void Keep(const std::vector<ChartValue>& low, const std::vector<ChartValue>& high,
          std::size_t begin, std::size_t end, std::vector<std::uint32_t>& kept) {
  std::size_t least = end;
  std::size_t greatest = end;
  for (std::size_t at = begin; at < end; ++at) {
    if (low[at] && (least == end || *low[at] < *low[least])) least = at;
    if (high[at] && (greatest == end || *high[at] > *high[greatest])) greatest = at;
  }
  const auto [first, second] = std::minmax(least, greatest);
  kept.push_back(static_cast<std::uint32_t>(first == end ? begin : first));
  if (second != end && second != first) kept.push_back(static_cast<std::uint32_t>(second));
}

}  // namespace

std::vector<std::uint32_t> Thinned(const std::vector<ChartValue>& low,
                                   const std::vector<ChartValue>& high, std::size_t most) {
  const std::size_t count = low.size();
  std::vector<std::uint32_t> kept;
  if (count <= most) {
    kept.resize(count);
    std::iota(kept.begin(), kept.end(), 0U);
    return kept;
  }
  const std::size_t runs = std::max<std::size_t>(most / 2, 1);
  kept.reserve(2 * runs);
  for (std::size_t run = 0; run < runs; ++run) {
    Keep(low, high, run * count / runs, (run + 1) * count / runs, kept);
  }
  return kept;
}

}  // namespace vorek
