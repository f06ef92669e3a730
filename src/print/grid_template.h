#ifndef VOREK_PRINT_GRID_TEMPLATE_H_
#define VOREK_PRINT_GRID_TEMPLATE_H_

#include "grid/report_context.h"
#include "print/print_template.h"

namespace vorek::print {

// A template for the report as it is shown: its title, its headers on each page, a row of fields in
// the proportions of the grid's columns, the page's number; upright where the columns have room,
// else across. A first template for an author, and a list for whoever has none. Fields are numbered
// as rows are staged for a print: those of flxMain count hidden columns, those of flxTranspose
// don't.
PrintTemplate TemplateForGrid(ReportContext& report);

}  // namespace vorek::print

#endif  // VOREK_PRINT_GRID_TEMPLATE_H_
