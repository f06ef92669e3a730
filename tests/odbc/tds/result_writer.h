#ifndef VOREK_TESTS_ODBC_TDS_RESULT_WRITER_H_
#define VOREK_TESTS_ODBC_TDS_RESULT_WRITER_H_

#include <vector>

#include "odbc/tds/column.h"
#include "odbc/tds/packet_stream.h"
#include "vorek/result_set.h"

namespace vorek::tds {

// The columns of a result as the server would have declared them: from their types, and from the
// longest text among their values.
std::vector<Column> DeclareColumns(const ResultSet& rows);

// Puts the columns, the rows and the end of the statement. False if the client asked to stop; the
// rest is left out then.
bool WriteResult(const ResultSet& rows, PacketStream& out);

}  // namespace vorek::tds

#endif  // VOREK_TESTS_ODBC_TDS_RESULT_WRITER_H_
