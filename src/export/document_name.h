#ifndef VOREK_EXPORT_DOCUMENT_NAME_H_
#define VOREK_EXPORT_DOCUMENT_NAME_H_

#include <string>

#include "vorek/clock.h"

namespace vorek {

// A file name for a document of that title on that day, "ليست فاكتورها 1405-09-03.xlsx": without
// the characters that a file system or a shell takes otherwise, and of a fair length.
std::string DocumentName(const std::string& title, const DateTime& day,
                         const std::string& extension);

}  // namespace vorek

#endif  // VOREK_EXPORT_DOCUMENT_NAME_H_
