#include "parameters/form_ask_user.h"

#include <algorithm>

#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::int32_t kFormWidth = 4000;       // twips
constexpr std::int32_t kNarrowestField = 2000;  // beside a label
constexpr std::int32_t kBelow = 550;            // of the form, below its control
constexpr int kEscape = 27;

}  // namespace

FormAskUser::FormAskUser(Process& process, Notices& notices)
    : Form(process.windows(), "FormAskUser"),
      VorekParameters1(this, "VorekParameters1", process, notices),
      process_(process) {
  ConnectEvents();
}

void FormAskUser::ConnectEvents() {
  VorekParameters1.on_search = [this](const std::string& query) { Search(query); };
  VorekParameters1.on_clear = [this] {
    if (on_clear) on_clear();
  };
  VorekParameters1.on_cancel = [this] {
    confirmed_ = false;
    Hide();
    VorekParameters1.FocusFirst();
  };
  VorekParameters1.on_content_change = [this] {
    SetHeight(VorekParameters1.ContentHeight() + kBelow);
  };
  on_form_key_down = [this](int key_code, int) {
    if (key_code == kEscape && ActiveControl() == nullptr) VorekParameters1.cmdCancel.Click();
  };
  on_resize = [this] {
    VorekParameters1.SetRoom(Height() - kBelow);
    VorekParameters1.SetLeft(0);
    VorekParameters1.SetTop(0);
    VorekParameters1.SetWidth(Width() - 100);
    VorekParameters1.SetVisible(true);
  };
}

void FormAskUser::Search(const std::string& roughSQL) {
  ListOfVisualParameters = text::Trim(VorekParameters1.ListOfVisualParameters);
  ListOfParameters = text::Trim(VorekParameters1.ListOfParameters);
  if (on_search) on_search(roughSQL);
  confirmed_ = true;
  Hide();
  VorekParameters1.FocusFirst();  // when the form shows again
}

std::int32_t FormAskUser::FormWidth(std::int32_t report_id) {
  const std::int32_t label =
      ReadLabelWidth(process_.dten().rssqlGeneral1, report_id, process_.windows(), kFormWidth);
  return std::max(kFormWidth, label + 50 + kNarrowestField);
}

bool FormAskUser::View(std::int32_t ReportID, std::string& roughSQL) {
  confirmed_ = false;
  const std::int32_t columns = ReadColumnCount(process_.dten().rssqlGeneral1, ReportID);
  const std::int32_t width = FormWidth(ReportID);
  SetCaption(Title);
  SetWidth(width);
  VorekParameters1.CancelVisible = true;
  // A form without columns still has one to show.
  VorekParameters1.SetWidth(text::ToInt32(std::max(columns, 1) * static_cast<double>(width)) + 100);
  VorekParameters1.SetLeft(100);
  VorekParameters1.View(ReportID, roughSQL, width);
  VorekParameters1.PeriodID = PeriodID;
  VorekParameters1.CallByReport = false;
  VorekParameters1.FillInitially();
  VorekParameters1.SetReportCaption(Title);
  Move(Left(), Top(), VorekParameters1.Width() + 100, VorekParameters1.ContentHeight() + kBelow);
  VorekParameters1.SetVisible(true);
  VorekParameters1.FocusFirst();
  ShowModal();
  return confirmed_;
}

}  // namespace vorek
