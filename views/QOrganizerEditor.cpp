#include "QOrganizerEditor.h"

#include "QOrganizableObject.h"
#include "QSidePanelPage.h"
#include "QUserDialogs.h"

#include <QAction>
#include <QGridLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QListView>
#include <QPersistentModelIndex>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
// How far "up 10" and "down 10" go.
constexpr int bigStep = 10;
} // namespace

QOrganizerEditor::QOrganizerEditor(QObject* parent) : QObject(parent)
{
    page = new QSidePanelPage(PreferredWidth);
    page->setObjectName(QStringLiteral("org_panel"));
    auto* layout = new QVBoxLayout(page);

    paletteButton = new QToolButton(page);
    paletteButton->setObjectName(QStringLiteral("org_palette"));
    paletteButton->setText(tr("Palettes"));
    paletteButton->setCheckable(true);
    paletteButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    paletteButton->hide();
    connect(paletteButton, &QToolButton::toggled, this, &QOrganizerEditor::palToggled);
    layout->addWidget(paletteButton);

    listView = new QListView(page);
    listView->setObjectName(QStringLiteral("org_list"));
    // Moves act on one block of rows, so only a block can be selected.
    listView->setSelectionMode(QAbstractItemView::ContiguousSelection);
    listView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listView->setUniformItemSizes(true);
    listView->installEventFilter(this);
    connect(listView, &QListView::doubleClicked, this, &QOrganizerEditor::itemDblClick);
    layout->addWidget(listView, 1);

    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    const struct
    {
        const char* name;
        const char* text;
        void (QOrganizerEditor::*slot)();
        int row;
        int column;
    } commands[] = {{"org_top", QT_TR_NOOP("Top"), &QOrganizerEditor::moveTop, 0, 0},
                    {"org_up_10", QT_TR_NOOP("Up 10"), &QOrganizerEditor::moveUp10, 0, 1},
                    {"org_up", QT_TR_NOOP("Up"), &QOrganizerEditor::moveUp, 0, 2},
                    {"org_auto", QT_TR_NOOP("Sort"), &QOrganizerEditor::moveAuto, 0, 3},
                    {"org_bottom", QT_TR_NOOP("Bottom"), &QOrganizerEditor::moveBottom, 1, 0},
                    {"org_down_10", QT_TR_NOOP("Down 10"), &QOrganizerEditor::moveDown10, 1, 1},
                    {"org_down", QT_TR_NOOP("Down"), &QOrganizerEditor::moveDown, 1, 2}};
    for (const auto& command : commands)
        grid->addWidget(addButton(command.name, tr(command.text), command.slot), command.row, command.column);
    layout->addLayout(grid);
    page->setEnabled(false);
    updateButtons();
}

QOrganizerEditor::~QOrganizerEditor()
{
    // The window's panel may hold the page; it goes with the editor, never before it.
    delete page;
}

QWidget* QOrganizerEditor::panel() const
{
    return page;
}

QToolButton* QOrganizerEditor::addButton(const char* name, const QString& text,
                                         void (QOrganizerEditor::*slot)())
{
    auto* button = new QToolButton(page);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(button, &QToolButton::clicked, this, slot);
    buttons.insert(QLatin1String(name), button);
    return button;
}

void QOrganizerEditor::setCommand(QAction* action)
{
    if (!action) return;
    const QString name = action->objectName();
    QToolButton* button = name == paletteButton->objectName() ? paletteButton : buttons.value(name);
    if (!button) return;
    // The action calls the slot itself; the button only triggers the action from now on.
    disconnect(button, nullptr, this, nullptr);
    const bool checked = paletteButton->isChecked();
    button->setDefaultAction(action);
    if (button == paletteButton) {
        const QSignalBlocker blocker(action);
        action->setChecked(checked);
    }
    updateButtons();
}

