#include "drive/stage.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "drive/words.h"
#include "text/persian_date.h"
#include "text/utf8.h"
#include "vorek/error.h"

namespace vorek::drive {

void ScriptClock::Fix(const std::string& text) {
  DateTime time;
  const std::size_t blank = text.find(' ');
  const auto date = text::ParseDate(text.substr(0, blank));
  const std::string hours = blank == std::string::npos ? "00:00" : text.substr(blank + 1);
  const bool parsed =
      std::sscanf(hours.c_str(), "%2d:%2d:%2d", &time.hour, &time.minute, &time.second) >= 2;
  if (!date || !text::IsGregorianDate(*date) || !parsed || time.hour > 23 || time.minute > 59) {
    throw Error(ErrorNumber::kInvalidCall, "no time of the form 2026-11-24 10:30: " + text);
  }
  time.year = date->year;
  time.month = date->month;
  time.day = date->day;
  fixed_ = time;
}

void Stage::Queue(const std::string& form_name, Block block) {
  queue_[text::ToLower(form_name)].push_back(std::move(block));
}

void Stage::Open(Form& form) {
  print_("form " + form.Name() + " " + Quote(form.Caption()) + " " + Quote(form.MainText()));
  if (std::find(open_.begin(), open_.end(), &form) == open_.end()) open_.push_back(&form);
  watches_[&form] = std::make_unique<FormWatch>(form, [this](const Form* gone) { Forget(gone); });
}

void Stage::Forget(const Form* form) { std::erase(open_, form); }

Form* Stage::UppermostForm() const {
  if (!modal_.empty()) return modal_.back();
  return open_.empty() ? nullptr : open_.back();
}

Form* Stage::FormNamed(const std::string& name, std::size_t number) const {
  Form* newest = nullptr;
  for (Form* const form : open_) {
    if (!text::EqualsIgnoreCase(form->Name(), name)) continue;
    newest = form;
    if (number == 1) return form;
    if (number > 1) --number;
  }
  return number == 0 ? newest : nullptr;
}

void Stage::ShowModal(Form& form) {
  Open(form);
  modal_.push_back(&form);
  std::deque<Block>& answers = queue_[text::ToLower(form.Name())];
  if (answers.empty()) {
    if (!failure_) failure_ = "nothing was queued for the form " + form.Name();
  } else {
    const Block block = std::move(answers.front());
    answers.pop_front();
    try {
      play_(block);
    } catch (const Error& error) {
      if (!failure_) failure_ = error.Description();
    }
  }
  modal_.pop_back();
  if (form.Shown()) form.CloseBox();
  Forget(&form);
}

void Stage::Show(Form& form) { Open(form); }

void Stage::PopupMenu(Menu& menu) {
  menu_ = &menu;
  print_("menu " + menu.Name());
}

void Stage::Beep(std::int32_t frequency, std::int32_t duration) {
  print_("beep " + std::to_string(frequency) + " " + std::to_string(duration));
}

bool Stage::PassGoesOn() {
  if (cancel_at_ == 0 || --cancel_at_ > 0) return true;
  cancelled_ = true;
  return false;
}

bool Stage::TellCancelled(std::string_view line) {
  if (!std::exchange(cancelled_, false)) return false;
  print_("told " + Quote(std::string(line)));
  return true;
}

bool FileStage::Choose(const char* kind, FileDialogRequest& request) {
  print_(std::string("dialog ") + kind + " " + Quote(request.title) + " " + Quote(request.filter));
  std::string name;
  if (!names_.empty()) {
    name = std::move(names_.front());
    names_.pop_front();
  }
  if (name.empty()) return false;
  request.file_name = name;
  return true;
}

std::string DocumentStage::NewPath(const std::string& file_name) {
  if (names_.empty()) return file_name;
  std::string name = std::move(names_.front());
  names_.pop_front();
  return name;
}

void DocumentStage::Show(const std::string& path) { print_("workbook " + Quote(path)); }

}  // namespace vorek::drive
