#pragma once

#include <QString>

// File names as people count them: a run of digits compares by its value, so "hit2" comes before
// "hit10"; the rest compares without regard to case. Qt's collator does this only where it is built
// with ICU, so the order is the program's own.
namespace QNaturalOrder {
bool less(const QString& a, const QString& b);
} // namespace QNaturalOrder
