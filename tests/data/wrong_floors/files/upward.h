#include "actions/open.h"
