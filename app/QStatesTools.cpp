#include "QStatesTools.h"

#include "OffsetDlg.h"
#include "PalFXDlg.h"
#include "QActionInfo.h"
#include "QActionManager.h"
#include "QActionTexts.h"
#include "QCommands.h"
#include "QMugenSyntaxHierarchy.h"
#include "QProject.h"
#include "QStatesEditor.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditor.h"
#include "QTextWorkspace.h"
#include "QVarLog.h"
#include "ThrwDlg.h"
#include "VarDlg.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

QStatesTools::QStatesTools(QStatesEditor* editor)
    : QObject(editor), runDialog([](QDialog& dialog) { return dialog.exec() == QDialog::Accepted; }),
      palFXFolder(QCoreApplication::applicationDirPath() + QStringLiteral("/palFX")), editor(editor)
{
    connect(editor, &QTextDocumentEditor::titleChanged, this, &QStatesTools::followFile);
}

void QStatesTools::addActions(QActionManager* manager, QMenu* menu)
{
    const QList<int> scope = {QActionInfo::StatesScope};
    const auto add = [&](const char* name, bool checkable, auto slot) {
        const QString key = QLatin1String(name);
        QAction* action = manager->add(scope, key, QActionTexts::id(key), checkable, this, slot);
        action->setEnabled(false);
        connect(editor, &QStatesEditor::enabled, action, &QAction::setEnabled);
        menu->addAction(action);
    };
    add("st_var_list", true, &QStatesTools::varList);
    add("st_var_log", false, &QStatesTools::varLog);
    add("st_palfx", false, &QStatesTools::palFXEditor);
    add("st_offset", false, &QStatesTools::offsetViewer);
    add("st_throw", false, &QStatesTools::throwCreator);
}

void QStatesTools::varList(bool on)
{
    variables = on;
    followFile();
}

void QStatesTools::followFile()
{
    QSyntaxHierarchy* current = editor->text() ? editor->text()->hierarchy() : nullptr;
    // The file left behind shows its sections again, as any file the view isn't switched on for.
    if (shown && shown != current) shown->setMode(QMugenSyntaxHierarchy::Outline);
    shown = current;
    if (current)
        current->setMode(variables ? QMugenSyntaxHierarchy::Variables : QMugenSyntaxHierarchy::Outline);
}

void QStatesTools::varLog()
{
    QProject* project = editor->project();
    if (!editor->text() || !project) return;
    VarDlg dialog(editor->textWorkspace());
    if (!runDialog(dialog)) return;
    QList<QSyntaxTextEditor*> files;
    for (int index = 0; index < project->statesCount(); ++index)
        files << project->states(index);
    if (project->commands()) files << project->commands();
    QList<QSyntaxHierarchy*> hierarchies;
    for (QSyntaxTextEditor* file : std::as_const(files)) {
        // The log reads the outlines, which lag a second behind the last edit.
        if (file->isHierarchyPending()) file->updateHierarchy();
        hierarchies << file->hierarchy();
    }
    insert(QVarLog::text(hierarchies, dialog.options()));
}

void QStatesTools::palFXEditor()
{
    QProject* project = editor->project();
    if (!editor->text() || !project) return;
    PalFXDlg dialog(palFXFolder, project->sprites(), editor->textWorkspace());
    if (runDialog(dialog)) insert(dialog.values().code());
}

void QStatesTools::offsetViewer()
{
    QProject* project = editor->project();
    if (!editor->text() || !project) return;
    OffsetDlg dialog(project->sprites(), editor->textWorkspace());
    if (runDialog(dialog)) insert(dialog.offsetText());
}

void QStatesTools::throwCreator()
{
    if (!editor->text()) return;
    ThrwDlg dialog(editor->textWorkspace());
    if (runDialog(dialog)) insert(dialog.values().code());
}

void QStatesTools::insert(const QString& text)
{
    QSyntaxTextEditor* file = editor->text();
    if (!file || file->isReadOnly()) return;
    QTextEditor* view = editor->textWorkspace()->editor();
    const bool onView = view->document() == file->document;
    QTextCursor cursor = onView ? view->textCursor() : QTextCursor(file->document);
    cursor.beginEditBlock();
    cursor.insertText(text);
    cursor.endEditBlock();
    if (onView) view->setTextCursor(cursor);
}
