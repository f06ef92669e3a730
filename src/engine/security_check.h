#ifndef VOREK_ENGINE_SECURITY_CHECK_H_
#define VOREK_ENGINE_SECURITY_CHECK_H_

#include <string>
#include <string_view>
#include <vector>

namespace vorek {

// Why row security, which is put into a query's text, doesn't restrict it or breaks it.
struct SecurityFault {
  bool leaks = false;  // rows are shown that must not be; otherwise the server refuses the text
  std::string what;
  std::string why;
};

// Looks for what the text work of the security clause (rights.h) doesn't see: it searches for
// " FROM ", " Where " and " Order By " between blanks, wherever they stand, and puts its condition
// in front of the order or at the end.
std::vector<SecurityFault> FindSecurityFaults(std::string_view query);

}  // namespace vorek

#endif  // VOREK_ENGINE_SECURITY_CHECK_H_
