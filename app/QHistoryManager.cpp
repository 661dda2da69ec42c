#include "QHistoryManager.h"

#include "QMugenModel.h"
#include "QUserDialogs.h"
#include "QXmlParser.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSaveFile>
#include <QXmlStreamWriter>

QHistoryManager::QHistoryManager(const QString& path, QObject* parent) : QObject(parent), path(path)
{
    load();
}

void QHistoryManager::load()
{
    QXmlParser xml(path);
    if (!xml.isOpen() || !xml.findRoot(QStringLiteral("history"))) return;
    while (xml.nextElement())
        if (xml.name() == QLatin1String("entry") && !xml.attribute(QStringLiteral("file")).isEmpty())
            m_entries.append({xml.attribute(QStringLiteral("file")), xml.attribute(QStringLiteral("name"))});
}

void QHistoryManager::save() const
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("history"));
    for (const Entry& entry : m_entries) {
        xml.writeEmptyElement(QStringLiteral("entry"));
        xml.writeAttribute(QStringLiteral("name"), entry.name);
        xml.writeAttribute(QStringLiteral("file"), entry.file);
    }
    xml.writeEndDocument();
    file.commit();
}

void QHistoryManager::add(const QString& file, const QString& name)
{
    const QString absolute = QFileInfo(file).absoluteFilePath();
    for (qsizetype i = m_entries.size() - 1; i >= 0; --i)
        if (m_entries.at(i).file == absolute) m_entries.removeAt(i);
    m_entries.prepend({absolute, name});
    const int cap = int(numberSetting("max_history", 30));
    while (m_entries.size() > qMax(1, cap))
        m_entries.removeLast();
    save();
    rebuildMenu();
}

void QHistoryManager::setMenu(QMenu* shown)
{
    menu = shown;
    rebuildMenu();
}

void QHistoryManager::retranslate()
{
    rebuildMenu();
}

void QHistoryManager::rebuildMenu()
{
    if (!menu) return;
    menu->clear();
    menu->setTitle(tr("Open recent"));
    for (const Entry& entry : std::as_const(m_entries)) {
        QAction* action =
            menu->addAction(QStringLiteral("%1 (%2)").arg(
                                entry.name.isEmpty() ? QFileInfo(entry.file).fileName() : entry.name,
                                QDir::toNativeSeparators(entry.file)),
                            this, &QHistoryManager::actionTriggered);
        action->setData(entry.file);
    }
    menu->addSeparator();
    menu->addAction(tr("Open all"), this, &QHistoryManager::allTriggered)->setEnabled(!m_entries.isEmpty());
    menu->addAction(tr("Clear history"), this, &QHistoryManager::clearTriggered)
        ->setEnabled(!m_entries.isEmpty());
}

bool QHistoryManager::forgetMissing(const QString& file)
{
    if (QFileInfo::exists(file)) return false;
    const auto answer =
        QUserDialogs::question(tr("File not found!"),
                               tr("The file '%1' doesn't exists. Do you want to remove it from the history?")
                                   .arg(QDir::toNativeSeparators(file)),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::Yes);
    if (answer == QUserDialogs::Yes) {
        m_entries.removeIf([&file](const Entry& entry) { return entry.file == file; });
        save();
        rebuildMenu();
    }
    return true;
}

void QHistoryManager::actionTriggered()
{
    const auto* action = qobject_cast<const QAction*>(sender());
    if (!action) return;
    const QString file = action->data().toString();
    if (!forgetMissing(file)) emit entryTriggered(file);
}

void QHistoryManager::allTriggered()
{
    // Oldest first, so that the newest ends up the current project.
    const QList<Entry> all = m_entries;
    for (qsizetype i = all.size() - 1; i >= 0; --i)
        if (!forgetMissing(all.at(i).file)) emit entryTriggered(all.at(i).file);
}

void QHistoryManager::clearTriggered()
{
    m_entries.clear();
    save();
    rebuildMenu();
}
