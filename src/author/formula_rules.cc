#include "author/formula_rules.h"

#include <algorithm>
#include <utility>

#include "author/check_context.h"
#include "author/formula_tokens.h"
#include "eval/built_in.h"
#include "eval/function_file.h"
#include "grid/expression_formula.h"
#include "text/number.h"
#include "text/utf8.h"

namespace vorek {
namespace {

using Kind = FormulaToken::Kind;

class FormulaText {
 public:
  FormulaText(const std::string& formula, const FormulaScope& scope)
      : formula_(formula), scope_(scope), tokens_(ScanFormula(formula)) {}

  std::vector<FormulaFault> Check() {
    CheckBrackets();
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
      CheckWord(i);
      CheckNeighbours(i);
      if (tokens_[i].text == "^") CheckPower(i);
    }
    CheckLineBreak();
    return std::move(faults_);
  }

 private:
  void Tell(Rule rule, std::size_t token, std::vector<std::string> values = {}) {
    faults_.push_back({rule, tokens_[token].begin, std::move(values)});
  }
  bool Is(std::size_t token, Kind kind) const {
    return token < tokens_.size() && tokens_[token].kind == kind;
  }
  // A token that a value ends with, or begins with.
  bool Ends(std::size_t token) const;
  bool Begins(std::size_t token) const;

  void CheckBrackets();
  void CheckWord(std::size_t token);
  void CheckName(std::size_t token);
  void CheckFunction(std::size_t token);
  void CheckReference(std::size_t token);
  void CheckNeighbours(std::size_t token);
  void CheckOperator(std::size_t token);
  void CheckPower(std::size_t token);
  std::size_t OperandBegin(std::size_t power) const;
  bool HasFraction(std::size_t power) const;
  bool IsOdd(std::size_t power) const;
  void CheckLineBreak();

  const std::string& formula_;
  const FormulaScope& scope_;
  std::vector<FormulaToken> tokens_;
  std::vector<FormulaFault> faults_;
};

bool FormulaText::Ends(std::size_t token) const {
  return Is(token, Kind::kNumber) || Is(token, Kind::kExponent) || Is(token, Kind::kReference) ||
         Is(token, Kind::kClose) || Is(token, Kind::kName);
}

bool FormulaText::Begins(std::size_t token) const {
  return Is(token, Kind::kNumber) || Is(token, Kind::kExponent) || Is(token, Kind::kReference) ||
         Is(token, Kind::kOpen) || Is(token, Kind::kName) || Is(token, Kind::kFunction);
}

void FormulaText::CheckBrackets() {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    if (Is(i, Kind::kOpen)) open.push_back(i);
    if (!Is(i, Kind::kClose)) continue;
    if (open.empty()) {
      Tell(Rule::kFormulaStray, i);
    } else {
      open.pop_back();
    }
  }
  for (const std::size_t bracket : open) Tell(Rule::kFormulaOpen, bracket);
}

void FormulaText::CheckWord(std::size_t token) {
  switch (tokens_[token].kind) {
    case Kind::kName:
      return CheckName(token);
    case Kind::kFunction:
      return CheckFunction(token);
    case Kind::kReference:
      return CheckReference(token);
    case Kind::kExponent:
      return Tell(Rule::kFormulaExponent, token, {tokens_[token].text});
    case Kind::kComma:
      return Tell(Rule::kFormulaComma, token);
    case Kind::kOther:
      return Tell(Rule::kFormulaCharacter, token, {tokens_[token].text});
    default:
      return;
  }
}

void FormulaText::CheckName(std::size_t token) {
  const std::string& name = tokens_[token].text;
  const std::string capitals = text::ToUpper(name);
  const std::vector<FormulaToken> read = ScanFormula(capitals);
  const bool reference = std::all_of(read.begin(), read.end(), [](const FormulaToken& piece) {
    return piece.kind == Kind::kReference;
  });
  Tell(reference ? Rule::kFormulaLowerCase : Rule::kFormulaName, token, {name, capitals});
}

void FormulaText::CheckFunction(std::size_t token) {
  const std::string name = text::ToUpper(tokens_[token].text);
  if (!Is(token + 1, Kind::kOpen)) return Tell(Rule::kFormulaCall, token, {name});
  const bool known =
      FindBuiltIn(name) || (scope_.is_user_function && scope_.is_user_function(name));
  if (!known) Tell(Rule::kFormulaFunction, token, {name});
}

