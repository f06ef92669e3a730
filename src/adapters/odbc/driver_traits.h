#ifndef VOREK_ADAPTERS_ODBC_DRIVER_TRAITS_H_
#define VOREK_ADAPTERS_ODBC_DRIVER_TRAITS_H_

namespace vorek::odbc {

// In what drivers differ: how they let values be read again that a bound buffer couldn't take, and
// what they say.
struct DriverTraits {
  bool unicode = true;               // texts as UTF-16; else their bytes, taken for UTF-8
  bool get_any_column = false;       // also of columns in front of bound ones
  bool get_bound_columns = false;    // also of bound columns
  bool get_in_block = false;         // of any row of a block
  bool is_sql_server = false;        // no value is longer than its column's size
  bool cancel_needs_a_wait = false;  // it is safe only while the driver waits for its server
};

}  // namespace vorek::odbc

#endif  // VOREK_ADAPTERS_ODBC_DRIVER_TRAITS_H_
