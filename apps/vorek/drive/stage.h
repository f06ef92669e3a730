#ifndef VOREK_APPS_VOREK_DRIVE_STAGE_H_
#define VOREK_APPS_VOREK_DRIVE_STAGE_H_

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "vorek/clipboard.h"
#include "vorek/clock.h"
#include "vorek/documents.h"
#include "vorek/file_dialogs.h"
#include "vorek/no_windows.h"
#include "widgets/form.h"

namespace vorek::drive {

// The clock of a script: the machine's, until a script sets it.
class ScriptClock : public Clock {
 public:
  explicit ScriptClock(std::shared_ptr<Clock> machine) : machine_(std::move(machine)) {}
  DateTime Now() const override { return fixed_ ? *fixed_ : machine_->Now(); }
  // "2026-11-24 10:30". Throws Error(kInvalidCall) for a text of another form.
  void Fix(const std::string& text);

 private:
  std::shared_ptr<Clock> machine_;
  std::optional<DateTime> fixed_;
};

// A line of a script, with its number from 1.
struct ScriptLine {
  std::size_t number = 0;
  std::string text;
};
using Block = std::vector<ScriptLine>;

// Forgets a form that isn't shown any more, or is gone.
class FormWatch : public ControlObserver {
 public:
  FormWatch(Form& form, std::function<void(Form*)> forget)
      : form_(&form), forget_(std::move(forget)) {
    form.SetObserver(this);
  }

  void PropertyChanged(Control& control, std::string_view property) override {
    if (&control == form_ && property == "Visible" && !form_->Visible()) forget_(form_);
  }
  void ChildAdded(Control&) override {}
  void ChildRemoved(Control&) override {}
  void FocusSet(Control&) override {}
  void RootGone() override { forget_(form_); }

 private:
  Form* form_;
  std::function<void(Form*)> forget_;
};

// The screen of a script: it says which form shows, and does with it what the script has queued.
class Stage : public NoWindows {
 public:
  // out takes the "form ..." lines; play runs the lines of a block.
  Stage(std::function<void(const std::string&)> print, std::function<void(const Block&)> play)
      : print_(std::move(print)), play_(std::move(play)) {}

  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  void PopupMenu(Menu& menu) override;
  void Beep(std::int32_t frequency, std::int32_t duration) override;
  bool PassGoesOn() override;
  bool TellCancelled(std::string_view line) override;

  // The user cancels at the question of that number, from 1, that the passes ask from now on.
  void CancelAt(std::int32_t question) { cancel_at_ = question; }

  // What to do the next time that the form of that name shows modally.
  void Queue(const std::string& form_name, Block block);

  // The modal form on top, null if there is none.
  Form* TopForm() const { return modal_.empty() ? nullptr : modal_.back(); }
  // All forms that show, in the order of their opening.
  const std::vector<Form*>& OpenForms() const { return open_; }
  // The modal form on top, else the form that was opened last; null without a form.
  Form* UppermostForm() const;
  // The form of that name: number n from 1 in the order of opening, the newest for 0; null for
  // none.
  Form* FormNamed(const std::string& name, std::size_t number) const;
  Menu* OpenMenu() const { return menu_; }
  void CloseMenu() { menu_ = nullptr; }

  // The first failure inside a form: no answer was queued, or a line of a block failed. It is kept
  // here since no exception may cross the code that shows a form.
  const std::optional<std::string>& Failure() const { return failure_; }
  void ClearFailure() { failure_.reset(); }

 private:
  void Open(Form& form);
  void Forget(const Form* form);

  std::function<void(const std::string&)> print_;
  std::function<void(const Block&)> play_;
  std::map<std::string, std::deque<Block>> queue_;  // by the form's name in small letters
  std::vector<Form*> modal_;
  std::vector<Form*> open_;
  std::map<const Form*, std::unique_ptr<FormWatch>> watches_;  // one for each form ever shown
  Menu* menu_ = nullptr;
  std::int32_t cancel_at_ = 0;  // counted down; 0 for never
  bool cancelled_ = false;
  std::optional<std::string> failure_;
};

// The file dialogs of a script: each takes the next name that was queued; an empty name, or none,
// is a cancel.
class FileStage : public FileDialogs {
 public:
  explicit FileStage(std::function<void(const std::string&)> print) : print_(std::move(print)) {}
  void Queue(std::string name) { names_.push_back(std::move(name)); }

  bool Save(FileDialogRequest& request) override { return Choose("save", request); }
  bool Open(FileDialogRequest& request) override { return Choose("open", request); }

 private:
  bool Choose(const char* kind, FileDialogRequest& request);

  std::function<void(const std::string&)> print_;
  std::deque<std::string> names_;
};

// Where a script's workbooks go: under the names that were queued, else under their own.
class DocumentStage : public Documents {
 public:
  explicit DocumentStage(std::function<void(const std::string&)> print)
      : print_(std::move(print)) {}
  void Queue(std::string name) { names_.push_back(std::move(name)); }

  std::string NewPath(const std::string& file_name) override;
  void Show(const std::string& path) override;

 private:
  std::function<void(const std::string&)> print_;
  std::deque<std::string> names_;
};

class ClipboardStage : public Clipboard {
 public:
  void Clear() override { text_.clear(); }
  void Put(const std::string& text, const std::string&) override { text_ = text; }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_STAGE_H_
