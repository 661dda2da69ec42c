#include "sprimport.h"

#include "QGroupRangeBox.h"
#include "QSprites.h"

#include <QRadioButton>

namespace {
QStringList entriesOf(const QList<sprimport::Source>& sources)
{
    QStringList entries;
    for (const sprimport::Source& entry : sources)
        entries << sprimport::tr("%1 (%n sprite(s))", nullptr, entry.second ? int(entry.second->count()) : 0)
                       .arg(entry.first);
    return entries;
}
} // namespace

sprimport::sprimport(const QList<Source>& sources, QWidget* parent)
    : QProjectImportDlg(entriesOf(sources), tr("All sprites"), tr("The sprites of a group"), parent),
      sources(sources)
{
    setObjectName(QStringLiteral("sprimport"));
}

QSprites* sprimport::source() const
{
    const int row = chosen();
    return row >= 0 && row < sources.size() ? sources.at(row).second : nullptr;
}

QList<uint> sprimport::rows() const
{
    const QSprites* picked = source();
    if (!picked) return {};
    return picked->rangeRows(wholeFile(), range()->group(), range()->allNumbers(), range()->from(),
                             range()->to());
}
