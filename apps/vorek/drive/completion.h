#ifndef VOREK_APPS_VOREK_DRIVE_COMPLETION_H_
#define VOREK_APPS_VOREK_DRIVE_COMPLETION_H_

#include <string>
#include <vector>

#include "drive/session.h"

namespace vorek::drive {

// All words that begin with `word` and may stand at the end of this head of a line, in order.
std::vector<std::string> Completions(Session& session, const std::string& head,
                                     const std::string& word);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_COMPLETION_H_
