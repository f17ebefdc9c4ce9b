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

std::string missing_words(const Model& model) {
  switch (model.family) {
    case Family::normal: return "mu or sigma is missing";
    case Family::lognormal: return "the median or the sigma factor is missing";
    case Family::gumbel: return "Xi or Del is missing";
    default:
      return states_share(model, 1) ? "u, eta or beta of a population is missing"
                                    : "eta or beta is missing";
  }
}

}  // namespace

std::string words_of(LifeFault fault, const Model& model) {
  switch (fault) {
    case LifeFault::model:
      return std::string("samples are not drawn from ") + model.plain_name +
             ", or not with so many populations";
    case LifeFault::missing: return missing_words(model);
    case LifeFault::number: break;
    case LifeFault::scale: return scale_words(model);
    case LifeFault::slope:
      return model.family == Family::lognormal ? "the sigma factor must be above 1"
                                               : "beta must be above 0";
    case LifeFault::shares:
      return "the percents of the populations must be 0 or more and add up to 100";
  }
  return "a parameter is beyond all numbers";
}

}  // namespace tavlo