// Column numbers are taken as far as there are such columns; what is behind them stays.
void FormulaText::CheckReference(std::size_t token) {
  const std::string& name = tokens_[token].text;
  if (!scope_.last_column) return;
  const std::string digits = name.substr(1);
  const std::string last = std::to_string(*scope_.last_column);
  std::int32_t column = 0;
  const std::size_t taken = ColumnDigits(digits, *scope_.last_column + 1, column);
  if (taken == 0) return Tell(Rule::kFormulaNoColumn, token, {name, last});
  if (taken < digits.size()) {
    return Tell(Rule::kFormulaReadsOther, token,
                {name, last, name.substr(0, 1 + taken), digits.substr(taken)});
  }
  const bool later = name[0] == 'C' && scope_.own_column > 0 && column >= scope_.own_column;
  if (later) Tell(Rule::kFormulaLater, token, {name, "P" + digits});
}

void FormulaText::CheckNeighbours(std::size_t token) {
  if (Is(token, Kind::kOperator)) return CheckOperator(token);
  const bool call = token > 0 && Is(token - 1, Kind::kFunction) && Is(token, Kind::kOpen);
  if (token == 0 || call || !Begins(token) || !Ends(token - 1)) return;
  Tell(Rule::kFormulaAdjacent, token, {tokens_[token - 1].text, tokens_[token].text});
}

// A "-" may be a sign, and a "+" in front of all says nothing.
void FormulaText::CheckOperator(std::size_t token) {
  const std::string& sign = tokens_[token].text;
  const bool value_behind =
      Begins(token + 1) || (token + 1 < tokens_.size() && tokens_[token + 1].text == "-");
  const bool behind_operator = token > 0 && Is(token - 1, Kind::kOperator);
  const bool value_before = token > 0 && Ends(token - 1);
  const bool fits = value_before || sign == "-" || (sign == "+" && !behind_operator);
  // A character that says nothing is told as such.
  const bool strange =
      (token > 0 && (Is(token - 1, Kind::kOther) || Is(token - 1, Kind::kComma))) ||
      Is(token + 1, Kind::kOther) || Is(token + 1, Kind::kComma);
  const bool told_behind = Is(token + 1, Kind::kOperator) && tokens_[token + 1].text != "-";
  if (strange || (fits && (value_behind || told_behind))) return;
  Tell(Rule::kFormulaOperator, token, {sign});
}

// The token that the operand in front of a "^" begins with.
std::size_t FormulaText::OperandBegin(std::size_t power) const {
  if (power == 0 || !Is(power - 1, Kind::kClose)) return power == 0 ? 0 : power - 1;
  int depth = 0;
  for (std::size_t i = power; i-- > 0;) {
    if (Is(i, Kind::kClose)) ++depth;
    if (!Is(i, Kind::kOpen) || --depth > 0) continue;
    return i > 0 && Is(i - 1, Kind::kFunction) ? i - 1 : i;
  }
  return 0;
}

// The number, or all of the bracket, behind a "^".
bool FormulaText::HasFraction(std::size_t power) const {
  int depth = 0;
  for (std::size_t i = power + 1; i < tokens_.size(); ++i) {
    if (Is(i, Kind::kOpen)) ++depth;
    if (Is(i, Kind::kClose)) --depth;
    const std::string& text = tokens_[i].text;
    const std::size_t point = Is(i, Kind::kNumber) ? text.find('.') : std::string::npos;
    const bool decimals =
        point != std::string::npos && text.find_first_of("123456789", point) != std::string::npos;
    if (decimals || text == "/") return true;
    if (depth <= 0 && text != "-") return false;
  }
  return false;
}

bool FormulaText::IsOdd(std::size_t power) const {
  if (!Is(power + 1, Kind::kNumber)) return false;
  const double number = text::NumericPrefix(tokens_[power + 1].text);
  return static_cast<std::int64_t>(number) % 2 == 1;
}

// The minus goes to what is raised. Where it subtracts, that matters for a negative one alone.
void FormulaText::CheckPower(std::size_t token) {
  const std::size_t operand = OperandBegin(token);
  if (operand == 0 || operand == token || tokens_[operand - 1].text != "-") return;
  if (HasFraction(token)) return Tell(Rule::kFormulaLostPower, token);
  const bool subtracts = operand > 1 && Ends(operand - 2);
  const bool matters = !subtracts || Is(operand, Kind::kReference);
  if (matters && !IsOdd(token)) Tell(Rule::kFormulaMinusPower, operand - 1);
}

