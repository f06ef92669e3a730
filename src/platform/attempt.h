#ifndef VOREK_PLATFORM_ATTEMPT_H_
#define VOREK_PLATFORM_ATTEMPT_H_

#include <new>
#include <optional>
#include <utility>

#include "vorek/error.h"

namespace vorek {

// Runs a part of the road; what it throws comes back, other exceptions as the error they stand for.
template <typename Part>
std::optional<Error> Attempt(const Part& part) {
  try {
    part();
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(ErrorNumber::kOutOfMemory, "حافظه كافي نيست.");
  } catch (const std::exception& error) {
    return Error(ErrorNumber::kInternal, error.what());
  }
  return std::nullopt;
}

// Runs a member of the control for its host, who meets no exception but Error.
template <typename Member>
void ForHost(const Member& member) {
  if (const std::optional<Error> error = Attempt(member)) throw Error(*error);
}

}  // namespace vorek

#endif  // VOREK_PLATFORM_ATTEMPT_H_
