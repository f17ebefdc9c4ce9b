#include "fit/ranking.h"
