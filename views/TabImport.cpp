#include "TabImport.h"

#include "QGroupRangeBox.h"
#include "QSound.h"
#include "QSounds.h"

namespace {
QStringList entriesOf(const QList<TabImport::Source>& sources)
{
    QStringList entries;
    for (const TabImport::Source& entry : sources)
        entries << TabImport::tr("%1 (%n sound(s))", nullptr, entry.second ? int(entry.second->count()) : 0)
                       .arg(entry.first);
    return entries;
}
} // namespace

TabImport::TabImport(const QList<Source>& sources, QWidget* parent)
    : QProjectImportDlg(entriesOf(sources), tr("All sounds"), tr("The sounds of a group"), parent),
      sources(sources)
{
    setObjectName(QStringLiteral("TabImport"));
}

QSounds* TabImport::source() const
{
    const int row = chosen();
    return row >= 0 && row < sources.size() ? sources.at(row).second : nullptr;
}

QList<uint> TabImport::rows() const
{
    const QSounds* picked = source();
    if (!picked) return {};
    QList<uint> result;
    const uint wanted = uint(range()->group());
    const uint from = uint(qMax(0, range()->from()));
    const uint to = uint(qMax(0, range()->to()));
    for (uint i = 0; i < picked->count(); ++i) {
        const QSound* sound = picked->at(i);
        if (wholeFile() || (sound->group == wanted &&
                            (range()->allNumbers() || (sound->sample >= from && sound->sample <= to))))
            result << i;
    }
    return result;
}
