#ifndef VOREK_BENCH_PEAK_MEMORY_H_
#define VOREK_BENCH_PEAK_MEMORY_H_

#include <fstream>
#include <string>

// The most memory that this program has had resident, as Linux counts it.
namespace vorek {

// In megabytes of 2^20 bytes; 0 where /proc can't be read.
inline double PeakMegabytes() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
  }
  return 0;
}

// The peak counts from here on.
inline void ResetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

}  // namespace vorek

#endif  // VOREK_BENCH_PEAK_MEMORY_H_
