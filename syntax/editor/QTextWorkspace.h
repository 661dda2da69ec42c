#pragma once

#include "QInterfaceEditor.h"
#include "QSyntaxTextEditor.h"
#include "QTextEditorBlockData.h"

#include <QPointer>
#include <QWidget>

class QClickableLabel;
class QLabel;
class QQuickFind;
class QTextEditor;
class QTextTools;
class QVBoxLayout;

// The page of the window that shows one text file: the code editor, an optional bar above it (the
// tabs of the state files), the search bar and a status line. The text editors take turns showing
// their documents here; the workspace owns none of them.
class QTextWorkspace : public QWidget, public QInterfaceWorkspace
{
    Q_OBJECT
public:
    explicit QTextWorkspace(QWidget* parent = nullptr);

    QTextEditor* editor() const { return m_editor; }
    QQuickFind* findBar() const { return quickFind; }
    QSyntaxTextEditor* text() const { return m_text; }
    // The snippets, the findings box and the state controller templates.
    QTextTools* tools() const { return m_tools; }
    // Shows the document of text; null shows an empty page that takes no typing.
    void setText(QSyntaxTextEditor* text);
    // The bar above the text; null takes the current one away (it is hidden, not deleted).
    void setHeader(QWidget* header);

    // Moves the cursor to the start of a 0-based block and centres it.
    void goToBlock(int block);
    // The 1-based line; above the last line the user is asked whether to go there instead.
    void goToLineNumber(int line);

    QString positionText() const;
    QString errorText() const;
    QString encodingText() const;
    // The font size that "actual size" returns to: the configured one, or the editor's first.
    int baseFontSize() const;

public Q_SLOTS:
    void goToLine();
    void nextError();
    void prevError();
    void nextDepr();
    void prevDepr();
    void comment();
    void zoomIn() override;
    void zoomOut() override;
    void zoomActual() override;
    void showFind();
    void updateStatus();
    // Offers another encoding for the shown file.
    void statusClicked();

Q_SIGNALS:
    void modified(bool modified);

private:
    // Moves to the nearest message of kind past the cursor in the direction; false when none.
    bool seek(QSyntaxMessageKind kind, bool forward);
    void setFontSize(int size);

    QTextEditor* m_editor;
    QTextTools* m_tools;
    QQuickFind* quickFind;
    QVBoxLayout* column;
    QPointer<QWidget> header;
    QLabel* positionLabel;
    QLabel* errorLabel;
    QClickableLabel* encodingLabel;
    QPointer<QSyntaxTextEditor> m_text;
    QMetaObject::Connection hierarchyConnection;
    // The shown file may close while another page is up; the editor must let go of its document first.
    QMetaObject::Connection closingConnection;
    int firstFontSize;
};
