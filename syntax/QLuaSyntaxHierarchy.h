#pragma once

#include "QNullSyntaxHierarchy.h"

// The outline of a Lua script: scripts have no sections or values, so it is the empty outline of text
// in no language under the Lua name.
class QLuaSyntaxHierarchy : public QNullSyntaxHierarchy
{
    Q_OBJECT
public:
    explicit QLuaSyntaxHierarchy(QObject* parent = nullptr);
};
