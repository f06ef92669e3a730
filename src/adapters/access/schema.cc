#include "adapters/access/schema.h"

#include <mdbtools.h>

#include <memory>

#include "adapters/access/guarded_read.h"
#include "adapters/access/jet_file.h"
#include "vorek/error.h"

namespace vorek::jet {
namespace {

struct CloseFile {
  void operator()(MdbHandle* file) const { mdb_close(file); }
};
struct FreeTable {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using FileHandle = std::unique_ptr<MdbHandle, CloseFile>;
using TableHandle = std::unique_ptr<MdbTableDef, FreeTable>;

FileHandle Open(const std::string& path) {
  FileHandle file(mdb_open(path.c_str(), MDB_NOFLAGS));
  if (file == nullptr || mdb_read_catalog(file.get(), MDB_ANY) == nullptr) {
    throw Error(ErrorNumber::kPathAccess, "فايل اکسس باز نمي شود: " + path);
  }
  return file;
}

MdbCatalogEntry& EntryAt(const MdbHandle& file, unsigned int i) {
  return *static_cast<MdbCatalogEntry*>(g_ptr_array_index(file.catalog, i));
}

constexpr unsigned int kHidden = 8;

bool IsOffered(MdbCatalogEntry& entry) {
  return mdb_is_user_table(&entry) != 0 && (static_cast<unsigned int>(entry.flags) & kHidden) == 0;
}

std::string TextOf(const char* text) { return text == nullptr ? "" : text; }
bool IsYes(const char* text) { return TextOf(text) == "yes"; }

FieldProperties PropertiesOf(const MdbColumn& column) {
  const char* const empty = mdb_col_get_prop(&column, "AllowZeroLength");
  return {column.name,
          TextOf(mdb_col_get_prop(&column, "Description")),
          TextOf(mdb_col_get_prop(&column, "DefaultValue")),
          TextOf(mdb_col_get_prop(&column, "ValidationRule")),
          IsYes(mdb_col_get_prop(&column, "Required")),
          empty == nullptr || IsYes(empty)};
}

std::vector<std::string> TablesOf(const std::string& path) {
  const FileHandle file = Open(path);
  std::vector<std::string> names;
  for (unsigned int i = 0; i < file->num_catalog; ++i) {
    if (IsOffered(EntryAt(*file, i))) names.emplace_back(EntryAt(*file, i).object_name);
  }
  return names;
}

TableProperties PropertiesOf(MdbCatalogEntry& entry) {
  const TableHandle definition(mdb_read_table(&entry));
  if (definition == nullptr) Damaged();
  mdb_read_columns(definition.get());
  TableProperties properties;
  properties.page = static_cast<std::uint32_t>(entry.table_pg);
  properties.validation_rule = TextOf(mdb_table_get_prop(definition.get(), "ValidationRule"));
  for (unsigned int c = 0; c < definition->num_cols; ++c) {
    properties.fields.push_back(
        PropertiesOf(*static_cast<MdbColumn*>(g_ptr_array_index(definition->columns, c))));
  }
  return properties;
}

TableProperties TableOf(const std::string& path, const std::string& table) {
  const FileHandle file = Open(path);
  for (unsigned int i = 0; i < file->num_catalog; ++i) {
    MdbCatalogEntry& entry = EntryAt(*file, i);
    if (entry.object_name == table && IsOffered(entry)) return PropertiesOf(entry);
  }
  throw Error(ErrorNumber::kMissingObject,
              "جدول " + table + " در فايل اکسس نيست، يا پيوندي به فايلي ديگر است.");
}

// Properties as texts, which is how they leave the child that read them.
constexpr std::size_t kTextsAField = 6;

std::vector<std::string> ToTexts(const TableProperties& properties) {
  std::vector<std::string> texts = {std::to_string(properties.page), properties.validation_rule};
  for (const FieldProperties& field : properties.fields) {
    texts.insert(texts.end(),
                 {field.name, field.description, field.default_value, field.validation_rule,
                  field.required ? "1" : "", field.takes_empty_text ? "1" : ""});
  }
  return texts;
}

TableProperties FromTexts(const std::vector<std::string>& texts) {
  if (texts.size() < 2 || (texts.size() - 2) % kTextsAField != 0) Damaged();
  TableProperties properties;
  properties.page = static_cast<std::uint32_t>(std::stoul(texts[0]));
  properties.validation_rule = texts[1];
  for (auto text = texts.begin() + 2; text != texts.end(); text += kTextsAField) {
    properties.fields.push_back(
        {text[0], text[1], text[2], text[3], !text[4].empty(), !text[5].empty()});
  }
  return properties;
}

}  // namespace

std::vector<std::string> ReadTables(const std::string& path) {
  return ReadGuarded([&] { return TablesOf(path); });
}

TableProperties ReadTable(const std::string& path, const std::string& table) {
  return FromTexts(ReadGuarded([&] { return ToTexts(TableOf(path, table)); }));
}

}  // namespace vorek::jet
