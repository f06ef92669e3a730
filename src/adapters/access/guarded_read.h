#ifndef VOREK_ADAPTERS_ACCESS_GUARDED_READ_H_
#define VOREK_ADAPTERS_ACCESS_GUARDED_READ_H_

#include <functional>
#include <string>
#include <vector>

namespace vorek::jet {

// What read gives, out of a child process: a library that runs away or falls over a damaged file
// takes only the child with it. Throws the Error that read threw, and one for a damaged file if the
// child didn't end by itself within the time.
std::vector<std::string> ReadGuarded(const std::function<std::vector<std::string>()>& read);

}  // namespace vorek::jet

#endif  // VOREK_ADAPTERS_ACCESS_GUARDED_READ_H_
