#ifndef VOREK_EXPORT_TEMPLATE_FILE_H_
#define VOREK_EXPORT_TEMPLATE_FILE_H_

#include <memory>
#include <string>

#include "state/process.h"
#include "vorek/spreadsheet.h"

namespace vorek {

// A template that is open, with what the user should know of it.
struct TemplateFile {
  std::unique_ptr<TemplateSheet> sheet;
  std::string note;
};

// Opens a template by its content, whatever its extension: a workbook of the new format, or one of
// the old format through the converter. Throws Error, in Persian, naming the file, and what the
// question throws, which is asked while the file opens, is filled and saved.
TemplateFile OpenTemplateFile(Process& process, const std::string& path, const Question& question);

}  // namespace vorek

#endif  // VOREK_EXPORT_TEMPLATE_FILE_H_
