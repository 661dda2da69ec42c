// Word completion of the code editor and the key handling it hangs on.

#include "QTextEditor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStringListModel>

bool QTextEditor::setCompletionFile(const QString& path)
{
    return completionModels.load(path);
}

QString QTextEditor::wordBeforeCursor() const
{
    const QTextCursor cursor = textCursor();
    const QString text = cursor.block().text();
    int start = cursor.positionInBlock();
    while (start > 0 && (text.at(start - 1).isLetterOrNumber() || text.at(start - 1) == QLatin1Char('_')))
        --start;
    return text.mid(start, cursor.positionInBlock() - start);
}

void QTextEditor::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
        setOverwriteMode(!overwriteMode());
        event->accept();
        return;
    }
    viewport()->setCursor(Qt::IBeamCursor);
    blockHighlightTimer.stop();
    hoverTimer.stop();
    nextHighlightBlock = -1;
    if (extraAreaHighlightBlock >= 0 && !m_highlightBlocks) blockHighlightTimeOut();

    if (m_completer->popup()->isVisible()) {
        switch (event->key()) {
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // The completer's popup acts on these.
            event->ignore();
            return;
        default:
            break;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
    updateCompletion(event);
}

void QTextEditor::updateCompletion(QKeyEvent* event)
{
    const bool commandKey = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
    const QString typed = event->text();
    if (commandKey && typed.isEmpty()) return;
    QAbstractItemView* popup = m_completer->popup();
    if (completionModels.isEmpty()) return;

    const QString prefix = wordBeforeCursor();
    const QTextCursor cursor = textCursor();
    bool prefixed = false;
    QStringListModel* model = completionModels.modelFor(
        cursor.block().text().left(cursor.positionInBlock() - prefix.size()), &prefixed);

    static const QString wordBreak = QStringLiteral("~!@#$%^&*)_+{}|:\"<>?,./;'[]\\-=");
    // A default list is offered only for a word begun, a prefixed one (after "type =") at once.
    if (isReadOnly() || (!model && !popup->isVisible()) || commandKey || typed.isEmpty() ||
        wordBreak.contains(typed.right(1)) || (prefix.isEmpty() && !prefixed)) {
        popup->hide();
        return;
    }
    if (model && m_completer->model() != model) m_completer->setModel(model);
    if (prefix != m_completer->completionPrefix()) m_completer->setCompletionPrefix(prefix);
    if (m_completer->completionCount() == 0) {
        popup->hide();
        return;
    }
    popup->setCurrentIndex(m_completer->completionModel()->index(0, 0));
    QRect area = cursorRect();
    area.setWidth(popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width());
    m_completer->complete(area);
}

void QTextEditor::insertCompletion(const QString& completion)
{
    if (isReadOnly() || m_completer->widget() != this) return;
    const int missing = int(completion.size() - m_completer->completionPrefix().size());
    if (missing <= 0) return;
    QTextCursor cursor = textCursor();
    cursor.insertText(completion.right(missing));
    setTextCursor(cursor);
}
