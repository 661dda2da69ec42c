#include "QMugenParamIndex.h"

#include <memory>
#include <unordered_map>

namespace {

// Indexes by the address of their map. A map cleared and filled again at the same address no longer
// shares its data with the copy the index keeps, which tells that the index is stale.
std::unordered_map<const void*, std::unique_ptr<QMugenParamIndex>>& indexes()
{
    static std::unordered_map<const void*, std::unique_ptr<QMugenParamIndex>> all;
    return all;
}

} // namespace

const QMugenParamIndex& QMugenParamIndex::of(const QMap<QString, QMugenParamInfo>& map)
{
    auto& all = indexes();
    auto it = all.find(&map);
    if (it != all.end() && it->second->m_map.isSharedWith(map)) return *it->second;
    std::unique_ptr<QMugenParamIndex> index(new QMugenParamIndex(map));
    const QMugenParamIndex& result = *index;
    all[&map] = std::move(index);
    return result;
}

QMugenParamIndex::QMugenParamIndex(const QMap<QString, QMugenParamInfo>& map) : m_map(map)
{
    int position = 0;
    for (auto it = m_map.cbegin(); it != m_map.cend(); ++it, ++position) {
        const Entry entry{position, &it.value()};
        if (it->format == MugenFormatRegExp) {
            m_patterned.append(entry);
            m_patterns.append(QRegularExpression(QRegularExpression::anchoredPattern(it->pattern),
                                                 QRegularExpression::CaseInsensitiveOption));
        } else {
            m_byName[it.key().toLower()].append(entry);
        }
    }
}

const QMugenParamInfo* QMugenParamIndex::find(const QString& lowerName, bool bracketFollows) const
{
    const Entry* best = nullptr;
    const auto named = m_byName.constFind(lowerName);
    if (named != m_byName.cend()) {
        for (const Entry& entry : *named) {
            if (entry.info->format == MugenFormatIdExp && !bracketFollows) continue;
            best = &entry;
            break;
        }
    }
    for (int i = 0; i < m_patterned.size(); ++i) {
        const Entry& entry = m_patterned.at(i);
        if (best && best->position < entry.position) break;
        if (m_patterns.at(i).match(lowerName).hasMatch()) {
            best = &entry;
            break;
        }
    }
    return best ? best->info : nullptr;
}
