#include "engine/property_bag.h"

#include <functional>
#include <limits>

#include "platform/connection_secrets.h"
#include "text/number.h"
#include "text/utf8.h"
#include "widgets/property.h"

namespace vorek {
namespace {

[[noreturn]] void Refuse(ErrorNumber number, const std::string& key, const std::string& text) {
  throw Error(number, "The stored property " + key + " can't be \"" + text::Left(text, 50) + "\".");
}

bool IsNumber(const std::string& text) {
  return text.find_first_of("0123456789") != std::string::npos &&
         text.find_first_not_of("0123456789-+. ") == std::string::npos;
}

std::int32_t ReadNumber(const std::string& key, const std::string& text, std::int32_t least,
                        std::int32_t most) {
  if (!IsNumber(text)) Refuse(ErrorNumber::kTypeMismatch, key, text);
  const double value = text::NumericPrefix(text);
  if (value < least || value > most) Refuse(ErrorNumber::kOverflow, key, text);
  return text::ToInt32(value);
}

bool ReadFlag(const std::string& key, const std::string& text) {
  const bool word = text::EqualsIgnoreCase(text, "True") || text::EqualsIgnoreCase(text, "False");
  if (!word && !IsNumber(text)) Refuse(ErrorNumber::kTypeMismatch, key, text);
  return property::FromText<bool>(text);
}

// A refused text leaves the connection that is in force, as an assignment does.
void ReadConnection(ReportControl& control, const std::string& text) {
  if (text.empty()) {
    control.state.OleConnectionString.clear();
    return;
  }
  try {
    control.SetConnection(text);
  } catch (const Error& error) {
    throw Error(error.Number(), "The stored property OleConnectionString: " + error.Description());
  }
}

// One stored property: its key, its default and both ways between state and text.
struct StoredProperty {
  std::string key;
  std::string default_value;
  bool written;
  std::function<std::string(ReportControl&)> get;
  std::function<void(ReportControl&, const std::string&)> set;
};

template <typename T>
StoredProperty Number(const char* key, T ReportState::*field, const char* default_value,
                      std::int32_t least, std::int32_t most) {
  return {key, default_value, true,
          [field](ReportControl& c) { return std::to_string(c.state.*field); },
          [=](ReportControl& c, const std::string& text) {
            c.state.*field = static_cast<T>(ReadNumber(key, text, least, most));
          }};
}

template <typename T>
StoredProperty Number16(const char* key, T ReportState::*field) {
  using Limits = std::numeric_limits<std::int16_t>;
  return Number(key, field, "-1", Limits::min(), Limits::max());
}

StoredProperty Number32(const char* key, std::int32_t ReportState::*field,
                        const char* default_value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return Number(key, field, default_value, Limits::min(), Limits::max());
}

StoredProperty Text(const char* key, std::string ReportState::*field, const char* default_value,
                    bool written) {
  return {key, default_value, written, [field](ReportControl& c) { return c.state.*field; },
          [field](ReportControl& c, const std::string& text) { c.state.*field = text; }};
}

const std::vector<StoredProperty>& StoredProperties() {
  static const std::vector<StoredProperty> properties = {
      Number16("UserID", &ReportState::UserID),
      Number32("PeriodID", &ReportState::PeriodID, "-1"),
      Number16("OperationMode", &ReportState::OperationMode),
      Number16("PositionID", &ReportState::PositionID),
      Number16("EmployeeID", &ReportState::EmployeeID),
      {"OleConnectionString", "", true,
       [](ReportControl& c) { return StorableConnection(c.state.OleConnectionString); },
       ReadConnection},
      Text("Title", &ReportState::Title, "", false),
      Number32("FormID", &ReportState::FormID, "0"),
      Number32("FormTypeID", &ReportState::FormTypeID, "0"),
      Text("UniqueWC", &ReportState::UniqueWC, "''<>''", true),
      {"Enabled", "True", true, [](ReportControl& c) { return property::ToText(c.state.Enabled); },
       [](ReportControl& c, const std::string& text) {
         c.SetEnabledGrids(ReadFlag("Enabled", text));
       }},
      Text("SQLQuery", &ReportState::StoredSQLQuery, "", true),
      Text("UseThisQuery", &ReportState::UseThisQuery, "", true),
      {"Enable_DbClick", "True", true,
       [](ReportControl& c) { return property::ToText(c.state.Enable_DbClick); },
       [](ReportControl& c, const std::string& text) {
         c.state.Enable_DbClick = ReadFlag("Enable_DbClick", text);
       }}};
  return properties;
}

}  // namespace

void InitProperties(ReportControl& control) {
  for (const StoredProperty& property : StoredProperties()) {
    property.set(control, property.default_value);
  }
  control.state.Enable_DbClick = false;
}

void ReadProperties(ReportControl& control, PropertyStore& store) {
  for (const StoredProperty& property : StoredProperties()) {
    property.set(control, store.ReadProperty(property.key, property.default_value));
  }
}

void WriteProperties(ReportControl& control, PropertyStore& store) {
  for (const StoredProperty& property : StoredProperties()) {
    if (!property.written) continue;
    store.WriteProperty(property.key, property.get(control), property.default_value);
  }
  store.Commit();
}

}  // namespace vorek
