#ifndef VOREK_APPS_VOREK_DRIVE_EVALUATION_OBJECT_H_
#define VOREK_APPS_VOREK_DRIVE_EVALUATION_OBJECT_H_

#include <memory>

#include "drive/members.h"
#include "vorek/evaluation.h"

namespace vorek::drive {

// An evaluator's public members for scripts. A word that reads as a number is one. The evaluator
// has to outlive it.
std::unique_ptr<Object> EvaluationObject(EvaluationClass& evaluation);

}  // namespace vorek::drive

#endif  // VOREK_APPS_VOREK_DRIVE_EVALUATION_OBJECT_H_
