#pragma once

#include "QMugenParamInfo.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QRegularExpression>
#include <QString>

// A lookup over one group of parameters or the triggers that gives the same answer as walking the map
// in key order and taking the first record whose name matches, without walking it: plain and idexp keys
// are hashed by their lower case text, and only the keys matched by a pattern are tried one by one. The
// index of a map is built on first use and kept until the map is changed or replaced.
class QMugenParamIndex
{
public:
    // The index of a map; the map must outlive its use.
    static const QMugenParamIndex& of(const QMap<QString, QMugenParamInfo>& map);

    // The first record in key order whose name matches: a plain key equal to the name, an idexp key equal
    // to the name when a bracket follows it, or a name pattern matching the whole name, in any case.
    // The name is given in lower case.
    const QMugenParamInfo* find(const QString& lowerName, bool bracketFollows) const;

    // Whether any record matches the name, bracket or not.
    bool contains(const QString& lowerName) const { return find(lowerName, true) || find(lowerName, false); }

private:
    struct Entry
    {
        int position = 0;
        const QMugenParamInfo* info = nullptr;
    };

    explicit QMugenParamIndex(const QMap<QString, QMugenParamInfo>& map);

    QMap<QString, QMugenParamInfo> m_map;
    QHash<QString, QList<Entry>> m_byName;
    QList<Entry> m_patterned;
    QList<QRegularExpression> m_patterns;
};
