// Powers of ten as literals. The mathematics library's pow(10, e) misses the
// nearest double for some exponents (23 and 210 with glibc) and differs between
// systems; rounding to significant digits has to give the same number everywhere.
#pragma once

namespace tavlo {

/// The double nearest to 10^exponent, for -300..300; error 9 outside.
double power_of_ten(int exponent);

}  // namespace tavlo
