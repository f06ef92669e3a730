#ifndef VOREK_XLSX_H_
#define VOREK_XLSX_H_

#include <memory>

namespace vorek {

class Spreadsheet;

// Workbooks as .xlsx files: for WorldOptions::spreadsheet.
std::shared_ptr<Spreadsheet> XlsxSpreadsheet();

}  // namespace vorek

#endif  // VOREK_XLSX_H_
