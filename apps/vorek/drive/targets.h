#ifndef VOREK_APPS_VOREK_DRIVE_TARGETS_H_
#define VOREK_APPS_VOREK_DRIVE_TARGETS_H_

#include <string>

#include "drive/session.h"
#include "drive/words.h"
#include "grid/grid.h"

namespace vorek::drive {

// The control that a path names: of a form that shows ("FormReport.x" is the newest of that name,
// "FormReport(2).x" the second one), of the modal form on top, of the report control, of another
// form. Throws Error(kItemNotFound).
Control& FindControl(Session& session, const std::string& path);

// The grid that word 1 names. Throws Error(kInvalidCall) for another control.
Grid& FindGrid(Session& session, const Words& words);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_TARGETS_H_
