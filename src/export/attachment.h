#ifndef VOREK_EXPORT_ATTACHMENT_H_
#define VOREK_EXPORT_ATTACHMENT_H_

#include <cstdint>
#include <string>

#include "catalog/recordset.h"
#include "state/notices.h"
#include "state/process.h"

// Files attached to forms: the rows of tblVorekFormAttachment.
namespace vorek {

constexpr std::int32_t kTemplateFormType = 2302;  // of the templates of reports

// A new path in the system's temporary folder, also put into `path`. Empty, and the user is told,
// if there is no such folder.
std::string GetTempFileName(Process& process, Notices& notices, std::string& path);

// The path of a local file with the attachment's content: that of an external file, which isn't
// looked at, or of a private copy in the temporary folder, which stays there. Empty if the user has
// been told that there is no such folder. Throws Error, in Persian, for an attachment that isn't
// there any more.
std::string FetchAttachment(Process& process, Notices& notices, std::int32_t form_type_id,
                            std::int32_t form_id, std::int16_t row_number);

// The bytes of the attachment in a row of tblVorekFormAttachment, those of an external file read
// where it lies. Throws Error for a file that can't be read.
std::string AttachmentBytes(Process& process, const Recordset& row);

}  // namespace vorek

#endif  // VOREK_EXPORT_ATTACHMENT_H_
