#include "fit/sample.h"
