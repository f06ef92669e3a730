#ifndef VOREK_PRINT_TEMPLATE_CHECK_H_
#define VOREK_PRINT_TEMPLATE_CHECK_H_

#include <string>
#include <vector>

#include "print/print_template.h"
#include "vorek/result_set.h"

namespace vorek::print {

// Something in a template that goes wrong, or not as its author will have meant.
struct TemplateFault {
  bool stops = false;  // nothing is printed
  std::string what;
  std::string why;  // what comes of it
};

// Fields that aren't among the columns of rows (null: columns can't be told, and aren't looked at),
// items that stand off the paper or out of their band, texts that lie over one another, parameters
// that the report doesn't have.
std::vector<TemplateFault> CheckTemplate(const PrintTemplate& checked, const ResultSetPtr& rows,
                                         const std::vector<std::string>& parameters);

}  // namespace vorek::print

#endif  // VOREK_PRINT_TEMPLATE_CHECK_H_
