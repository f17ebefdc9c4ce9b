#include "guidance/wizard_examples.h"

#include <vector>

namespace tavlo {

namespace {

FitParam weibull(double eta, double beta, double fraction, std::int32_t applies, double t0 = 0) {
  return {1 / eta, fraction, beta, t0, applies};
}

const std::vector<WizardExample>& all() {
  namespace code = model_code;
  static const std::vector<WizardExample> examples = {
      {"Gumbel+",
       "Gumbel\nUpper is \nmeasuring a max, like \nflood data.  It will have a \ncurve at the top",
       {code::gumbel_upper, {{1 / 500.0, 1, 80, 0, 1}}},
       code::weibull2},
      {"Gumbel\u2212",
       "Gumbel\nLower looks \nfairly straight, but you are \nmeasuring a minimum \nvalue.  Note "
       "curve "
       "at the \nbottom",
       {code::gumbel_lower, {{1 / 500.0, 1, 80, 0, 1}}},
       code::weibull2},
      {"Normal",
       "Normal data may fit well \non 2Par Weibull, but \nnotice the curve at the \nlower end",
       {code::normal, {{500, 1, 1 / 110.0, 0, 1}}},
       code::weibull2},
      {"LogNormal",
       "logNormal\nmay look like 3 \nParameter, but look at \nthe upper end when  \nplotted as 3 "
       "Parameter",
       {code::lognormal, {{500, 1, 1 / 0.7, 0, 1}}},
       code::weibull3},
      {"2 Par",
       "These appear as a \nstraight line:\n2 Par Weibull:\nExponentiall\nWeibayes",
       {code::weibull2, {weibull(500, 2, 1, 1)}},
       code::weibull2},
      {"3 Par",
       "3 Par Weibull\nAppears as a curve up \nor down",
       {code::weibull3, {weibull(500, 1.4, 1, 1, 100)}},
       code::weibull3},
      {"4 Par",
       "4 Parameter looks like \n2 lines with an \nasymptotic fit",
       {code::weibull4, {weibull(2000, 0.7, 1, 1), weibull(400, 6, 0, 1)}},
       code::weibull4},
      {"5 Par",
       "5 parameter may look \nlike 2 sections.\nOr it may look like a 4 \nparameter with an "
       "\nadded ",
       {code::weibull5c, {weibull(30, 2, 0.25, 1), weibull(600, 4, 0.75, 3)}},
       code::weibull5c},
      {"7 Par",
       "7 parameter is like a 4 \nparameter, with an  \nadded infant mortality\nWear "
       "Out\nChance\nInfant Mortality",
       {code::weibull7,
        {weibull(4, 1.2, 0.2, 1), weibull(900, 0.9, 0.8, 3), weibull(700, 7, 0, 3)}},
       code::weibull7},
  };
  return examples;
}

}  // namespace

std::span<const WizardExample> wizard_examples() { return all(); }

const char* wizard_opening() {
  return "1. Plot your data on a standard rank regression fit\n"
         "2. Click on the 'Flow' Tab and answer flow chart questions.  You can come back to \n"
         "   this tab and continue where you left off.\n"
         "You can roll your mouse over the tabs below and compare your \n"
         "fit to these 'Perfect' examples\n"
         "When done, click on the button to anayze your data.\n"
         "For each question in the frame, click on the button that best describes \n"
         "your data.  You can scroll back to a previous question with the scroll bar or mouse "
         "wheel";
}

std::size_t example_of_step(int number) {
  enum Place : std::size_t { lognormal = 3, two = 4, four = 6, five = 7, seven = 8 };
  struct Part {
    int last;
    Place place;
  };
  // Single models, other distributions, and mixtures with ever more populations.
  constexpr Part parts[] = {{30, two},  {40, lognormal}, {43, two},
                            {48, four}, {52, five},      {58, seven}};
  for (const Part& part : parts)
    if (number <= part.last) return part.place;
  return two;
}

}  // namespace tavlo