void FormulaText::CheckLineBreak() {
  const std::size_t at = formula_.find_first_of("\r\n");
  if (at != std::string::npos) faults_.push_back({Rule::kFormulaLineBreak, at});
}

// --- The formulas of a report ------------------------------------------------------------------

// Faults that change what comes out, where those of a sign at the end don't.
int CountOfBroken(const std::string& formula, const FormulaScope& scope) {
  const std::vector<FormulaFault> faults = FindFormulaFaults(formula, scope);
  const std::size_t end = formula.find_last_not_of(") \t\r\n");
  return static_cast<int>(std::count_if(faults.begin(), faults.end(), [&](const auto& fault) {
    const bool loose = fault.rule == Rule::kFormulaOperator &&
                       (formula[fault.at] == '+' || formula[fault.at] == '-');
    const bool last = fault.rule == Rule::kFormulaStray && fault.at > end;
    return (fault.rule == Rule::kFormulaOperator && !loose) ||
           (fault.rule == Rule::kFormulaStray && !last) || fault.rule == Rule::kFormulaOpen ||
           fault.rule == Rule::kFormulaCall || fault.rule == Rule::kFormulaAdjacent;
  }));
}

class FormulaRules {
 public:
  explicit FormulaRules(CheckContext& check) : check_(check) {
    ReadUserFunctions();
    scope_.last_column = check.LastColumn();
    scope_.is_user_function = [this](const std::string& name) {
      return functions_.Position(name) > 0;
    };
  }

  void Run() {
    const std::vector<ExpressionRow>& rows = check_.report.expressions;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      scope_.own_column =
          check_.fields ? static_cast<std::int32_t>(check_.fields->size() + i) + 1 : 0;
      CheckText(rows[i], "GeneralExpression", rows[i].general);
      if (rows[i].first_row) {
        CheckText(rows[i], "FirstRowExpression", *rows[i].first_row);
      } else {
        CheckFirstRow(rows[i]);
      }
    }
  }

 private:
  void ReadUserFunctions() {
    const Services& services = check_.process.services;
    if (services.files == nullptr || services.function_file.empty()) return;
    IgnoreErrors([&] { ReadFunctions(services.files->Read(services.function_file), functions_); });
  }

  static Place At(const ExpressionRow& row, const char* field) {
    const std::string name = row.name.empty() ? "" : " (" + row.name + ")";
    return {.table = CatalogueTable::kExpression,
            .row = std::to_string(row.number) + name,
            .field = field};
  }

  void CheckText(const ExpressionRow& row, const char* field, const std::string& formula) {
    Place place = At(row, field);
    if (formula.find_first_not_of(" \t\r\n") == std::string::npos) {
      return check_.Tell(Rule::kFormulaEmpty, place);
    }
    for (const FormulaFault& fault : FindFormulaFaults(formula, scope_)) {
      SetPlace(place, formula, fault.at);
      check_.Tell(fault.rule, place, fault.values);
    }
  }

  // What the first row makes of the general formula, where a reference to the row above vanishes.
  void CheckFirstRow(const ExpressionRow& row) {
    if (!scope_.last_column) return;
    const std::string text = FirstRowText(row.general, *scope_.last_column + 1);
    if (text == row.general || CountOfBroken(text, scope_) <= CountOfBroken(row.general, scope_)) {
      return;
    }
    const std::vector<FormulaToken> tokens = ScanFormula(row.general);
    const auto above = std::find_if(tokens.begin(), tokens.end(), [](const FormulaToken& token) {
      return token.kind == Kind::kReference && token.text[0] == 'P';
    });
    Place place = At(row, "GeneralExpression");
    if (above == tokens.end()) return;
    SetPlace(place, row.general, above->begin);
    check_.Tell(Rule::kFormulaFirstRow, place, {above->text, text});
  }

  CheckContext& check_;
  FormulaScope scope_;
  KeyedList<FunctionClass> functions_;
};

}  // namespace

std::vector<FormulaFault> FindFormulaFaults(const std::string& formula, const FormulaScope& scope) {
  return FormulaText(formula, scope).Check();
}

void CheckFormulas(CheckContext& check) {
  if (!check.report.expressions.empty()) FormulaRules(check).Run();
}

}  // namespace vorek
