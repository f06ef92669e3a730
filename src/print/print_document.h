#ifndef VOREK_PRINT_PRINT_DOCUMENT_H_
#define VOREK_PRINT_PRINT_DOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "print/bound_text.h"
#include "print/pages.h"
#include "print/print_template.h"
#include "totals/fixed_total.h"
#include "vorek/evaluation.h"

namespace vorek::print {

// The rows of a query in the bands of a template, broken into pages. The pages are counted when it
// is made; what stands on one is made when it is asked for.
class PrintDocument : public Pages {
 public:
  // Rows come in the order of their column Sequence, where the query has one. Throws
  // Error(kBadTemplate) for a template that names a column which the query doesn't have, and for
  // one that would need more than kMostPages.
  PrintDocument(PrintTemplate print_template, FieldValues values);

  const PrintTemplate& Template() const { return template_; }
  const Paper& Sheet() const override { return paper_; }
  std::size_t PageCount() const override { return pages_.size(); }
  std::vector<DrawnItem> Page(std::size_t n) const override;

 private:
  // A band at its place on a page.
  struct Placed {
    const Band* band = nullptr;
    double top = 0;         // from the printable area's top
    std::uint32_t row = 0;  // by which its fields are read
    bool has_row = false;
    std::uint32_t level = 0;  // of a group's band
    std::uint32_t group = 0;  // which group of that level
  };
  struct PageOfBands {
    std::vector<Placed> bands;
    std::size_t first_row = 0;  // in the order of the rows
    std::size_t last_row = 0;   // behind the last one
  };
  // The rows of one group.
  struct Span {
    std::size_t first = 0;
    std::size_t last = 0;
  };
  // A summed field: its values in the order of the rows, and its totals of all pages before each.
  struct Summed {
    std::size_t column = 0;
    std::vector<std::int64_t> values;
    std::vector<FixedTotal> before_page;
  };
  // An item with what is found once for it.
  struct BoundItem {
    BoundText text;
    BoundText when;
    std::size_t sum = 0;  // in summed_
  };

  friend class PagePass;

  void OrderRows();
  void FindGroups();
  void Bind();
  void Bind(const Item& item);
  std::size_t SumField(const std::string& name);
  void TotalPages();
  bool IsShown(const BoundItem& bound, const Place& place) const;
  std::string TextOf(const Item& item, const Placed& placed, std::size_t page,
                     const Place& place) const;
  std::string SumText(const Item& item, const Placed& placed, std::size_t page) const;
  FixedTotal TotalOf(const Summed& summed, const Span& span) const;

  PrintTemplate template_;
  Paper paper_;
  FieldValues values_;
  std::vector<std::uint32_t> order_;       // the rows as they are printed
  std::vector<std::string> group_names_;   // from the outermost level on
  std::vector<std::vector<Span>> groups_;  // of each level
  std::vector<Summed> summed_;
  std::map<const Item*, BoundItem> bound_;
  std::vector<PageOfBands> pages_;
  mutable EvaluationClass evaluation_;
};

}  // namespace vorek::print

#endif  // VOREK_PRINT_PRINT_DOCUMENT_H_
