#include "QParamTextEditor.h"

#include "QParamGroup.h"
#include "QSingletonParamGroup.h"
#include "QTextElementType.h"
#include "QUserDialogs.h"

#include <QFileInfo>
#include <QTextBlock>

QParamTextEditor::QParamTextEditor(QProjectFileType fileType, QObject* parent)
    : QElementTextEditor(true, parent), QProjectFile(fileType)
{
    setTypeEnabled(true, etUnknownGroup);
    fileFormat.codec = 0;
}

QParamTextEditor::~QParamTextEditor() = default;

bool QParamTextEditor::fromFile(const QString& filePath, uint codepage, bool copy)
{
    QByteArray bytes;
    if (!QTextFileFormat::readFile(filePath, &bytes)) return false;
    QTextFileFormat format;
    const QString content = format.decode(bytes, int(codepage));
    fileFormat = format;
    setPlainText(content);
    document->setModified(false);
    if (!copy) path = QFileInfo(filePath).absoluteFilePath();
    return true;
}

bool QParamTextEditor::toFile(const QString& filePath, bool copy)
{
    if (!QTextFileFormat::writeFile(filePath, fileFormat.encode(document))) return false;
    if (!copy) {
        path = QFileInfo(filePath).absoluteFilePath();
        document->setModified(false);
    }
    return true;
}

bool QParamTextEditor::save()
{
    return !path.isEmpty() && toFile(path, false);
}

void QParamTextEditor::clear()
{
    setPlainText(QString());
    document->setModified(false);
    path.clear();
    fileFormat = QTextFileFormat();
}

QString QParamTextEditor::text() const
{
    QString content;
    for (QTextBlock block = document->firstBlock(); block.isValid(); block = block.next()) {
        if (block != document->firstBlock()) content += QLatin1Char('\n');
        content += block.text();
    }
    return content;
}

bool QParamTextEditor::canDiscard()
{
    if (!document->isModified() || path.isEmpty()) return true;
    return QUserDialogs::question(nullptr, tr("Discard changes"), discardQuestion(),
                                  QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

bool QParamTextEditor::isModified()
{
    return document->isModified();
}

bool QParamTextEditor::isEmpty()
{
    return document->isEmpty();
}

void QParamTextEditor::check()
{
    // The issues of the text come from its syntax check; the models add none of their own.
    messages()->begin();
    messages()->end();
}

void QParamTextEditor::updateGroups(const QList<QTextElementChange>& changes)
{
    const int singletonFlags = etSingletonGroup | etSection | etParamSection;
    for (const QTextElementChange& change : changes) {
        if (change.type != ElementRemoved || change.element->type() != etSingletonGroup) continue;
        auto* group = static_cast<QSingletonParamGroup*>(change.element);
        const auto entry = groups.find(group->section);
        if (entry == groups.end() || entry.value() != group) continue;
        auto* following =
            static_cast<QSingletonParamGroup*>(group->nextExact(singletonFlags, group->section));
        if (following)
            entry.value() = following;
        else
            groups.erase(entry);
    }
    for (const QTextElementChange& change : changes) {
        if (change.type != ElementAdded || change.element->type() != etSingletonGroup) continue;
        auto* group = static_cast<QSingletonParamGroup*>(change.element);
        if (!group->valid || group->previousExact(singletonFlags, group->section)) continue;
        groups[group->section] = group;
    }
}

void QParamTextEditor::bindChanges(const QList<QTextElementChange>& changes)
{
    updateGroups(changes);
    QParamGroup::bindParams(changes);
}

void QParamTextEditor::emitUpdate(QList<QTextElementChange>& changes)
{
    bindChanges(changes);
    QElementTextEditor::emitUpdate(changes);
}
