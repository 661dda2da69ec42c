#include "QEncodeCounters.h"

quint64 QEncodeCounters::rle8 = 0;
quint64 QEncodeCounters::lz5 = 0;
quint64 QEncodeCounters::pcx = 0;
quint64 QEncodeCounters::png = 0;
