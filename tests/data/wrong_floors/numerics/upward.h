#include "actions/ranking.h"
