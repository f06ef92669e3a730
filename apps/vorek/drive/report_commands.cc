#include <algorithm>
#include <iterator>
#include <utility>

#include "adapters/system/database_option.h"
#include "drive/commands.h"
#include "drive/targets.h"
#include "text/utf8.h"

namespace vorek::drive {
namespace {

// "user=1"
void SetOption(Session& session, const std::string& word) {
  static constexpr std::pair<std::string_view, std::string_view> kKeys[] = {
      {"user", "UserID"},
      {"position", "PositionID"},
      {"employee", "EmployeeID"},
      {"period", "PeriodID"}};
  const std::size_t equal = std::min(word.find('='), word.size());
  const auto* const found = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& key) {
    return key.first == std::string_view(word).substr(0, equal);
  });
  if (found == std::end(kKeys) || equal == word.size()) Refuse("unknown word " + word);
  session.Report().Root().Set(found->second, word.substr(equal + 1));
}

void Connect(Session& session, const Words& words) {
  const std::string connection = Word(words, 1);
  for (std::size_t i = 2; i < words.size(); ++i) SetOption(session, words[i]);
  session.Report().SetOleConnectionString(DatabaseOption(connection, ""));
}

std::string OptionalWord(const Words& words, std::size_t index) {
  return index < words.size() ? words[index] : "";
}

void PrintResult(Session& session, const char* of, bool result) {
  session.Print(of + std::string(": ") + (result ? "true" : "false"));
}

void View(Session& session, const Words& words) {
  const std::int32_t report = Number(words, 1);
  PrintResult(session, "view",
              session.Report().View(report, OptionalWord(words, 2), OptionalWord(words, 3)));
}

void Refresh(Session& session, const Words& words) {
  PrintResult(session, "refresh", session.Report().Refresh(false, OptionalWord(words, 1)));
}

void Call(Session& session, const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  const Arguments arguments(words.begin() + 2, words.end());
  if (Object* const object = session.FindObject(place.path)) {
    session.Print(object->Call(place.member, arguments));
    return;
  }
  const bool report = place.path.empty() || text::EqualsIgnoreCase(place.path, "VorekReport1");
  session.Print(CallMethod(
      report ? ReportMethods(session.Report()) : ControlMethods(FindControl(session, place.path)),
      place.member, arguments));
}

Control& ControlOf(Session& session, const Place& place) {
  return place.path.empty() ? session.Report().Root() : FindControl(session, place.path);
}

void Get(Session& session, const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  Object* const object = session.FindObject(place.path);
  session.Print(object != nullptr ? object->Get(place.member, place.arguments)
                                  : ControlOf(session, place).Get(place.member, place.arguments));
}

void Set(Session& session, const Words& words) {
  const Place place = ParsePlace(Word(words, 1));
  const std::string value = Word(words, 2);
  if (Object* const object = session.FindObject(place.path)) {
    object->Set(place.member, place.arguments, value);
  } else {
    ControlOf(session, place).Set(place.member, value, place.arguments);
  }
}

}  // namespace

Commands ReportCommands() {
  return {{"connect", Connect}, {"view", View}, {"refresh", Refresh},
          {"call", Call},       {"get", Get},   {"set", Set}};
}

}  // namespace vorek::drive
