#ifndef VOREK_SYSTEM_H_
#define VOREK_SYSTEM_H_

#include <iosfwd>
#include <memory>

#include "vorek/world.h"

namespace vorek {

// The machine's clock in its time zone.
std::shared_ptr<Clock> MachineClock();

// A "screen" that writes what a form says, a line each, and closes the form as its close box would.
// The stream must outlive it.
std::shared_ptr<Windows> WindowsOnStream(std::ostream& out);

// A clock, and messages on the standard error stream, where the options have none yet.
void AddSystemServices(WorldOptions& options);

}  // namespace vorek

#endif  // VOREK_SYSTEM_H_
