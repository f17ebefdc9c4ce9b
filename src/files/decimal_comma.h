// Decimal comma: many countries write 100,5 where a program writes 100.5. A comma may
// also stand between two columns or between thousands, so it is taken for a decimal
// sign only where it can be nothing else.
#pragma once

#include <string>
#include <string_view>

#include "files/point_list.h"
#include "files/read_fault.h"
#include "files/read_options.h"

namespace tavlo {

/// True for digits, one comma and digits, behind a sign or the mark of a suspension:
/// a decimal comma, a value and its count, or thousands.
bool is_digits_comma_digits(std::string_view text);

/// The words for a text that can be read in two ways.
std::string words_of_doubtful_comma(std::string_view text);

/// What the commas inside the numbers of one text mean.
class DecimalComma {
 public:
  /// `free`: a comma doesn't separate the columns, so it may belong to a number.
  DecimalComma(DecimalSign sign, bool free);

  /// True once a full stop in a number would be a second decimal sign.
  bool used() const { return used_; }

  /// True while all the commas may stand between thousands.
  bool in_doubt() const { return used_ && !sure_; }

  /// `number` with a full stop in place of its decimal comma, kept until the next call;
  /// as it is where it has no comma that may be one. `before` are the numbers so far.
  FieldFault replace(std::string_view& number, const PointList& before);

 private:
  bool allowed_;
  bool used_;
  bool sure_;
  std::string pointed_;
};

}  // namespace tavlo
