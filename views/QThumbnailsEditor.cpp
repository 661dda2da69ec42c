#include "QThumbnailsEditor.h"

#include "AddAnim.h"
#include "QAnimation.h"
#include "QAnimationFrame.h"
#include "QAnimations.h"
#include "QDialogRunner.h"
#include "QElementTextEditor.h"
#include "QImageFiles.h"
#include "QProgress.h"
#include "QSidePanelPage.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QThumbModel.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"

#include <QAction>
#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QItemSelectionModel>
#include <QListView>
#include <QSet>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

const char* const QThumbnailsEditor::GroupProperty = "thumbnailsGroup";

namespace {
// Frames made from thumbnails into an existing action last this many ticks.
constexpr int addedFrameTime = 10;
} // namespace

QThumbnailsEditor::QThumbnailsEditor(QObject* parent) : QObject(parent)
{
    page = new QSidePanelPage(PreferredWidth);
    page->setObjectName(QStringLiteral("thumb_panel"));
    auto* layout = new QVBoxLayout(page);
    groups = new QComboBox(page);
    groups->setObjectName(QStringLiteral("thumb_grp_list"));
    layout->addWidget(groups);
    connect(groups, &QComboBox::currentIndexChanged, this, &QThumbnailsEditor::grpChanged);

    thumbs = new QThumbModel(this);
    thumbView = new QListView(page);
    thumbView->setObjectName(QStringLiteral("thumb_view"));
    thumbView->setViewMode(QListView::IconMode);
    thumbView->setResizeMode(QListView::Adjust);
    thumbView->setMovement(QListView::Static);
    thumbView->setUniformItemSizes(true);
    thumbView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    thumbView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    thumbView->setModel(thumbs);
    connect(thumbView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &QThumbnailsEditor::updateButtons);
    // A double click adds the picture to the action, the quickest way to build one frame by frame.
    connect(thumbView, &QListView::doubleClicked, this, &QThumbnailsEditor::add);
    layout->addWidget(thumbView, 1);

    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(addButton("thumb_add", tr("Add"), &QThumbnailsEditor::add), 0, 0);
    grid->addWidget(addButton("thumb_add_all", tr("Add all"), &QThumbnailsEditor::addAll), 0, 1);
    grid->addWidget(addButton("thumb_save", tr("Save"), &QThumbnailsEditor::save), 0, 2);
    grid->addWidget(addButton("thumb_new", tr("New action"), &QThumbnailsEditor::newAnim), 1, 0);
    grid->addWidget(addButton("thumb_new_all", tr("New of all"), &QThumbnailsEditor::newAnimAll), 1, 1);
    layout->addLayout(grid);
    page->setEnabled(false);
    updateButtons();
}

QThumbnailsEditor::~QThumbnailsEditor()
{
    delete page;
}

QSprites* QThumbnailsEditor::sprites() const
{
    return spriteModel;
}

QAnimations* QThumbnailsEditor::animations() const
{
    return animationModel;
}

QWidget* QThumbnailsEditor::panel() const
{
    return page;
}

QToolButton* QThumbnailsEditor::addButton(const char* name, const QString& text,
                                          void (QThumbnailsEditor::*slot)())
{
    auto* button = new QToolButton(page);
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(button, &QToolButton::clicked, this, slot);
    buttons.insert(QLatin1String(name), button);
    return button;
}

void QThumbnailsEditor::setCommand(QAction* action)
{
    QToolButton* button = action ? buttons.value(action->objectName()) : nullptr;
    if (!button) return;
    disconnect(button, nullptr, this, nullptr);
    button->setDefaultAction(action);
    updateButtons();
}

