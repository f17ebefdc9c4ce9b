// Weibull ordinate: the height of a fraction failed on Weibull paper.
#pragma once

namespace tavlo {

/// ln(-ln(1 - F)) for F above 1e-8, else ln F. Error 5 at or below 0, and at 1.
double fd_WblY(double F);

}  // namespace tavlo
