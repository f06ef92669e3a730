#ifndef VOREK_WORKBOOK_CONVERTER_H_
#define VOREK_WORKBOOK_CONVERTER_H_

#include <string>

#include "vorek/pass_watch.h"

namespace vorek {

// A workbook of the new format that was made of an old one.
struct ConvertedWorkbook {
  std::string bytes;
  bool charts_lost = false;  // by a converter that knows none
};

// Turns workbooks of the old binary format into the new one.
class WorkbookConverter {
 public:
  virtual ~WorkbookConverter() = default;

  // Throws Error, in Persian, if it can't be done here, and what `question` throws.
  virtual ConvertedWorkbook Convert(const std::string& bytes, const Question& question) = 0;
};

}  // namespace vorek

#endif  // VOREK_WORKBOOK_CONVERTER_H_