void QThumbnailsEditor::bind(QSprites* sprites, QAnimations* animations,
                             QMap<QString, QString>* projectVariables, QObject* owner)
{
    if (spriteModel) disconnect(spriteModel, nullptr, this, nullptr);
    if (animationModel) disconnect(animationModel, nullptr, this, nullptr);
    spriteModel = sprites;
    animationModel = animations;
    variables = projectVariables;
    project = owner;
    if (spriteModel) {
        connect(spriteModel, &QSprites::changed, this, &QThumbnailsEditor::refresh);
        connect(spriteModel, &QAbstractItemModel::modelReset, this, &QThumbnailsEditor::refresh);
    }
    if (animationModel) {
        for (auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
            connect(animationModel, signal, this, &QThumbnailsEditor::updateButtons);
        connect(animationModel, &QAbstractItemModel::modelReset, this, &QThumbnailsEditor::updateButtons);
    }
    stale = true;
    thumbs->clear();
    refresh();
}

void QThumbnailsEditor::activate()
{
    active = true;
    if (stale) load(group());
}

void QThumbnailsEditor::deactivate()
{
    active = false;
}

int QThumbnailsEditor::group() const
{
    bool ok = false;
    const int number = groups->currentText().toInt(&ok);
    return ok ? number : -1;
}

void QThumbnailsEditor::refresh()
{
    QList<int> numbers;
    if (spriteModel) {
        QSet<int> seen;
        for (const QSprite* sprite : spriteModel->spriteItems())
            if (!seen.contains(sprite->itemGroup())) {
                seen.insert(sprite->itemGroup());
                numbers << sprite->itemGroup();
            }
        std::sort(numbers.begin(), numbers.end());
    }
    // The project's choice first, else the group shown, else the first there is.
    int wanted = group();
    if (project) {
        const QVariant kept = project->property(GroupProperty);
        if (kept.isValid()) wanted = kept.toInt();
    }
    {
        const QSignalBlocker blocker(groups);
        groups->clear();
        for (int number : std::as_const(numbers))
            groups->addItem(QString::number(number));
        const int row = int(numbers.indexOf(wanted));
        groups->setCurrentIndex(row >= 0 ? row : (numbers.isEmpty() ? -1 : 0));
    }
    const bool any = !numbers.isEmpty();
    page->setEnabled(any);
    emit enabled(any);
    stale = true;
    if (active || !any) load(group());
    updateButtons();
}

void QThumbnailsEditor::grpChanged(int index)
{
    bool ok = false;
    const int number = groups->itemText(index).toInt(&ok);
    if (!ok) return;
    if (project) project->setProperty(GroupProperty, number);
    stale = true;
    load(number);
}

void QThumbnailsEditor::load(int number)
{
    const int size = qBound(8, QViewSettings::value("thumb_size", 64).toInt(), 1024);
    QList<QThumbModel::Thumb> list;
    if (spriteModel && number >= 0) {
        const QList<QSprite*>& all = spriteModel->spriteItems();
        for (int position = 0; position < all.size(); ++position) {
            const QSprite* sprite = all.at(position);
            if (sprite->itemGroup() != number) continue;
            QThumbModel::Thumb thumb;
            thumb.number = quint32(sprite->itemIndex());
            thumb.position = position;
            const QImage image =
                sprite->image(QSpriteImagePalette::Default).convertToFormat(QImage::Format_ARGB32);
            if (image.isNull()) {
                QPixmap empty(size, size);
                empty.fill(Qt::transparent);
                thumb.pixmap = empty;
            } else {
                // A fast pass to four times the size, then a smooth one: small and sharp enough, and
                // quick on large sprites.
                thumb.pixmap = QPixmap::fromImage(
                    image.scaled(4 * size, 4 * size, Qt::KeepAspectRatio, Qt::FastTransformation)
                        .scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            }
            list << thumb;
        }
    }
    thumbView->setIconSize(QSize(size, size));
    thumbView->setGridSize(QSize(size + 16, size + thumbView->fontMetrics().height() + 12));
    thumbs->setThumbs(number, list);
    stale = !active;
    if (number >= 0) emit setGroup(number);
    updateButtons();
}

QList<int> QThumbnailsEditor::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex& index : thumbView->selectionModel()->selectedIndexes())
        rows << index.row();
    std::sort(rows.begin(), rows.end());
    return rows;
}

