#include "engine/security_check.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "engine/query_tokens.h"
#include "text/utf8.h"

namespace vorek {
namespace {

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr const char* kRefused = "the server refuses the text";

class SecurityCheck {
 public:
  explicit SecurityCheck(std::string_view query) : query_(query), scan_(ScanQuery(query)) {
    from_ = Find("from");
    where_ = Find("where", from_);
    order_ = Find("order", from_);
  }

  std::vector<SecurityFault> Run() {
    CheckParts();
    CheckFrom();
    CheckWhere();
    CheckOrder();
    CheckEnd();
    return std::move(faults_);
  }

 private:
  const std::vector<QueryToken>& Tokens() const { return scan_.tokens; }
  void Tell(bool leaks, std::string what, std::string why) {
    faults_.push_back({leaks, std::move(what), std::move(why)});
  }

  // The first such word outside all brackets, by its index; kNowhere without one.
  std::size_t Find(std::string_view word, std::size_t begin = 0) const {
    for (std::size_t i = begin; i < Tokens().size(); ++i) {
      if (Tokens()[i].depth == 0 && IsKeyword(Tokens()[i], word)) return i;
    }
    return kNowhere;
  }
  // Where the clause finds its text, less the blank in front; kNowhere if it doesn't.
  std::size_t Seen(std::string_view text, std::size_t begin = 0) const {
    const std::size_t at = text::FindIgnoreCase(query_, text, begin);
    return at == kNowhere ? kNowhere : at + 1;
  }
  std::size_t Place(std::size_t token) const {
    return token == kNowhere ? kNowhere : Tokens()[token].begin;
  }

  void CheckParts() {
    for (const char* joint : {"union", "except", "intersect"}) {
      if (Find(joint) == kNowhere) continue;
      Tell(true, std::string("the query is joined to another by ") + text::ToUpper(joint),
           "the condition restricts the last one alone: everybody sees all rows of the others");
    }
  }

  void CheckFrom() {
    if (from_ == kNowhere || Seen(" from ") == Place(from_)) return;
    Tell(true, "the first FROM between blanks isn't the query's own",
         "the form and the key are read off another place: rows may be shown to everybody");
  }

  void CheckWhere() {
    const std::size_t seen = Seen(" where ", from_ == kNowhere ? 0 : Place(from_));
    if (where_ == kNowhere) {
      if (seen != kNowhere) TellOfInnerWhere();
      return;
    }
    if (seen == kNowhere) {
      Tell(false, "WHERE doesn't stand between blanks", kRefused);
    }
    CheckTopOfWhere();
  }

  // The condition is put with AND behind what stands last.
  void TellOfInnerWhere() {
    for (const char* join : {"left", "right", "full"}) {
      if (Find(join) == kNowhere) continue;
      Tell(true, "the only WHERE stands in brackets, and the query has an outer join",
           "the condition becomes part of the ON, and restricts nothing");
      return;
    }
    Tell(false, "the only WHERE stands in brackets", kRefused);
  }

  void CheckTopOfWhere() {
    for (std::size_t i = where_ + 1; i < Tokens().size(); ++i) {
      const QueryToken& token = Tokens()[i];
      if (token.depth != 0 || token.kind != QueryToken::Kind::kWord) continue;
      if (IsKeyword(token, "group") || IsKeyword(token, "order")) return;
      if (IsKeyword(token, "or")) {
        Tell(true, "an OR stands outside all brackets in the WHERE",
             "the condition restricts only what stands behind it: put the WHERE in brackets");
        return;
      }
      if (token.text.starts_with('@')) {
        Tell(true, token.text + " stands outside all brackets in the WHERE",
             "left empty it puts an OR there, and the rest isn't restricted");
        return;
      }
    }
  }

  void CheckOrder() {
    const bool by =
        order_ != kNowhere && order_ + 1 < Tokens().size() && IsKeyword(Tokens()[order_ + 1], "by");
    const std::size_t seen = Seen(" order by ");
    if (by && seen == kNowhere) {
      Tell(false, "ORDER BY doesn't stand between blanks",
           std::string("the condition comes behind it: ") + kRefused);
    } else if (seen != kNowhere && seen != Place(order_)) {
      Tell(false, "the first ORDER BY isn't the query's own",
           std::string("the condition is put in front of it: ") + kRefused);
    }
  }

  void CheckEnd() {
    const std::string_view body = query_.substr(0, text::FindIgnoreCase(query_, " order by "));
    if (ScanQuery(body).ends_in_comment) {
      Tell(true, "a comment stands where the condition is put",
           "the condition becomes part of it: everybody sees all rows");
    } else if (!Tokens().empty() && IsSign(Tokens().back(), ";")) {
      Tell(false, "the query ends with a semicolon", kRefused);
    }
  }

  std::string_view query_;
  QueryScan scan_;
  std::size_t from_ = kNowhere;
  std::size_t where_ = kNowhere;
  std::size_t order_ = kNowhere;
  std::vector<SecurityFault> faults_;
};

}  // namespace

std::vector<SecurityFault> FindSecurityFaults(std::string_view query) {
  return SecurityCheck(query).Run();
}

}  // namespace vorek
