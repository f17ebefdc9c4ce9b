#include "fit/door/fit.h"
#include "fit/sample.h"
