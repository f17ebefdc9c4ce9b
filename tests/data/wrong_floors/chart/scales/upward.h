#include "chart/compose/picture.h"
#include "chart/record/drawing_record.h"
