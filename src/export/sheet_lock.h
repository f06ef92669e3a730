#ifndef VOREK_EXPORT_SHEET_LOCK_H_
#define VOREK_EXPORT_SHEET_LOCK_H_

#include "vorek/spreadsheet.h"

namespace vorek {

// How the sheet of a report is protected whose print preview is locked.
inline SheetProtection SheetLock() {
  SheetProtection lock;
  lock.password = "PlumQuartz417";
  return lock;
}

}  // namespace vorek

#endif  // VOREK_EXPORT_SHEET_LOCK_H_
