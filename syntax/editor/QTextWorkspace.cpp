#include "QTextWorkspace.h"

#include "EncDlg.h"
#include "QClickableLabel.h"
#include "QMugenModel.h"
#include "QMugenSyntaxHierarchy.h"
#include "QQuickFind.h"
#include "QSCtrlList.h"
#include "QSyntaxTextEditor.h"
#include "QTextBar.h"
#include "QTextEditor.h"
#include "QTextTools.h"
#include "QUserDialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>

QTextWorkspace::QTextWorkspace(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("textWorkspace"));
    column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_editor = new QTextEditor(this);
    m_editor->setObjectName(QStringLiteral("textEditor"));
    m_editor->setReadOnly(true);
    m_tools = new QTextTools(m_editor, this);
    column->addWidget(m_tools->textBar());
    auto* split = new QSplitter(this);
    split->addWidget(m_editor);
    split->addWidget(m_tools->sctrlList());
    split->setStretchFactor(0, 1);
    split->setSizes({600, 160});
    column->addWidget(split, 1);
    quickFind = new QQuickFind(this);
    quickFind->hide();
    connect(quickFind, &QQuickFind::closed, this, [this]() { m_editor->setFocus(); });
    column->addWidget(quickFind);

    auto* status = new QHBoxLayout;
    status->setContentsMargins(4, 1, 4, 1);
    // A nested layout takes its parent's spacing, which is none here: the texts would run together.
    status->setSpacing(16);
    const auto addLabel = [this, status](const char* name) {
        auto* label = new QLabel(this);
        label->setObjectName(QLatin1String(name));
        status->addWidget(label);
        return label;
    };
    positionLabel = addLabel("positionStatus");
    errorLabel = addLabel("errorStatus");
    status->addStretch(1);
    encodingLabel = new QClickableLabel(this);
    encodingLabel->setObjectName(QStringLiteral("encodingStatus"));
    status->addWidget(encodingLabel);
    connect(encodingLabel, &QClickableLabel::clicked, this, &QTextWorkspace::statusClicked);
    column->addLayout(status);
    firstFontSize = m_editor->font().pointSize();

    connect(m_editor, &QTextEditor::cursorPositionChanged, this, &QTextWorkspace::updateStatus);
    connect(m_editor, &QTextEditor::blockCountChanged, this, &QTextWorkspace::updateStatus);
    connect(m_editor, &QTextEditor::modificationChanged, this, &QTextWorkspace::modified);
    updateStatus();
}

void QTextWorkspace::setText(QSyntaxTextEditor* text)
{
    if (text == m_text && (!text || m_editor->document() == text->document)) return;
    disconnect(hierarchyConnection);
    disconnect(closingConnection);
    m_text = text;
    m_editor->setDocument(text ? text->document : nullptr);
    m_editor->setReadOnly(!text || text->isReadOnly());
    m_tools->setText(text);
    if (text) {
        hierarchyConnection =
            connect(text, &QSyntaxTextEditor::hierarchyUpdated, this, &QTextWorkspace::updateStatus);
        // A file's document is its child, so it still stands when the file announces its end.
        closingConnection = connect(text, &QObject::destroyed, this, [this]() {
            disconnect(hierarchyConnection);
            m_text = nullptr;
            m_editor->setDocument(nullptr);
            m_editor->setReadOnly(true);
            m_tools->setText(nullptr);
            updateStatus();
        });
    }
    updateStatus();
}

void QTextWorkspace::setHeader(QWidget* bar)
{
    if (header == bar) return;
    if (header) {
        column->removeWidget(header);
        header->hide();
    }
    header = bar;
    if (bar) {
        column->insertWidget(0, bar);
        bar->show();
    }
}

QString QTextWorkspace::positionText() const
{
    const QTextCursor cursor = m_editor->textCursor();
    return tr("Line: %1, Column: %2, Line count: %3")
        .arg(cursor.blockNumber() + 1)
        .arg(cursor.positionInBlock() + 1)
        .arg(m_editor->document()->blockCount());
}

QString QTextWorkspace::errorText() const
{
    const QString errors = tr("Syntax error count: %1").arg(m_text ? m_text->errorCount() : 0);
    // A command file also tells how many distinct commands it names, which the engine caps.
    const auto* outline = m_text && m_text->fileType() == pftCommands
                              ? qobject_cast<const QMugenSyntaxHierarchy*>(m_text->hierarchy())
                              : nullptr;
    return outline ? tr("%1, Unique commands: %2").arg(errors).arg(outline->commandCount()) : errors;
}

QString QTextWorkspace::encodingText() const
{
    return tr("Encoding: %1").arg(m_text ? m_text->codecName() : QString());
}

void QTextWorkspace::updateStatus()
{
    positionLabel->setText(positionText());
    errorLabel->setText(errorText());
    encodingLabel->setText(encodingText());
}

