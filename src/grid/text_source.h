#ifndef VOREK_GRID_TEXT_SOURCE_H_
#define VOREK_GRID_TEXT_SOURCE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vorek/result_set.h"

namespace vorek {

// Gives the texts of a column's cells by record, so that the grid needs no copy of a result. Its
// texts never change.
class TextSource {
 public:
  virtual ~TextSource() = default;
  virtual std::size_t Size() const = 0;
  // REQUIRES: record < Size(). The view lives until the next call with the same scratch.
  virtual std::string_view View(std::size_t record, std::string& scratch) const = 0;
  // Appends the text of View.
  virtual void Append(std::size_t record, std::string& out) const {
    std::string scratch;
    out += View(record, scratch);
  }
  // The text, or another one that UnformatNumber reads as it reads that, if it costs less.
  virtual std::string_view Plain(std::size_t record, std::string& scratch) const {
    return View(record, scratch);
  }
  // The value as UnformatNumber and the numeric prefix read it off the text.
  virtual double Number(std::size_t record) const = 0;
  // The value as CellFixedPoint reads it off the text. Throws Error(kOverflow).
  virtual std::int64_t Fixed(std::size_t record) const;
  // True if the texts of two records are equal.
  virtual bool SameText(std::size_t a, std::size_t b) const;
  // For each of the records whether its text is another one than that of the record before it in
  // the list; true for the first.
  virtual std::vector<bool> Changes(const std::vector<std::uint32_t>& records) const;
  // True if each text is a number or empty.
  virtual bool GivesNumbers() const { return false; }
  // True if Fixed loses no decimal place.
  virtual bool GivesFixed() const { return false; }
};

// How a field's value becomes a cell text.
enum class CellForm {
  kPlain,   // as the provider gave it
  kNumber,  // the numeric prefix as plain number text; "0" for an empty one. What the provider gave
            // exactly stays exact: only doubles are held to 15 digits
  kMoney,   // FormatMoney
  kNumberMoney,  // FormatMoney of what kNumber gives
  kTime,         // the rounded numeric prefix through MinutesToTime
};

// A field of a result; `records` picks and orders its rows, null stands for all.
class FieldSource : public TextSource {
 public:
  using Records = std::shared_ptr<const std::vector<std::uint32_t>>;
  FieldSource(ResultSetPtr result, std::size_t field, Records records, CellForm form);

  std::size_t Size() const override;
  std::string_view View(std::size_t record, std::string& scratch) const override;
  void Append(std::size_t record, std::string& out) const override {
    AppendFormed(Row(record), out);
  }
  std::string_view Plain(std::size_t record, std::string& scratch) const override;
  double Number(std::size_t record) const override;
  std::int64_t Fixed(std::size_t record) const override;
  bool SameText(std::size_t a, std::size_t b) const override;
  std::vector<bool> Changes(const std::vector<std::uint32_t>& records) const override;

  bool GivesNumbers() const override;
  bool GivesFixed() const override;

  // The same field in another form.
  std::shared_ptr<const TextSource> With(CellForm form) const;
  CellForm Form() const { return form_; }

 private:
  template <typename Value>
  bool SameNumber(Value a, Value b, Value one) const;
  bool SameDouble(double a, double b) const;
  void AppendFormed(std::size_t row, std::string& out) const;
  bool IsMoneyForm() const { return form_ == CellForm::kMoney || form_ == CellForm::kNumberMoney; }
  // Numbers whose money forms are made without their texts.
  bool GivesScaled() const {
    return Column().Kind() == ResultColumn::Storage::kScaled && GivesNumbers();
  }
  const ResultColumn& Column() const { return result_->columns[field_]; }
  std::size_t Row(std::size_t record) const {
    return records_ == nullptr ? record : (*records_)[record];
  }

  ResultSetPtr result_;
  std::size_t field_;
  Records records_;
  CellForm form_;
};

// The numbers from 1 on.
class CountSource : public TextSource {
 public:
  explicit CountSource(std::size_t size) : size_(size) {}
  std::size_t Size() const override { return size_; }
  std::string_view View(std::size_t record, std::string& scratch) const override;
  double Number(std::size_t record) const override { return static_cast<double>(record) + 1; }
  bool SameText(std::size_t a, std::size_t b) const override { return a == b; }

 private:
  std::size_t size_;
};

// Numbers that were given to records in another order than their own.
class NumberSource : public TextSource {
 public:
  explicit NumberSource(std::vector<std::uint32_t> numbers) : numbers_(std::move(numbers)) {}
  std::size_t Size() const override { return numbers_.size(); }
  std::string_view View(std::size_t record, std::string& scratch) const override;
  double Number(std::size_t record) const override { return numbers_[record]; }

 private:
  std::vector<std::uint32_t> numbers_;
};

// A plain text in a form, as FieldSource shows it.
std::string FormText(std::string_view text, CellForm form);

}  // namespace vorek

#endif  // VOREK_GRID_TEXT_SOURCE_H_
