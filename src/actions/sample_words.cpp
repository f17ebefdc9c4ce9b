#include "actions/sample_words.h"

namespace tavlo {

namespace {

std::string scale_words(const Model& model) {
  switch (model.family) {
    case Family::normal: return "sigma must be above 0";
    case Family::lognormal: return "the median must be above 0";
    case Family::gumbel: return "Del must be above 0, and Xi may not be 0";
    default: return "eta must be above 0";
  }
}

}  // namespace

std::string words_of(PlanFault fault, const Model& model) {
  switch (fault) {
    case PlanFault::model:
      return std::string("samples are not drawn from ") + model.plain_name +
             ", or not with so many populations";
    case PlanFault::number: return "a parameter is missing, 0 or beyond all numbers";
    case PlanFault::scale: return scale_words(model);
    case PlanFault::slope:
      return model.family == Family::lognormal ? "the sigma factor must be above 1"
                                               : "beta must be above 0";
    case PlanFault::shares:
      return "the percents of the populations must be 0 or more and add up to 100";
    case PlanFault::size: break;
  }
  return "the sample must have at least 1 point";
}

}  // namespace tavlo
