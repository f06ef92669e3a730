#ifndef VOREK_TESTS_FAULTS_FAILING_SQLITE_H_
#define VOREK_TESTS_FAULTS_FAILING_SQLITE_H_

#include <cstddef>

// The memory of SQLite, which counts its allocations and fails on demand as failing_memory does.
namespace vorek::failing_sqlite {

// Before the first connection.
void Install();
void Arm(std::size_t n);
std::size_t Disarm();
bool Fired();

}  // namespace vorek::failing_sqlite

#endif  // VOREK_TESTS_FAULTS_FAILING_SQLITE_H_
