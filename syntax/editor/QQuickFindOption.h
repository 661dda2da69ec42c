#pragma once

#include <QMap>

// The switches of a search in a text; a switch missing from the map is off.
enum class QQuickFindOption : int
{
    RegularExpression = 0,
    CaseSensitive = 1,
    Backward = 2,
    // A search that reaches the end (or the start, backward) goes on from the other end once.
    Circular = 3
};

using QQuickFindOptions = QMap<QQuickFindOption, bool>;

// The options as a row of check buttons shows them (the search bar's switches, the find dialog's
// boxes).
template <typename Button>
QQuickFindOptions checkedOptions(const QMap<QQuickFindOption, Button*>& buttons)
{
    QQuickFindOptions result;
    for (auto it = buttons.cbegin(); it != buttons.cend(); ++it)
        result.insert(it.key(), it.value()->isChecked());
    return result;
}
