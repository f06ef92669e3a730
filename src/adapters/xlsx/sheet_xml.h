#ifndef VOREK_ADAPTERS_XLSX_SHEET_XML_H_
#define VOREK_ADAPTERS_XLSX_SHEET_XML_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "vorek/spreadsheet.h"

// The words of a workbook's XML that new and filled workbooks share.
namespace vorek::xlsx {

// "A" for 1 to "XFD" for 16,384.
void AppendColumnName(std::int32_t column, std::string& out);
void AppendNumber(std::int64_t number, std::string& out);

// A text as a string of a sheet: what XML reads otherwise is escaped, and characters that XML can't
// hold become _xHHHH_, which spreadsheet programs read back. Malformed UTF-8 becomes U+FFFD.
void AppendSheetText(std::string_view text, std::string& out);
// The text that a sheet's string stands for, with _xHHHH_ read.
std::string ReadSheetText(std::string_view text);
// The same for an attribute: no _xHHHH_.
void AppendXml(std::string_view text, std::string& out);

// The text's length as UTF-16 counts it.
std::size_t Utf16Length(std::string_view text);

// The hash of a sheet's password, four hexadecimal digits.
std::string PasswordHash(std::string_view password);
// The element sheetProtection.
std::string ProtectionXml(const SheetProtection& protection);

}  // namespace vorek::xlsx

#endif  // VOREK_ADAPTERS_XLSX_SHEET_XML_H_
