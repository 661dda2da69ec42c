#include "QSCtrlList.h"

#include "QSCtrlManager.h"

#include <QFontDatabase>
#include <QListView>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QStringListModel>
#include <QVBoxLayout>

QSCtrlList::QSCtrlList(QSCtrlManager* manager, QWidget* parent) : QWidget(parent), manager(manager)
{
    setObjectName(QStringLiteral("sctrlList"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    view = new QListView(splitter);
    view->setModel(manager->model());
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    previewArea = new QPlainTextEdit(splitter);
    previewArea->setObjectName(QStringLiteral("sctrlPreview"));
    previewArea->setReadOnly(true);
    previewArea->setLineWrapMode(QPlainTextEdit::NoWrap);
    previewArea->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    layout->addWidget(splitter);
    // A rescan resets the model and with it the choice, so the text shown must go too.
    connect(manager, &QSCtrlManager::scanned, previewArea, &QPlainTextEdit::clear);
}

QString QSCtrlList::preview() const
{
    return previewArea->toPlainText();
}

QString QSCtrlList::currentName() const
{
    return view->currentIndex().data().toString();
}

void QSCtrlList::showPreview(const QString& text)
{
    previewArea->setPlainText(text);
}
