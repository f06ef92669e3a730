#ifndef VOREK_ODBC_H_
#define VOREK_ODBC_H_

#include <memory>

namespace vorek {

class DatabaseProvider;

// SQL Server and whatever else has an ODBC driver. Add it to WorldOptions.
//
// It answers to the names by which hosts know SQL Server (SQLOLEDB, MSOLEDBSQL, SQLNCLI, with or
// without a version behind them) and to MSDASQL. The strings of the former are turned into those
// of an installed driver: Microsoft's if there is one, else FreeTDS, or the one that "Driver="
// names. MSDASQL passes its pieces on as they are: "Provider=MSDASQL;DSN=books;" or
// "Provider=MSDASQL;Driver={PostgreSQL Unicode};Server=...".
std::shared_ptr<DatabaseProvider> OdbcProvider();

}  // namespace vorek

#endif  // VOREK_ODBC_H_
