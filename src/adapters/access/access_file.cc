#include "vorek/access_file.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "adapters/access/jet_append.h"
#include "adapters/access/schema.h"
#include "text/number.h"
#include "text/utf8.h"
#include "vorek/access.h"
#include "vorek/error.h"
#include "vorek/files.h"

namespace vorek {
namespace {

[[noreturn]] void Refuse(const std::string& why) { throw Error(ErrorNumber::kInvalidCall, why); }

// The path in a connection string.
std::string PathIn(const std::string& connection) {
  static constexpr std::string_view kKey = "Data Source=";
  const std::size_t at = connection.find(kKey);
  if (at == std::string::npos) Refuse("رشته اتصال، فايلي را نام نمي برد.");
  const std::size_t begin = at + kKey.size();
  std::string path = connection.substr(begin, connection.find(";Mode=", begin) - begin);
  if (path.size() > 1 && path.front() == '"' && path.back() == '"') {
    path = path.substr(1, path.size() - 2);
  }
  return path;
}

std::int32_t DaoType(std::uint8_t type) {
  constexpr std::int32_t kDecimal = 20;
  return type == jet::kNumeric ? kDecimal : type;
}

AccessField FieldOf(const jet::Column& column, const jet::TableProperties& properties) {
  AccessField field{column.name, "", DaoType(column.type), column.size, false, column.ordinal};
  if (column.type == jet::kText) field.size /= 2;
  const auto found = std::ranges::find(properties.fields, column.name, &jet::FieldProperties::name);
  if (found == properties.fields.end()) return field;
  field.description = found->description;
  field.required = found->required;
  return field;
}

// One table that rows go to, with what its properties ask for.
class Target {
 public:
  Target(jet::JetFile& file, const std::string& table, jet::TableProperties properties)
      : name_(table), properties_(std::move(properties)), rows_(file, properties_.page, table) {
    if (!properties_.validation_rule.empty()) RefuseRule(name_);
  }

  void Insert(const std::vector<std::string>& names, const std::vector<std::string>& values);
  void Finish() { rows_.Finish(); }

 private:
  [[noreturn]] void RefuseRule(const std::string& name) const {
    Refuse("جدول " + name_ + " قاعده اعتبارسنجي دارد: " + name);
  }
  void Resolve(const std::vector<std::string>& names);
  void CheckUnfilled(std::size_t column);
  const jet::FieldProperties& PropertiesOf(const jet::Column& column) const;
  jet::Value ValueOf(std::size_t column, const std::string& value) const;

  std::string name_;
  jet::TableProperties properties_;
  jet::Appender rows_;
  std::vector<std::string> names_;    // of the last row
  std::vector<std::size_t> filled_;   // the column of each
  std::vector<jet::Value> unfilled_;  // what the other columns get
};

const jet::FieldProperties& Target::PropertiesOf(const jet::Column& column) const {
  const auto found =
      std::ranges::find(properties_.fields, column.name, &jet::FieldProperties::name);
  if (found == properties_.fields.end()) jet::Damaged();
  return *found;
}

void Target::Resolve(const std::vector<std::string>& names) {
  const std::vector<jet::Column>& columns = rows_.Definition().Columns();
  filled_.clear();
  for (const std::string& name : names) {
    const auto found = std::ranges::find_if(columns, [&](const jet::Column& column) {
      return text::EqualsIgnoreCase(column.name, name);
    });
    if (found == columns.end()) Refuse("فيلد " + name + " در جدول " + name_ + " نيست.");
    const auto index = static_cast<std::size_t>(found - columns.begin());
    if (std::ranges::count(filled_, index) != 0) Refuse("فيلد " + name + " دو بار آمده است.");
    filled_.push_back(index);
  }
  unfilled_.assign(columns.size(), std::nullopt);
  for (std::size_t i = 0; i < columns.size(); ++i) CheckUnfilled(i);
  names_ = names;
}

// A field that no value goes to gets its default value, if that is a plain number.
void Target::CheckUnfilled(std::size_t column) {
  const jet::Column& field = rows_.Definition().Columns()[column];
  const jet::FieldProperties& properties = PropertiesOf(field);
  if (!properties.validation_rule.empty()) RefuseRule(field.name);
  if (std::ranges::count(filled_, column) != 0 || field.autonumber) return;
  const std::string& value = properties.default_value;
  if (!value.empty()) {
    if (value.find_first_not_of("0123456789") != std::string::npos) {
      Refuse("مقدار پيش فرض فيلد " + field.name + " عدد ساده نيست.");
    }
    unfilled_[column] = jet::FromNumber(field, value);
  } else if (properties.required) {
    Refuse("فيلد اجباري " + field.name + " پر نمي شود.");
  }
}

jet::Value Target::ValueOf(std::size_t column, const std::string& value) const {
  const jet::Column& field = rows_.Definition().Columns()[column];
  if (!value.starts_with('\'')) return jet::FromNumber(field, value);
  if (value.size() < 2 || !value.ends_with('\'')) Refuse("متن فيلد " + field.name + " بسته نيست.");
  const std::string text = value.substr(1, value.size() - 2);
  if (text.empty() && !PropertiesOf(field).takes_empty_text) {
    Refuse("فيلد " + field.name + " متن خالي نمي پذيرد.");
  }
  return jet::FromText(field, text);
}

void Target::Insert(const std::vector<std::string>& names, const std::vector<std::string>& values) {
  if (names.size() != values.size()) Refuse("تعداد فيلدها و مقدارها برابر نيست.");
  if (names != names_) Resolve(names);
  std::vector<jet::Value> row = unfilled_;
  for (std::size_t i = 0; i < values.size(); ++i) row[filled_[i]] = ValueOf(filled_[i], values[i]);
  rows_.Append(std::move(row));
}

class JetConnection : public AccessConnection {
 public:
  JetConnection(std::shared_ptr<Files> files, std::string path)
      : files_(std::move(files)), path_(std::move(path)) {
    RefuseIfOpen();
    before_ = files_->Read(path_);
    file_.emplace(before_);
  }