void QThumbnailsEditor::selectRows(const QList<int>& rows)
{
    QItemSelection selection;
    for (int row : rows)
        if (row >= 0 && row < thumbs->count()) selection.select(thumbs->index(row), thumbs->index(row));
    thumbView->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QList<int> QThumbnailsEditor::allRows() const
{
    QList<int> rows;
    for (int row = 0; row < thumbs->count(); ++row)
        rows << row;
    return rows;
}

QAnimation* QThumbnailsEditor::currentAnimation() const
{
    if (!animationModel || animationModel->count() == 0) return nullptr;
    return animationModel->at(uint(qBound(0, animationModel->currentIndex, animationModel->count() - 1)));
}

void QThumbnailsEditor::insertFrames(QAnimation* animation, const QList<int>& rows, int at, int ticks)
{
    const int group = thumbs->group();
    int last = -1;
    for (int row : rows) {
        QAnimationFrame* frame = animation->frameInsert(uint(at));
        if (!frame) continue;
        frame->setValues(group, int(thumbs->at(row).number), frame->offsetX, frame->offsetY, ticks,
                         frame->flip, frame->blend, frame->blendTarget, frame->scaleX, frame->scaleY,
                         frame->angle);
        last = at++;
    }
    if (last >= 0) animation->currentFrameIndex = uint(last);
}

void QThumbnailsEditor::addFrames(const QList<int>& rows)
{
    QAnimation* animation = currentAnimation();
    if (!animation || rows.isEmpty()) return;
    emit switchToAnimations();
    const int count = animation->frameCount();
    const int at = count == 0 ? 0 : qMin(int(animation->currentFrameIndex) + 1, count);
    animationModel->beginEdit();
    insertFrames(animation, rows, at, addedFrameTime);
    animationModel->endEdit();
    emit animationsChanged();
}

void QThumbnailsEditor::add()
{
    addFrames(selectedRows());
}

void QThumbnailsEditor::addAll()
{
    addFrames(allRows());
}

void QThumbnailsEditor::makeAnimation(const QList<int>& rows)
{
    if (!animationModel || !animationModel->editor() || rows.isEmpty()) return;
    AddAnim dialog(page ? page->window() : nullptr);
    QSet<int> used;
    for (const QAnimation* animation : std::as_const(animationModel->animations))
        used.insert(animation->number);
    dialog.setUsedNumbers(used);
    if (dialogHook) dialogHook(dialog);
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    animationModel->beginEdit();
    QAnimation* animation = animationModel->add(dialog.number());
    if (animation) {
        if (!dialog.name().isEmpty()) animation->setName(dialog.name());
        insertFrames(animation, rows, animation->frameCount(), dialog.frameTime());
        animation->currentFrameIndex = 0;
    }
    animationModel->endEdit();
    if (!animation) return;
    animationModel->currentIndex = animationModel->count() - 1;
    emit switchToAnimations();
    emit animationsChanged();
}

void QThumbnailsEditor::newAnim()
{
    makeAnimation(selectedRows());
}

void QThumbnailsEditor::newAnimAll()
{
    makeAnimation(allRows());
}

QString QThumbnailsEditor::startFolder() const
{
    if (!variables) return QString();
    const QString own = variables->value(QStringLiteral("spr_path"));
    return own.isEmpty() ? variables->value(QStringLiteral("proj_path")) : own;
}

void QThumbnailsEditor::save()
{
    const QList<int> rows = selectedRows();
    if (!spriteModel || rows.isEmpty()) return;
    const QString path = QUserDialogs::getSaveFileName(
        tr("Save images"), startFolder(),
        tr("Portable Network Graphic (*.png);;Personal Computer eXchange (*.pcx);;Bitmap (*.bmp)"));
    if (path.isEmpty()) return;
    const QFileInfo file(path);
    if (variables) (*variables)[QStringLiteral("spr_path")] = file.absolutePath();
    const QString suffix = file.suffix().isEmpty() ? QStringLiteral("png") : file.suffix().toLower();
    const int group = thumbs->group();

    QProgress progress(page ? page->window() : nullptr, tr("Saving images..."));
    int failed = 0;
    for (int i = 0; i < rows.size(); ++i) {
        bool allow = true;
        progress.onProgress(uint(i), uint(rows.size()), allow);
        if (!allow) break;
        const QThumbModel::Thumb& thumb = thumbs->at(rows.at(i));
        // The file may have changed since the thumbnails were made; the sprite is found by its number.
        const QSprite* sprite = spriteModel->at(uint(thumb.position));
        if (!sprite || sprite->itemGroup() != group || sprite->itemIndex() != int(thumb.number)) {
            const int found = spriteModel->find(0, group, int(thumb.number));
            sprite = found >= 0 ? spriteModel->at(uint(found)) : nullptr;
        }
        const QString name = QStringLiteral("%1/%2_%3-%4.%5")
                                 .arg(file.absolutePath(), file.completeBaseName())
                                 .arg(group)
                                 .arg(thumb.number)
                                 .arg(suffix);
        if (!sprite || !QImageFiles::save(sprite->image(), name)) ++failed;
    }
    bool done = true;
    progress.onProgress(uint(rows.size()), uint(rows.size()), done);
    progress.close();
    if (failed > 0)
        QUserDialogs::warning(tr("Save images"), tr("%n image(s) could not be saved.", nullptr, failed));
}

void QThumbnailsEditor::updateButtons()
{
    const bool picked = !thumbView->selectionModel()->selectedIndexes().isEmpty();
    const bool any = thumbs->count() > 0;
    const bool action = currentAnimation() != nullptr;
    const bool text = animationModel && animationModel->editor();
    const auto enable = [this](const char* name, bool on) {
        QToolButton* button = buttons.value(QLatin1String(name));
        if (QAction* command = button->defaultAction())
            command->setEnabled(on);
        else
            button->setEnabled(on);
    };
    enable("thumb_add", picked && action);
    enable("thumb_add_all", any && action);
    enable("thumb_new", picked && text);
    enable("thumb_new_all", any && text);
    enable("thumb_save", picked);
}
