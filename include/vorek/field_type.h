#ifndef VOREK_FIELD_TYPE_H_
#define VOREK_FIELD_TYPE_H_

namespace vorek {

// ADO's type numbers (DataTypeEnum) of the fields that a provider gives. The numbers are part of
// the system's rules: cell texts, alignments and sums go by them.
enum FieldType : int {
  kSmallInt = 2,
  kInteger = 3,
  kSingle = 4,
  kDouble = 5,
  kCurrency = 6,  // four decimal places
  kDate = 7,
  kBoolean = 11,
  kDecimal = 14,
  kTinyInt = 16,
  kUnsignedTinyInt = 17,
  kUnsignedSmallInt = 18,
  kUnsignedInt = 19,
  kBigInt = 20,
  kUnsignedBigInt = 21,
  kGuid = 72,
  kBinary = 128,
  kChar = 129,
  kWChar = 130,
  kNumeric = 131,
  kDBDate = 133,
  kDBTime = 134,
  kDBTimeStamp = 135,
  kVarNumeric = 139,
  kVarChar = 200,
  kLongVarChar = 201,
  kVarWChar = 202,
  kLongVarWChar = 203,
  kVarBinary = 204,
  kLongVarBinary = 205,
};

}  // namespace vorek

#endif  // VOREK_FIELD_TYPE_H_
