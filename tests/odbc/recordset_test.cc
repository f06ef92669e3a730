#include "odbc/postgres_server.h"
#include "support/recordset_cases.h"
#include "vorek/odbc.h"

namespace vorek {
namespace {

// Its money has two places and its texts no nvarchar.
const ProviderCase kPostgres = {
    "Postgres", OdbcProvider, [] { return odbc::SharedPostgres().ConnectionString(); },
    "create temporary table tblItem (ID int, Name varchar(50), Price numeric(19,4), Parent int)",
    kNumeric};

INSTANTIATE_TEST_SUITE_P(Providers, RecordsetTest, testing::Values(kPostgres), NameOfCase);

}  // namespace
}  // namespace vorek