void QOrganizerEditor::setObjects(QOrganizableObject* primaryList, QOrganizableObject* secondaryList)
{
    primary = primaryList;
    secondary = primaryList ? secondaryList : nullptr;
    onSecondary = onSecondary && secondary;
    paletteButton->setVisible(secondary != nullptr);
    {
        QAction* action = paletteButton->defaultAction();
        const QSignalBlocker blocker(action ? static_cast<QObject*>(action) : paletteButton);
        if (action) action->setChecked(onSecondary);
        paletteButton->setChecked(onSecondary);
    }
    showObject();
    page->setEnabled(primary != nullptr);
    emit enabled(primary != nullptr);
}

QOrganizableObject* QOrganizerEditor::primaryObject() const
{
    return primary;
}

QOrganizableObject* QOrganizerEditor::secondaryObject() const
{
    return secondary;
}

QOrganizableObject* QOrganizerEditor::object() const
{
    return onSecondary && secondary ? secondary.data() : primary.data();
}

int QOrganizerEditor::count() const
{
    const QOrganizableObject* shown = object();
    return shown ? shown->rowCount() : 0;
}

void QOrganizerEditor::showObject()
{
    QItemSelectionModel* old = listView->selectionModel();
    listView->setModel(object());
    // A view never deletes the selection model it made for a model it no longer shows.
    if (old && old != listView->selectionModel()) delete old;
    if (QItemSelectionModel* selection = listView->selectionModel())
        connect(selection, &QItemSelectionModel::selectionChanged, this, &QOrganizerEditor::updateButtons);
    if (QOrganizableObject* shown = object()) {
        connect(shown, &QAbstractItemModel::rowsInserted, this, &QOrganizerEditor::updateButtons,
                Qt::UniqueConnection);
        connect(shown, &QAbstractItemModel::rowsRemoved, this, &QOrganizerEditor::updateButtons,
                Qt::UniqueConnection);
        connect(shown, &QAbstractItemModel::modelReset, this, &QOrganizerEditor::updateButtons,
                Qt::UniqueConnection);
    }
    updateButtons();
}

void QOrganizerEditor::palToggled(bool on)
{
    on = on && secondary;
    if (QAction* action = paletteButton->defaultAction(); action && action->isChecked() != on) {
        const QSignalBlocker blocker(action);
        action->setChecked(on);
    }
    if (paletteButton->isChecked() != on) {
        const QSignalBlocker blocker(paletteButton);
        paletteButton->setChecked(on);
    }
    if (on == onSecondary) return;
    onSecondary = on;
    showObject();
    emit changed(onSecondary);
}

QPair<int, int> QOrganizerEditor::selectedRows() const
{
    const QItemSelectionModel* selection = listView->selectionModel();
    if (!selection || !object()) return {-1, -1};
    int first = -1, last = -1;
    for (const QModelIndex& index : selection->selectedIndexes()) {
        if (first < 0 || index.row() < first) first = index.row();
        last = qMax(last, index.row());
    }
    return {first, last};
}

void QOrganizerEditor::selectRows(int first, int last)
{
    QItemSelectionModel* selection = listView->selectionModel();
    QOrganizableObject* shown = object();
    if (!selection || !shown) return;
    const int rows = shown->rowCount();
    first = qBound(0, first, rows - 1);
    last = qBound(first, last, rows - 1);
    if (rows == 0) {
        selection->clearSelection();
        return;
    }
    const QItemSelection block(shown->index(first), shown->index(last));
    selection->setCurrentIndex(shown->index(first), QItemSelectionModel::NoUpdate);
    selection->select(block, QItemSelectionModel::ClearAndSelect);
    listView->scrollTo(shown->index(last));
    listView->scrollTo(shown->index(first));
    // A block that the model already carried along raises no selection change.
    updateButtons();
}

