#ifndef VOREK_AUTHOR_QUERY_TOKENS_H_
#define VOREK_AUTHOR_QUERY_TOKENS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A query's text as its words: enough to tell an author what the text work of a run makes of it.
namespace vorek {

// A word, a quoted name or text without its quotes, or a single sign.
struct QueryToken {
  enum class Kind { kWord, kQuoted, kSign } kind;
  std::string text;
  int depth;          // of round brackets around it
  std::size_t begin;  // where it stands, in bytes
};

struct QueryScan {
  std::vector<QueryToken> tokens;
  bool ends_in_comment = false;  // what is put behind the text becomes part of a comment
};
QueryScan ScanQuery(std::string_view query);

bool IsKeyword(const QueryToken& token, std::string_view word);
bool IsSign(const QueryToken& token, std::string_view sign);

// True at every byte of the query that lies in a text in single quotes, in a comment, or in a
// bracketed or double-quoted name.
std::vector<bool> QuotedBytes(std::string_view query);

// An "@" or "@@" of a query with the number behind it; -1 for one without a number.
struct Marker {
  std::int32_t number;
  std::size_t at;
};
std::vector<Marker> MarkersOf(std::string_view query);
bool HasMarker(std::string_view query, std::int32_t number);

}  // namespace vorek

#endif  // VOREK_AUTHOR_QUERY_TOKENS_H_
