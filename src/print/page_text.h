#ifndef VOREK_PRINT_PAGE_TEXT_H_
#define VOREK_PRINT_PAGE_TEXT_H_

#include <cstddef>
#include <string>
#include <vector>

#include "print/pages.h"

namespace vorek::print {

// The texts of page n, from 0: a line for each height at which some stand, from the top, its texts
// from the right with tabs between.
std::vector<std::string> TextsOfPage(const Pages& pages, std::size_t n);

}  // namespace vorek::print

#endif  // VOREK_PRINT_PAGE_TEXT_H_