void QOrganizerEditor::moveBlockTo(int to)
{
    QOrganizableObject* shown = object();
    const auto [first, last] = selectedRows();
    if (!shown || first < 0 || to == first) return;
    const int size = last - first + 1;
    to = qBound(0, to, shown->rowCount() - size);
    if (to == first) return;
    shown->beginChanges();
    if (to < first) {
        for (int i = 0; i < size; ++i)
            shown->move(uint(first + i), uint(to + i));
    } else {
        for (int i = size - 1; i >= 0; --i)
            shown->move(uint(first + i), uint(to + i));
    }
    shown->endChanges();
    selectRows(to, to + size - 1);
    emit changed(onSecondary);
}

void QOrganizerEditor::moveUp()
{
    const int first = selectedRows().first;
    if (first > 0) moveBlockTo(first - 1);
}

void QOrganizerEditor::moveDown()
{
    const auto [first, last] = selectedRows();
    if (first >= 0 && last + 1 < count()) moveBlockTo(first + 1);
}

void QOrganizerEditor::moveUp10()
{
    const int first = selectedRows().first;
    if (first > 0) moveBlockTo(first - qMin(first, bigStep));
}

void QOrganizerEditor::moveDown10()
{
    const auto [first, last] = selectedRows();
    if (first >= 0) moveBlockTo(first + qMin(count() - 1 - last, bigStep));
}

void QOrganizerEditor::moveTop()
{
    if (selectedRows().first > 0) moveBlockTo(0);
}

void QOrganizerEditor::moveBottom()
{
    const auto [first, last] = selectedRows();
    if (first >= 0 && last < count() - 1) moveBlockTo(count() - (last - first + 1));
}

void QOrganizerEditor::moveAuto()
{
    QOrganizableObject* shown = object();
    if (!shown || shown->rowCount() < 2) return;
    // The sorted list puts the selected items wherever their numbers belong; they stay selected when
    // they still stand together, else the one that was current does.
    QList<QPersistentModelIndex> picked;
    const auto [first, last] = selectedRows();
    for (int row = first; first >= 0 && row <= last; ++row)
        picked << QPersistentModelIndex(shown->index(row));
    const QPersistentModelIndex current(listView->currentIndex());
    shown->autoOrganize();
    QList<int> rows;
    for (const QPersistentModelIndex& index : std::as_const(picked))
        if (index.isValid()) rows << index.row();
    std::sort(rows.begin(), rows.end());
    if (!rows.isEmpty() && rows.last() - rows.first() + 1 == rows.size())
        selectRows(rows.first(), rows.last());
    else if (current.isValid())
        selectRows(current.row(), current.row());
    emit changed(onSecondary);
}

void QOrganizerEditor::deleteSelected()
{
    QOrganizableObject* shown = object();
    const auto [first, last] = selectedRows();
    if (!shown || first < 0) return;
    if (QUserDialogs::question(tr("Delete"), tr("Do you really want to delete the selected item(s)?")) !=
        QUserDialogs::Yes)
        return;
    shown->beginChanges();
    for (int row = last; row >= first; --row)
        shown->remove(uint(row));
    shown->endChanges();
    if (shown->rowCount() > 0) selectRows(first, first);
    emit changed(onSecondary);
}

void QOrganizerEditor::itemDblClick(const QModelIndex& index)
{
    if (index.isValid()) emit itemClicked(index.row());
}

bool QOrganizerEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == listView && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        deleteSelected();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void QOrganizerEditor::updateButtons()
{
    const auto [first, last] = selectedRows();
    const int rows = count();
    const auto enable = [this](const char* name, bool on) {
        QToolButton* button = buttons.value(QLatin1String(name));
        if (QAction* action = button->defaultAction())
            action->setEnabled(on);
        else
            button->setEnabled(on);
    };
    const bool any = first >= 0;
    for (const char* name : {"org_up", "org_up_10", "org_top"})
        enable(name, any && first > 0);
    for (const char* name : {"org_down", "org_down_10", "org_bottom"})
        enable(name, any && last < rows - 1);
    enable("org_auto", rows > 1);
}
