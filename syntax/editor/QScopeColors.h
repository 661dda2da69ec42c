#pragma once

#include <QColor>

// The background of nested block scopes: colour 0 (the outermost scope) stands out most from the base,
// colour count - 1 least, colour count is the base itself, and the ones between are blended. On a dark
// base the scopes are lighter, on a light one darker, so that the grading reads in either colour set.
class QScopeColors
{
public:
    static QColor color(const QColor& base, int level, int count);
};
