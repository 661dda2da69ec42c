#pragma once

#include "QInterfaceEditor.h"
#include "QOutlineView.h"
#include "QQuickFindOption.h"
#include "QSyntaxTextEditor.h"

#include <QObject>
#include <QPointer>

class QTextWorkspace;

// The base of the editors of text files: it binds one QSyntaxTextEditor of the current project to the
// text workspace while it is the current editor, and carries the clipboard, undo and search commands
// to the code editor there.
class QTextDocumentEditor : public QObject, public QInterfaceEditor
{
    Q_OBJECT
public:
    explicit QTextDocumentEditor(QTextWorkspace* workspace, QObject* parent = nullptr);
    ~QTextDocumentEditor() override;

    QTextWorkspace* textWorkspace() const { return m_workspace; }
    QSyntaxTextEditor* text() const { return m_text; }
    // Takes another file (null for none); the workspace shows it at once while this editor is current.
    void bind(QSyntaxTextEditor* text);
    bool isActive() const { return active; }

    bool isModified() const override;
    int workspace() const override { return 0; }
    void activate() override;
    void deactivate() override;
    // Puts the cursor on the 0-based line index of the bound file.
    void navigate(int fileIndex, int index, int subIndex) override;
    // The outline of the bound file.
    QWidget* panel() const override;
    QOutlineView* outline() const { return m_outline; }

public Q_SLOTS:
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    // Selects the next hit; false, after telling the user, when there is none.
    bool find(const QString& text, const QQuickFindOptions& options);
    // Replaces the selection when it is a hit and finds the next; with all, every hit of the text in
    // one step that one undo takes back. Answers how many were replaced.
    int replace(const QString& source, const QString& dest, const QQuickFindOptions& options, bool all);

Q_SIGNALS:
    // The title or its modified mark may read differently now.
    void titleChanged();

private:
    QTextWorkspace* m_workspace;
    QPointer<QSyntaxTextEditor> m_text;
    QMetaObject::Connection modifiedConnection;
    QMetaObject::Connection cursorConnection;
    QPointer<QOutlineView> m_outline;
    bool active = false;
};
