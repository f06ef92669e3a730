#ifndef VOREK_TOTALS_FORM_FILTER_H_
#define VOREK_TOTALS_FORM_FILTER_H_

#include <string>

#include "widgets/basic_controls.h"
#include "widgets/form.h"

namespace vorek {

// Builds a filter from conditions on one field, joined to what the filter says already. Nothing is
// checked: the recordset takes or refuses the text.
class FormFilter : public Form {
 public:
  explicit FormFilter(Windows& windows);
  std::string MainText() const override { return lblFieldName.Caption(); }

  // Modal. True if the user accepted; filterText, the text to begin with, is then the new one.
  // fieldType is one of FieldType.
  bool getFilter(const std::string& fieldName, int fieldType, std::string& filterText);

  bool FilterAccepted = false;

  Label lblFieldName{this, "lblFieldName"};
  ComboBox cmbOperator{this, "cmbOperator"};
  TextBox txtValue{this, "txtValue"};
  Button cmdAdd{this, "cmdAdd"};
  TextBox txtFilter{this, "txtFilter"};
  Button cmdAND{this, "cmdAND"};
  Button cmdOr{this, "cmdOr"};
  Button cmdClear{this, "cmdClear"};
  Button cmdOk{this, "cmdOk"};
  Button cmdCancel{this, "cmdCancel"};

 private:
  void Place();
  void ConnectEvents();
  void AddCondition();
  void Append(const std::string& text);
  void End(bool accepted);

  int field_type_ = 0;
};

}  // namespace vorek

#endif  // VOREK_TOTALS_FORM_FILTER_H_
