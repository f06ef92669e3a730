#include "platform/database.h"
#include "vorek/sqlite.h"
namespace vorek {
std::shared_ptr<DatabaseProvider> SqliteProvider() { return nullptr; }
}  // namespace vorek
