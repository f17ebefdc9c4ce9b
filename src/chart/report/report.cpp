#include "chart/report/report.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavlo {

namespace {

PaperSize paper_of_locale(const std::string& locale) {
  // The countries of Letter paper in the Unicode locale data.
  constexpr std::array<std::string_view, 14> letter = {"BZ", "CA", "CL", "CO", "CR", "GT", "MX",
                                                       "NI", "PA", "PH", "PR", "SV", "US", "VE"};
  const std::size_t mark = locale.find('_');
  if (mark == std::string::npos) return PaperSize::a4;
  const std::string country = locale.substr(mark + 1, 2);
  const bool is_letter = std::find(letter.begin(), letter.end(), country) != letter.end();
  return is_letter ? PaperSize::letter : PaperSize::a4;
}

}  // namespace

PaperSize usual_paper(Host& host) {
  for (const char* const name : {"LC_ALL", "LC_PAPER", "LANG"})
    if (const std::string locale = host.environment(name); !locale.empty())
      return paper_of_locale(locale);
  return PaperSize::a4;
}

}  // namespace tavlo
