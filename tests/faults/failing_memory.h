#ifndef VOREK_TESTS_FAULTS_FAILING_MEMORY_H_
#define VOREK_TESTS_FAULTS_FAILING_MEMORY_H_

#include <cstddef>
#include <vector>

// The program's operator new, in all of its forms, which counts and fails on demand. Only what this
// program allocates by new is counted, in all of its threads.
namespace vorek::failing_memory {

// From now on the n-th allocation fails, n from 1; 0 lets all of them succeed and counts.
void Arm(std::size_t n);
// Counts and fails no more; returns how many there were since Arm.
std::size_t Disarm();
// True if an allocation failed since the last Arm.
bool Fired();

// Arm(0) that also notes by which calls each allocation was asked for.
void ArmToLearn();
// The numbers of the allocations since ArmToLearn whose calls hadn't been seen before, rising.
std::vector<std::size_t> NewPlaces();

// While one lives, allocations of this thread are the test's own: they succeed, uncounted.
class Pause {
 public:
  Pause();
  ~Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;
};

}  // namespace vorek::failing_memory

#endif  // VOREK_TESTS_FAULTS_FAILING_MEMORY_H_
