#include "numerics/date_text.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(DateTextTest, patterns_are_filled_with_english_names) {
  const DateTime afternoon{2026, 3, 7, 14, 5, 9, 6};
  const DateTime midnight{2026, 11, 30, 0, 45, 0, 1};
  using Row = std::tuple<DateTime, const char*, const char*>;
  for (const auto& [moment, pattern, text] :
       {Row{afternoon, "dd mmm yyyy", "07 Mar 2026"},
        Row{afternoon, "    hh:mm am/pm", "    02:05 pm"},
        Row{afternoon, "yyyy-mm-dd hh:nn:ss", "2026-03-07 14:05:09"},
        Row{midnight, "dddd hh:MM AM/PM", "Monday 12:45 AM"},
        Row{afternoon, "ddd mmm d, yyyy", "Sat Mar 7, 2026"},
        Row{midnight, "mmmm d, yy h:m:s", "November 30, 26 0:45:0"},
        Row{DateTime{2026, 13, 1, 12, 0, 0, 9}, "[ddd mmm] hh am/pm", "[ ] 12 pm"},
        Row{afternoon, "", ""}})
    EXPECT_EQ(format_date(moment, pattern), text);
}

}  // namespace
}  // namespace tavlo
