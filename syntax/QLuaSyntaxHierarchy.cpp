#include "QLuaSyntaxHierarchy.h"

QLuaSyntaxHierarchy::QLuaSyntaxHierarchy(QObject* parent) : QNullSyntaxHierarchy(parent) {}