void QTextWorkspace::statusClicked()
{
    if (!m_text) return;
    connect(EncDlg::openFor(m_text, this), &QDialog::accepted, this, &QTextWorkspace::updateStatus);
}

void QTextWorkspace::goToBlock(int block)
{
    const QTextBlock target = m_editor->document()->findBlockByNumber(block);
    if (!target.isValid()) return;
    QTextCursor cursor(target);
    m_editor->setTextCursor(cursor);
    m_editor->centerCursor();
}

void QTextWorkspace::goToLine()
{
    const int count = m_editor->document()->blockCount();
    QStringList lines;
    lines.reserve(count);
    for (int line = 1; line <= count; ++line)
        lines << QString::number(line);
    const QString chosen =
        QUserDialogs::getItem(tr("Go to line"), tr("Line:"), lines, m_editor->textCursor().blockNumber());
    bool ok = false;
    const int line = chosen.toInt(&ok);
    if (ok) goToLineNumber(line);
}

void QTextWorkspace::goToLineNumber(int line)
{
    const int count = m_editor->document()->blockCount();
    if (line > count) {
        if (QUserDialogs::question(tr("Go to line"), tr("Invalid line! Do you want go to the last line?"),
                                   QUserDialogs::Yes | QUserDialogs::No) != QUserDialogs::Yes)
            return;
        line = count;
    }
    goToBlock(qMax(1, line) - 1);
}

bool QTextWorkspace::seek(QSyntaxMessageKind kind, bool forward)
{
    const QTextCursor cursor = m_editor->textCursor();
    const int column = cursor.positionInBlock();
    QTextBlock block = cursor.block();
    bool first = true;
    while (block.isValid()) {
        const auto* data = static_cast<const QTextEditorBlockData*>(block.userData());
        int best = -1;
        if (data) {
            for (const QSyntaxMessage& message : data->messages) {
                if (message.kind != kind) continue;
                // In the cursor's own line only what lies past the cursor counts.
                if (first && (forward ? message.start <= column : message.start >= column)) continue;
                if (best < 0 || (forward ? message.start < best : message.start > best)) best = message.start;
            }
        }
        if (best >= 0) {
            QTextCursor target(block);
            target.setPosition(block.position() + qMin(best, block.length() - 1));
            m_editor->setTextCursor(target);
            m_editor->ensureCursorVisible();
            return true;
        }
        first = false;
        block = forward ? block.next() : block.previous();
    }
    return false;
}

void QTextWorkspace::nextError()
{
    seek(SyntaxError, true);
}

void QTextWorkspace::prevError()
{
    seek(SyntaxError, false);
}

void QTextWorkspace::nextDepr()
{
    seek(SyntaxWarning, true);
}

void QTextWorkspace::prevDepr()
{
    seek(SyntaxWarning, false);
}

// The first line decides: when it is commented, every treated line loses its ";", else every treated
// line gets one, so that toggling twice gives the text back.
void QTextWorkspace::comment()
{
    if (m_editor->isReadOnly()) return;
    QTextDocument* document = m_editor->document();
    const QTextCursor selection = m_editor->textCursor();
    int end = selection.selectionEnd();
    QTextBlock block = document->findBlock(selection.selectionStart());
    const bool uncomment = block.text().startsWith(QLatin1Char(';'));
    QTextCursor edit(document);
    QTextBlock last;
    bool began = false;
    for (; block.isValid() && block.position() < end; block = block.next()) {
        if (!began) {
            edit.beginEditBlock();
            began = true;
        }
        edit.setPosition(block.position());
        if (!uncomment) {
            edit.insertText(QStringLiteral(";"));
            ++end;
        } else if (block.text().startsWith(QLatin1Char(';'))) {
            edit.deleteChar();
            --end;
        }
        last = block;
    }
    if (!began) return;
    edit.endEditBlock();
    QTextCursor cursor(last);
    m_editor->setTextCursor(cursor);
}

int QTextWorkspace::baseFontSize() const
{
    const int configured = mugenModel ? mugenModel->settings.value(QStringLiteral("font_size")).toInt() : 0;
    return configured > 0 ? configured : firstFontSize;
}

void QTextWorkspace::setFontSize(int size)
{
    if (size < 1) return;
    QFont font = m_editor->font();
    font.setPointSize(size);
    m_editor->setFont(font);
}

void QTextWorkspace::zoomIn()
{
    setFontSize(m_editor->font().pointSize() + 1);
}

void QTextWorkspace::zoomOut()
{
    setFontSize(m_editor->font().pointSize() - 1);
}

void QTextWorkspace::zoomActual()
{
    setFontSize(baseFontSize());
}

void QTextWorkspace::showFind()
{
    quickFind->open(m_editor->textCursor().selectedText());
}
