#ifndef VOREK_TEXT_CELL_TEXT_H_
#define VOREK_TEXT_CELL_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

// Between the texts of grid cells and numbers: "/" groups digits, parentheses mean a negative
// value, a time column counts minutes.
namespace vorek {

// A signed count of ten-thousandths, up to 922337203685477.5807.
using FixedPoint = std::int64_t;

// Cell text to plain numeric text: brackets and digit groups taken away, and a value in brackets
// made negative if it is a number. The caller takes the numeric prefix.
std::string UnformatNumber(std::string_view text);

// The number that a cell's text stands for: the numeric prefix of UnformatNumber.
double CellNumber(std::string_view text);

// The numeric prefix of a text as a fixed-point value, digit for digit, the fifth decimal place
// rounded away with halves to even. Throws Error(kOverflow).
FixedPoint ToFixedPoint(std::string_view text);

// What a cell's text counts in a total: ToFixedPoint of UnformatNumber. Throws Error(kOverflow).
FixedPoint CellFixedPoint(std::string_view text);

// The digit groups of a whole number: 1234567 gives 1/234/567, -1234 gives -1/234.
std::string GroupDigits(FixedPoint value);

// Plain numeric text to display text: digit groups, the decimals as they stand, a negative value in
// parentheses. Empty text and "txtMoney" give "". Rewrites its argument too. Throws
// Error(kOverflow) beyond a fixed-point value.
std::string FormatMoney(std::string& text);
void AppendMoney(std::string_view text, std::string& out);
// AppendMoney of text::AppendScaled, made at once.
void AppendScaledMoney(std::int64_t value, int scale, std::string& out);

// An integer field (ADO type 3) whose name says that it holds a time, in minutes.
bool IsTimeColumn(int ado_type, std::string_view field_name);
// "02:05" gives 125; a text without ":" its rounded numeric prefix. Throws Error(kOverflow).
std::int32_t TimeToMinutes(std::string_view text);
// 125 gives 02:05, 6000 gives 100:00.
std::string MinutesToTime(std::int64_t minutes);

// ADO types 5 (double) and 6 (currency).
bool IsMoneyField(int ado_type);
// ADO types 20, 6, 5, 3 and 2.
bool IsNumericFieldType(int ado_type);

}  // namespace vorek

#endif  // VOREK_TEXT_CELL_TEXT_H_
