#pragma once

#include <QModelIndex>
#include <QObject>

class QPlainTextEdit;
class QSCtrlList;
class QSCtrlManager;
class QSnippetManager;
class QSyntaxTextEditor;
class QTextBar;

// The template tools of the text workspace: code snippets and their bar, the findings box, and the
// side list of state controller templates. Everything they put into the text lands at the cursor of
// the code editor as one step of undo.
class QTextTools : public QObject
{
    Q_OBJECT
public:
    QTextTools(QPlainTextEdit* editor, QWidget* parent);

    QSnippetManager* snippets() const { return m_snippets; }
    QSCtrlManager* sctrls() const { return m_sctrls; }
    QTextBar* textBar() const { return bar; }
    QSCtrlList* sctrlList() const { return list; }

    void setText(QSyntaxTextEditor* text);
    // Inserts a snippet, asking for its fields first when it has any; false when it can't be read or
    // the user cancels.
    bool insertSnippet(const QString& name);
    void insertText(const QString& text);

public Q_SLOTS:
    void snipInsert();
    void snipNew();
    void snipEdit();
    void snipActivated(int index);
    void errorActivated(int index);
    void insertSCtrl(const QModelIndex& index);
    void selectSCtrl(const QModelIndex& index);
    void sCtrlNew();
    void sCtrlEdit();
    void sCtrlDel();
    // Both also become the settings "show_sctrl_list" and "show_text_bar".
    void setSctrlListShown(bool shown);
    void setTextBarShown(bool shown);

private:
    QPlainTextEdit* editor;
    QSnippetManager* m_snippets;
    QSCtrlManager* m_sctrls;
    QTextBar* bar;
    QSCtrlList* list;
};
