#ifndef VOREK_ADAPTERS_ODBC_HANDLE_H_
#define VOREK_ADAPTERS_ODBC_HANDLE_H_

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <utility>

#include "vorek/error.h"

namespace vorek::odbc {

// An ODBC handle that is freed with its owner.
template <SQLSMALLINT kKind>
class Handle {
 public:
  Handle() = default;
  explicit Handle(SQLHANDLE parent) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(kKind, parent, &handle_))) {
      throw Error(ErrorNumber::kConnection, "The ODBC driver manager gives no handle.");
    }
  }
  ~Handle() {
    if (handle_ != SQL_NULL_HANDLE) SQLFreeHandle(kKind, handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  SQLHANDLE Get() const { return handle_; }

 private:
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using Statement = Handle<SQL_HANDLE_STMT>;

// Attributes are passed as pointers that hold a number.
inline SQLPOINTER AttributeNumber(std::size_t value) {
  return reinterpret_cast<SQLPOINTER>(value);  // NOLINT
}

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_HANDLE_H_
