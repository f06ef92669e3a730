// Bytes of a print template, printed over a few rows: what is refused is refused by an Error, what
// is read comes back the same from its own writing, and every page can be made.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "platform/memory_database.h"
#include "print/print_document.h"
#include "print/template_check.h"
#include "vorek/error.h"
#include "vorek/field_type.h"
#include "vorek/xml.h"

namespace {

vorek::print::FieldValues Values() {
  using namespace vorek;
  const ResultSetPtr rows = MakeResult(
      {{"Sequence", kInteger}, {"Column1", kVarWChar}, {"Column2", kVarWChar}},
      {{"1", "a", "5"}, {"2", "a", "-1,000"}, {"3", "b", ""}, {"4", "b", "9"}, {"5", "a", "x"}});
  return {rows, {{"@Period", "1403"}, {"UserID", "1"}}};
}

void CheckWriting(const vorek::print::PrintTemplate& made) {
  for (const vorek::print::Band& band : made.bands) {
    for (const vorek::print::Item& item : band.items) {
      if (item.kind == vorek::print::ItemKind::kPicture) return;  // pictures aren't written
    }
  }
  const std::string written = WriteTemplate(made);
  try {
    if (WriteTemplate(vorek::print::ReadTemplate(vorek::PugiXmlReader()(written))) == written)
      return;
  } catch (const vorek::Error&) {
    // Lengths are rounded when they are written: what just fitted may not fit any more.
    return;
  }
  std::fprintf(stderr, "written otherwise the second time:\n%s\n", written.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    vorek::print::PrintTemplate made = vorek::print::ReadTemplate(vorek::PugiXmlReader()(bytes));
    CheckWriting(made);
    vorek::print::FieldValues values = Values();
    CheckTemplate(made, values.rows, {"Period"});
    const vorek::print::PrintDocument document(std::move(made), std::move(values));
    for (std::size_t page = 0; page < document.PageCount(); ++page) document.Page(page);
  } catch (const vorek::Error&) {
    return 0;
  }
  return 0;
}
