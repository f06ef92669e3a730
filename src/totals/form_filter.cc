#include "totals/form_filter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "text/cell_text.h"

namespace vorek {
namespace {

struct Operator {
  std::int32_t data;
  const char* caption;
  const char* text;
};
constexpr Operator kOperators[] = {
    {1, "برابر", "="}, {2, "کمتر يا مساوي", "<="}, {3, "بزرگتر يا مساوي", ">="},
    {4, "کمتر", "<"},  {5, "بزرگتر", ">"},         {6, "مشابه", "like"},
};

const char* OperatorText(const ComboBox& list) {
  if (list.ListIndex() < 0) return "";
  const std::int32_t data = list.At(list.ListIndex()).data;
  return std::find_if(std::begin(kOperators), std::end(kOperators),
                      [data](const Operator& known) { return known.data == data; })
      ->text;
}

}  // namespace

FormFilter::FormFilter(Windows& windows) : Form(windows, "FormFilter") {
  SetCaption("پرسش فيلتر");
  SetRightToLeft(true);
  const std::pair<Button*, const char*> captions[] = {{&cmdAdd, "اضافه"}, {&cmdAND, "و"},
                                                      {&cmdOr, "يا"},     {&cmdClear, "پاک کردن"},
                                                      {&cmdOk, "تاييد"},  {&cmdCancel, "انصراف"}};
  for (const auto& [button, caption] : captions) button->SetCaption(caption);
  for (const Operator& known : kOperators) cmbOperator.AddItem(known.caption, known.data);
  txtFilter.SetMultiLine(true);
  Place();
  ConnectEvents();
}

void FormFilter::Place() {
  Move(0, 0, 8100, 3000);
  lblFieldName.SetRightToLeft(true);
  cmbOperator.SetRightToLeft(true);
  lblFieldName.Move(5500, 330, 2300, 300);
  cmbOperator.Move(3700, 300, 1700, 360);
  txtValue.Move(1600, 300, 2000, 360);
  cmdAdd.Move(300, 290, 1200, 380);
  txtFilter.Move(1600, 850, 6200, 1240);
  cmdAND.Move(300, 850, 1200, 380);
  cmdOr.Move(300, 1280, 1200, 380);
  cmdClear.Move(300, 1710, 1200, 380);
  cmdOk.Move(6400, 2300, 1400, 420);
  cmdCancel.Move(4900, 2300, 1400, 420);
}

void FormFilter::ConnectEvents() {
  txtValue.on_got_focus = [this] { txtValue.SelectAll(); };
  cmdAdd.on_click = [this] { AddCondition(); };
  cmdAND.on_click = [this] { Append(" AND "); };
  cmdOr.on_click = [this] { Append(" OR "); };
  cmdClear.on_click = [this] { txtFilter.SetText(""); };
  cmdOk.on_click = [this] { End(true); };
  cmdCancel.on_click = [this] { End(false); };
  on_form_key_down = [this](int key_code, int) {
    constexpr int kEscape = 27;
    if (key_code == kEscape) End(false);
  };
}

bool FormFilter::getFilter(const std::string& fieldName, int fieldType, std::string& filterText) {
  FilterAccepted = false;
  lblFieldName.SetCaption("[" + fieldName + "]");
  field_type_ = fieldType;
  txtFilter.SetText(filterText);
  cmbOperator.SetListIndex(0);
  txtValue.SetFocus();
  ShowModal();
  if (FilterAccepted) filterText = txtFilter.Text();
  Unload();
  return FilterAccepted;
}

// The value as it was typed: quotes in it aren't doubled, wildcards are the user's own.
void FormFilter::AddCondition() {
  const std::string quote = IsNumericFieldType(field_type_) ? "" : "'";
  Append(" " + lblFieldName.Caption() + " " + OperatorText(cmbOperator) + " " + quote +
         txtValue.Text() + quote);
}

void FormFilter::Append(const std::string& text) { txtFilter.SetText(txtFilter.Text() + text); }

void FormFilter::End(bool accepted) {
  FilterAccepted = accepted;
  Hide();
}

}  // namespace vorek
