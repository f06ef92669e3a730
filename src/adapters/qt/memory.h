#ifndef VOREK_ADAPTERS_QT_MEMORY_H_
#define VOREK_ADAPTERS_QT_MEMORY_H_

namespace vorek::qt {

// Gives what was freed back to the machine, after a big result went: the C library keeps it for the
// program otherwise. Takes some milliseconds.
void ReturnMemory();

}  // namespace vorek::qt

#endif  // VOREK_ADAPTERS_QT_MEMORY_H_
