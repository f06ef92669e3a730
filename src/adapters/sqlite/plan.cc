#include "adapters/sqlite/plan.h"

#include "adapters/sqlite/syntax.h"

namespace vorek::sqlite {

Statement::Statement() : plan(std::make_unique<Plan>()) {}
Statement::~Statement() = default;

}  // namespace vorek::sqlite
