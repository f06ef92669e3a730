#ifndef VOREK_ACCESS_FILE_H_
#define VOREK_ACCESS_FILE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vorek {

// A field of a table in an Access file.
struct AccessField {
  std::string name;
  std::string description;  // the property Description, empty if the field lacks it
  std::int32_t type = 0;    // the number that DAO has for it, 10 for a text
  std::int32_t size = 0;    // characters of a text, bytes of anything else
  bool required = false;
  std::int32_t ordinal = 0;  // OrdinalPosition
};

// Rows on their way into one file. What was inserted is in the file once Close has returned.
class AccessConnection {
 public:
  virtual ~AccessConnection() = default;

  // insert into TABLE(NAMES) Values (VALUES): a value is a number, or a text between quotes as it
  // is, none of its own doubled. Throws Error for a row that the table can't take; rows before it
  // stay.
  virtual void Insert(const std::string& table, const std::vector<std::string>& names,
                      const std::vector<std::string>& values) = 0;

  // Puts the inserted rows into the file, all of them or, with an Error, none. A second call does
  // nothing.
  virtual void Close() = 0;
};

// Microsoft Access files. Failures are Error with a text for the user.
class AccessFile {
 public:
  virtual ~AccessFile() = default;

  // The tables of the user's own, none of the system's, hidden or linked.
  virtual std::vector<std::string> Tables(const std::string& path) = 0;
  virtual std::vector<AccessField> Fields(const std::string& path, const std::string& table) = 0;

  // connection is an ADO connection string; its Data Source names the file.
  virtual std::unique_ptr<AccessConnection> Open(const std::string& connection) = 0;
};

}  // namespace vorek

#endif  // VOREK_ACCESS_FILE_H_