  void Insert(const std::string& table, const std::vector<std::string>& names,
              const std::vector<std::string>& values) override {
    if (!file_) throw Error(ErrorNumber::kObjectClosed, "فايل اکسس بسته است.");
    if (table != table_) Turn(table);
    target_->Insert(names, values);
    changed_ = true;
  }

  void Close() override {
    if (!file_) return;
    const bool changed = std::exchange(changed_, false);
    if (changed) target_->Finish();
    target_.reset();
    const jet::JetFile file = std::move(*file_);
    file_.reset();
    if (!changed) return;
    RefuseIfOpen();
    if (files_->Read(path_) != before_) Refuse("فايل اکسس در اين ميان تغيير کرده است: " + path_);
    files_->Write(path_, file.Bytes());
  }

 private:
  // The lock file of someone who has the file open.
  void RefuseIfOpen() const {
    const std::string stem = path_.substr(0, path_.find_last_of('.'));
    for (const char* ending : {".ldb", ".LDB"}) {
      if (files_->Exists(stem + ending)) Refuse("فايل اکسس نزد کاربر ديگري باز است: " + path_);
    }
  }

  void Turn(const std::string& table) {
    if (changed_) target_->Finish();
    target_.reset();
    target_.emplace(*file_, table, jet::ReadTable(path_, table));
    table_ = table;
  }

  std::shared_ptr<Files> files_;
  std::string path_;
  std::string before_;
  std::optional<jet::JetFile> file_;
  std::string table_;
  std::optional<Target> target_;
  bool changed_ = false;
};

class JetAccessFile : public AccessFile {
 public:
  explicit JetAccessFile(std::shared_ptr<Files> files) : files_(std::move(files)) {}

  std::vector<std::string> Tables(const std::string& path) override {
    const jet::JetFile checked(files_->Read(path));
    return jet::ReadTables(path);
  }

  std::vector<AccessField> Fields(const std::string& path, const std::string& table) override {
    jet::JetFile file(files_->Read(path));
    const jet::TableProperties properties = jet::ReadTable(path, table);
    const jet::Table definition(file, properties.page);
    std::vector<AccessField> fields;
    for (const jet::Column& column : definition.Columns()) {
      fields.push_back(FieldOf(column, properties));
    }
    return fields;
  }

  std::unique_ptr<AccessConnection> Open(const std::string& connection) override {
    return std::make_unique<JetConnection>(files_, PathIn(connection));
  }

 private:
  std::shared_ptr<Files> files_;
};

}  // namespace

std::shared_ptr<AccessFile> JetAccessFiles(std::shared_ptr<Files> files) {
  return std::make_shared<JetAccessFile>(std::move(files));
}

}  // namespace vorek
