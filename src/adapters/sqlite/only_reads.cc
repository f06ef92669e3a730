#include "adapters/sqlite/only_reads.h"

#include <algorithm>

namespace vorek::sqlite {

const Select* IntoOf(const Query& query) {
  const Select* select = query.branches[0].select.get();
  return select != nullptr && !select->into.Empty() ? select : nullptr;
}

bool OnlyReads(const std::vector<StatementPtr>& statements) {
  return std::all_of(statements.begin(), statements.end(), [](const StatementPtr& statement) {
    switch (statement->kind) {
      case StatementKind::kSelect:
        return IntoOf(*statement->query) == nullptr;
      case StatementKind::kDeclare:
      case StatementKind::kSet:
      case StatementKind::kSetting:
      case StatementKind::kPrint:
      case StatementKind::kRaise:
      case StatementKind::kReturn:
      case StatementKind::kBreak:
      case StatementKind::kContinue:
      case StatementKind::kLabel:
      case StatementKind::kGoto:
      case StatementKind::kNote:
      case StatementKind::kNothing:
      case StatementKind::kIf:
      case StatementKind::kWhile:
      case StatementKind::kBlock:
      case StatementKind::kTry:
        return OnlyReads(statement->body);
      default:
        return false;
    }
  });
}

}  // namespace vorek::sqlite
