#ifndef VOREK_MESSAGES_PERSIAN_REASON_H_
#define VOREK_MESSAGES_PERSIAN_REASON_H_

#include <string>
#include <string_view>

namespace vorek {

// An error's description as the user reads it: the reasons of the system's own parts in Persian,
// with names and paths that keep their own direction. A text that isn't known, as a server's own
// words, comes back as it is.
std::string PersianReason(std::string_view description);

}  // namespace vorek

#endif  // VOREK_MESSAGES_PERSIAN_REASON_H_
