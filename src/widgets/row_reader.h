#ifndef VOREK_WIDGETS_ROW_READER_H_
#define VOREK_WIDGETS_ROW_READER_H_

#include <string>

#include "catalog/data_session.h"

namespace vorek {

// Where the list widgets read their rows.
class RowReader {
 public:
  virtual ~RowReader() = default;
  // Runs a query. Throws what the connection throws.
  virtual ResultSetPtr Read(const std::string& query) = 0;
};

// Reads over the connection of the session in force, in none of its slots: a caller may be walking
// one of them.
class SessionRowReader : public RowReader {
 public:
  // The session must outlive it.
  explicit SessionRowReader(DataSession& session) : session_(session) {}
  ResultSetPtr Read(const std::string& query) override {
    return session_.Get().cnn.Execute(query, DtEn::kTimeout);
  }

 private:
  DataSession& session_;
};

}  // namespace vorek

#endif  // VOREK_WIDGETS_ROW_READER_H_
