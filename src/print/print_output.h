#ifndef VOREK_PRINT_PRINT_OUTPUT_H_
#define VOREK_PRINT_PRINT_OUTPUT_H_

#include <memory>
#include <string>

#include "print/pages.h"

namespace vorek::print {

// Where finished pages go: a window, a file. Implemented by an adapter.
class PrintOutput {
 public:
  virtual ~PrintOutput() = default;
  // title is for a person. Throws what a file throws.
  virtual void Show(std::shared_ptr<const Pages> document, const std::string& title) = 0;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PRINT_OUTPUT_H_
