#include "QSoundWorkspace.h"

#include "QQuickFind.h"
#include "QSoundTable.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidget>

QSoundWorkspace::QSoundWorkspace(QWidget* parentWidget, QObject* parent)
    : QObject(parent), pageWidget(new QWidget(parentWidget)), view(new QTableView(pageWidget)),
      tableModel(new QSoundTable(this)), find(new QQuickFind(pageWidget))
{
    pageWidget->setObjectName(QStringLiteral("snd_page"));
    view->setObjectName(QStringLiteral("snd_list"));
    find->setObjectName(QStringLiteral("snd_find"));
    view->setModel(tableModel);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    view->setAlternatingRowColors(true);
    view->verticalHeader()->setDefaultSectionSize(view->fontMetrics().height() + 6);
    // A sound file holds a few hundred sounds at most, so measuring every row is cheap.
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    view->horizontalHeader()->setStretchLastSection(true);
    auto* layout = new QVBoxLayout(pageWidget);
    layout->setContentsMargins(0, 0, 0, 0);
    // The frame's find command serves the text editors; the page opens its own search bar.
    auto* findButton = new QToolButton(pageWidget);
    findButton->setObjectName(QStringLiteral("snd_find_open"));
    findButton->setText(tr("Find..."));
    findButton->setToolTip(tr("Find sounds by \"group,sample\""));
    findButton->setAutoRaise(true);
    connect(findButton, &QToolButton::clicked, find, [this]() { find->open(QString()); });
    auto* top = new QHBoxLayout;
    top->addStretch(1);
    top->addWidget(findButton);
    layout->addLayout(top);
    layout->addWidget(view, 1);
    layout->addWidget(find);
    find->hide();
    baseSize = view->font().pointSize();
    // Files dragged from a file manager become sounds where they are dropped.
    dropTarget = view->viewport();
    dropTarget->setAcceptDrops(true);
    dropTarget->installEventFilter(this);

    connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (selecting == 0 && current.isValid()) emit rowPicked(current.row());
            });
    connect(view, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
        if (index.isValid()) emit rowActivated(index.row());
    });
    connect(find, &QQuickFind::doFind, this, &QSoundWorkspace::doFind);
    connect(find, &QQuickFind::doReplace, this, &QSoundWorkspace::doReplace);
    connect(find, &QQuickFind::closed, view, [this]() { view->setFocus(); });
}

QSoundWorkspace::~QSoundWorkspace()
{
    tableModel->setSounds(nullptr);
    if (dropTarget) dropTarget->removeEventFilter(this);
    delete pageWidget;
}

void QSoundWorkspace::setSounds(QSounds* sounds)
{
    ++selecting;
    tableModel->setSounds(sounds);
    --selecting;
}

void QSoundWorkspace::selectRow(int row)
{
    ++selecting;
    QItemSelectionModel* selection = view->selectionModel();
    const QModelIndex target = tableModel->index(row, 0);
    if (!target.isValid()) {
        selection->clear();
    } else if (selection->currentIndex().row() != row || !selection->isRowSelected(row, QModelIndex())) {
        selection->setCurrentIndex(target, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        view->scrollTo(target);
    }
    --selecting;
}

void QSoundWorkspace::zoomBy(int steps)
{
    zoom = steps == 0 ? 0 : qBound(-4, zoom + steps, 12);
    QFont font = view->font();
    if (baseSize > 0) font.setPointSize(qMax(4, baseSize + zoom));
    view->setFont(font);
    view->verticalHeader()->setDefaultSectionSize(QFontMetrics(font).height() + 6);
}

void QSoundWorkspace::zoomIn()
{
    zoomBy(1);
}

void QSoundWorkspace::zoomOut()
{
    zoomBy(-1);
}

void QSoundWorkspace::zoomActual()
{
    zoomBy(0);
}

namespace {
QStringList wavFiles(const QMimeData* data)
{
    QStringList files;
    if (!data || !data->hasUrls()) return files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile() && url.toLocalFile().endsWith(QLatin1String(".wav"), Qt::CaseInsensitive))
            files << url.toLocalFile();
    return files;
}
} // namespace

bool QSoundWorkspace::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != dropTarget) return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto* drag = static_cast<QDropEvent*>(event);
        if (wavFiles(drag->mimeData()).isEmpty()) return false;
        drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const QStringList files = wavFiles(drop->mimeData());
        if (files.isEmpty()) return false;
        drop->acceptProposedAction();
        // The sounds go after the row they were dropped on.
        const QModelIndex target = view->indexAt(drop->position().toPoint());
        if (target.isValid()) emit rowPicked(target.row());
        emit filesDropped(files);
        return true;
    }
    default:
        return QObject::eventFilter(watched, event);
    }
}
