#include "QTextFileCommands.h"

#include "QMugenModel.h"
#include "QProject.h"
#include "QSyntaxTextEditor.h"
#include "QUserDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("QTextFileCommands", text);
}

} // namespace

bool QTextFileCommands::clear(QSyntaxTextEditor* text)
{
    if (!text || !text->canDiscard()) return false;
    text->clear();
    return true;
}

QString QTextFileCommands::askOpenName(QProjectFileType kind)
{
    static const char* const titles[] = {QT_TRANSLATE_NOOP("QTextFileCommands", "Open definitions"), "", "",
                                         QT_TRANSLATE_NOOP("QTextFileCommands", "Open commands"),
                                         QT_TRANSLATE_NOOP("QTextFileCommands", "Open states")};
    static const char* const filters[] = {
        "Definitions (*.def)", "", "", "Commands (*.cmd)",
        "Constants (*.cns);;States (*.st);;Text (*.txt);;Lua script (*.lua);;All files (*)"};
    const int slot = int(kind);
    if (slot < 0 || slot > 4 || !*filters[slot]) return QString();
    QString folder = mugenModel ? (*mugenModel)[QStringLiteral("proj_path")].toString() : QString();
    const QString path =
        QUserDialogs::getOpenFileName(tr(titles[slot]), folder, QLatin1String(filters[slot]));
    if (!path.isEmpty() && mugenModel)
        (*mugenModel)[QStringLiteral("proj_path")] = QFileInfo(path).absolutePath();
    return path;
}

bool QTextFileCommands::load(QSyntaxTextEditor* text, const QString& path)
{
    const uint codepage = numberSetting("default_codepage", 0);
    if (text->fromFile(path, codepage)) return true;
    QUserDialogs::warning(tr("Open"), tr("The file %1 can't be opened.").arg(QDir::toNativeSeparators(path)));
    return false;
}

bool QTextFileCommands::open(QSyntaxTextEditor* text, QProjectFileType kind)
{
    if (!text || !text->canDiscard()) return false;
    const QString path = askOpenName(kind);
    return !path.isEmpty() && load(text, path);
}

bool QTextFileCommands::save(QProject* project, QSyntaxTextEditor* text, QProjectFileType kind, int index)
{
    if (!text) return false;
    if (QFileInfo::exists(text->filePath())) return text->save();
    return saveAs(project, text, kind, index);
}

bool QTextFileCommands::saveAs(QProject* project, QSyntaxTextEditor* text, QProjectFileType kind, int index)
{
    if (!project || !text) return false;
    const QString before = text->filePath();
    project->saveFile(kind, false, index);
    return text->filePath() != before || !text->document->isModified();
}
