#ifndef VOREK_PARAMETERS_PARAMETER_DEPENDENCIES_H_
#define VOREK_PARAMETERS_PARAMETER_DEPENDENCIES_H_

#include <cstdint>
#include <string>

#include "parameters/parameter_widgets.h"

namespace vorek {

// How the fields of a parameter form follow one another.
//
// On any form a choice in a selector gives the lists that depend on it (DepOnParameterIDForm,
// DepOnParameterIDObject) other rows. On the forms of the ledger reports the period slt(1), the
// dates dat(1) and dat(2) and the voucher numbers txt(1) and txt(2) follow one another besides.
//
// A failure of the database ends what it happens in and isn't told; the fields are then as far as
// it got.
class ParameterDependencies {
 public:
  // Both must outlive it.
  ParameterDependencies(ParameterWidgets& widgets, Process& process)
      : widgets_(widgets), process_(process) {}

  // A form of that report stands.
  void Begin(std::int32_t report_id);

  // Gives a ledger's form the period and the user's branch. True if it is to be confirmed at once.
  bool FillInitially(std::int32_t period_id, bool call_by_report);

  // The events of the widgets, with their index in their array.
  void SelectorChanged(std::int32_t index);
  void DateChanged(std::int32_t index);
  void TextEntered(std::int32_t index);
  void TextLeft(std::int32_t index);

  // While it lives no field follows another: they get values that belong together.
  class Silence {
   public:
    explicit Silence(ParameterDependencies& of) : of_(of) { ++of_.silent_; }
    ~Silence() { --of_.silent_; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

   private:
    ParameterDependencies& of_;
  };

 private:
  struct Row;    // of a parameter that depends on another
  struct Class;  // of accounts

  Recordset& Slot() { return process_.dten().rssqlGeneral3; }
  bool IsLedger() const;
  bool HasPeriod();
  VorekSelector& Selector(std::int32_t index);
  std::int32_t SelectedID(std::int32_t index);

  void TakeBranch();
  void TakePeriod();
  void TakeCodeRange();
  void TakeDatesOfCodes();

  void Follow(std::int32_t index);
  void FollowClass(const Row& row, std::int32_t index, Control& widget);
  void FollowChoice(const Row& row, std::int32_t index, Control& widget);
  void ShowClass(const Row& row, const Class& of, std::int32_t class_id, VorekMultiSelect& list);
  Class ReadClass(std::int32_t id);

  ParameterWidgets& widgets_;
  Process& process_;
  std::int32_t report_id_ = -1;
  std::string entered_;  // the text of the field that has the focus
  int silent_ = 0;
};

// Whether a list that depends on a class of accounts has its views written back into the catalogue
// when a class is chosen: one that doesn't show accounts in two levels by their names.
bool WritesMetadata(const std::string& major_view, const std::string& minor_view);

}  // namespace vorek

#endif  // VOREK_PARAMETERS_PARAMETER_DEPENDENCIES_H_
