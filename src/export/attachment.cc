#include "export/attachment.h"

#include <algorithm>

#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek {
namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Bytes as a provider gives them: "0x" and two digits a byte.
std::string BytesOf(const std::string& text) {
  std::string bytes;
  if (!text::StartsWithIgnoreCase(text, "0x")) return bytes;
  bytes.reserve(text.size() / 2);
  for (std::size_t at = 2; at + 1 < text.size(); at += 2) {
    const int high = HexDigit(text[at]);
    const int low = HexDigit(text[at + 1]);
    if (high < 0 || low < 0) break;
    bytes += static_cast<char>(high * 16 + low);
  }
  return bytes;
}

// An extension as a file name may have it: what a row says must not lead to another folder.
std::string SafeExtension(const std::string& extension) {
  std::string safe;
  for (const char c : extension) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (letter) safe += c;
  }
  constexpr std::size_t kLongest = 10;
  return safe.substr(0, kLongest);
}

std::string WithExtension(const std::string& path, const std::string& extension) {
  const std::size_t name = path.find_last_of("/\\") + 1;
  const std::size_t point = path.rfind('.');
  const bool has = point != std::string::npos && point >= name;
  return path.substr(0, has ? point : path.size()) + "." + extension;
}

bool IsExternal(const Recordset& row) {
  const FieldValue external = row.Field("IsExternal");
  return !external.IsNull() && external.Flag();
}

Files& FilesOf(Process& process) {
  if (process.services.files != nullptr) return *process.services.files;
  throw Error(ErrorNumber::kPathAccess, "فايلي در دسترس نيست.");
}

std::string CopyOf(Process& process, Notices& notices, const Recordset& row) {
  std::string path;
  if (GetTempFileName(process, notices, path).empty()) return {};
  const FieldValue extension = row.Field("FileExtension");
  if (!extension.IsNull()) path = WithExtension(path, SafeExtension(extension.Text()));
  FilesOf(process).WritePrivate(path, BytesOf(row.Field("FileData").Text()));
  return path;
}

}  // namespace

std::string GetTempFileName(Process& process, Notices& notices, std::string& path) {
  path.clear();
  TemporaryFiles* const temporary = process.services.temporary_files.get();
  const std::string folder = temporary == nullptr ? "" : temporary->Folder();
  if (folder.empty()) {
    notices.ShowMessage("خطا", "C:\\Windows\\Temp\r\nشاخه موقت ويندوز پيدا نشد.");
    return path;
  }
  const Files* const files = process.services.files.get();
  while (true) {
    path = folder + "/" + temporary->NewName();
    if (files == nullptr || !files->Exists(path)) return path;
    temporary->Delete(path);
  }
}

std::string FetchAttachment(Process& process, Notices& notices, std::int32_t form_type_id,
                            std::int32_t form_id, std::int16_t row_number) {
  Recordset& row = process.dten().rssqlGeneral5;
  row.Close();
  row.Open("Select * from tblVorekFormAttachment Where FormTypeID = " +
           std::to_string(form_type_id) + " and FormID = " + std::to_string(form_id) +
           " and RowNumber = " + std::to_string(row_number));
  if (row.AtEnd()) {
    row.Close();
    throw Error(ErrorNumber::kFileNotFound, "الگوي شماره " + std::to_string(row_number) +
                                                " گزارش " + std::to_string(form_id) +
                                                " ديگر وجود ندارد.");
  }
  const std::string path =
      IsExternal(row) ? row.Field("FilePath").Text() : CopyOf(process, notices, row);
  row.Close();
  return path;
}

std::string AttachmentBytes(Process& process, const Recordset& row) {
  if (IsExternal(row)) return FilesOf(process).Read(row.Field("FilePath").Text());
  return BytesOf(row.Field("FileData").Text());
}

}  // namespace vorek
