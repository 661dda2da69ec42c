#include "QSpritesEditor.h"

#include "AlignDlg.h"
#include "QAnimSpriteWorkspace.h"
#include "QBlockCounter.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpriteClipItem.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesPanel.h"
#include "QUserDialogs.h"
#include "QViewSettings.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QMimeData>
#include <QRegExp>
#include <QRegularExpression>

namespace {
using Block = QBlockCounter;
} // namespace

QSpritesEditor::QSpritesEditor(QAnimSpriteWorkspace* workspace, QObject* parent)
    : QObject(parent), workspaceOf(workspace), panelWidget(new QSpritesPanel(this))
{
    framed = QViewSettings::value("switch_frame_spr", false).toBool();
    connect(view(), &QSprRender::axisChanged, this, &QSpritesEditor::axisChanged);
    connect(view(), &QSprRender::cursorChanged, this, &QSpritesEditor::cursorChanged);
}

QSpritesEditor::~QSpritesEditor()
{
    QViewSettings::setValue("switch_frame_spr", framed);
    // Going away is no reason to show anything again.
    active = false;
    bind(nullptr, nullptr);
    delete alignWindow;
    delete panelWidget;
}

QSprRender* QSpritesEditor::view() const
{
    return workspaceOf->view();
}

QWidget* QSpritesEditor::dialogParent()
{
    return QApplication::activeWindow();
}

QWidget* QSpritesEditor::panel() const
{
    return panelWidget;
}

bool QSpritesEditor::isModified() const
{
    return model && model->isModified();
}

int QSpritesEditor::position() const
{
    return model ? model->currentIndex() : -1;
}

QSprite* QSpritesEditor::currentSprite() const
{
    return model && model->currentIndex() >= 0 ? model->at(uint(model->currentIndex())) : nullptr;
}

void QSpritesEditor::bind(QSprites* sprites, QMap<QString, QString>* projectVariables)
{
    if (model) disconnect(model, nullptr, this, nullptr);
    model = sprites;
    variables = projectVariables;
    if (model) {
        connect(model, &QSprites::changed, this, &QSpritesEditor::updateSel);
        connect(model, &QSprites::changed, this, &QSpritesEditor::titleChanged);
        connect(model->undoStack(), &QUndoStack::cleanChanged, this, &QSpritesEditor::titleChanged);
    }
    emit enabled(model != nullptr);
    if (active) activate();
}

void QSpritesEditor::activate()
{
    active = true;
    QSprRender* render = view();
    render->setRenderMode(QSprRender::SpriteMode);
    render->setSprites(model);
    render->showTransparentColor(QViewSettings::value("show_trans_color", false).toBool());
    render->setContentsHidden(!model);
    {
        Block guard(block);
        emit setTrans(QViewSettings::value("show_trans_color", false).toBool());
        emit setSwitchPal(QViewSettings::value("switch_to_imgpal", true).toBool());
    }
    if (model && model->currentIndex() < 0 && model->count() > 0) model->setCurrentIndex(0);
    updateSel();
}

void QSpritesEditor::deactivate()
{
    active = false;
    emit flushFields();
}

void QSpritesEditor::navigate(int, int index, int)
{
    definePos(index);
}

void QSpritesEditor::updateSel()
{
    if (!model) {
        Block guard(block);
        emit setMaximum(0);
        emit enabled(false);
        showSprite(-1);
        return;
    }
    const int count = int(model->count());
    int current = model->currentIndex();
    if (current >= count) current = count - 1;
    if (current < 0 && count > 0) current = 0;
    {
        Block guard(block);
        emit setMaximum(count);
    }
    showSprite(current);
}

void QSpritesEditor::definePos(int position)
{
    if (block > 0) return;
    emit flushFields();
    showSprite(position);
}

void QSpritesEditor::selPosChanged(int position)
{
    definePos(position);
}

void QSpritesEditor::showSprite(int position)
{
    QSprRender* render = view();
    QSprite* sprite = model ? model->at(uint(qMax(0, position))) : nullptr;
    if (position < 0) sprite = nullptr;
    if (model) model->setCurrentIndex(sprite ? position : -1);
    if (active) {
        render->setContentsHidden(!model);
        render->setSprite(sprite ? position : -1);
    }
    Block guard(block);
    const bool reverse = QViewSettings::value("reverse_spr_axis", false).toBool();
    if (sprite) {
        emit setSelPos(position);
        emit setPosText(QStringLiteral("%1 / %2").arg(position + 1).arg(model->count()));
        emit setGroup(sprite->itemGroup());
        emit setNumber(sprite->itemIndex());
        emit setX(reverse ? -sprite->offsetX() : sprite->offsetX());
        emit setY(reverse ? -sprite->offsetY() : sprite->offsetY());
        emit setDecLoad(sprite->flag(QSpriteFlag::DecompressOnLoad));
        const QImageInfo info = sprite->imageProperties();
        emit setInfoText(tr("%1 x %2 px (%3 bit) - %4")
                             .arg(info.width)
                             .arg(info.height)
                             .arg(sprite->hasImage() ? info.depth() : 0)
                             .arg(sprite->imageIsShared() ? tr("shared") : tr("unique")));
        if (sprite->palette() && model->paletteCount() > 0 &&
            QViewSettings::value("switch_to_imgpal", true).toBool()) {
            const int palette = model->paletteIndexOf(sprite->palette());
            if (active) render->setPalette(palette);
            emit paletteSelected(palette);
        }
    } else {
        emit setSelPos(0);
        emit setPosText(QStringLiteral("0 / 0"));
        emit setGroup(0);
        emit setNumber(0);
        emit setX(0);
        emit setY(0);
        emit setDecLoad(false);
        emit setInfoText(tr("No image"));
    }
    if (alignWindow) alignWindow->setAlignEnabled(sprite != nullptr);
    if (onionOn && active) render->setOnionSprite(onionPosition);
    if (active) render->refresh();
    emit spriteShown(sprite ? position : -1);
}

void QSpritesEditor::showPalette(int index)
{
    if (!active) return;
    view()->setPalette(index);
    view()->refresh();
}

void QSpritesEditor::prevSpr()
{
    if (model && model->currentIndex() > 0) definePos(model->currentIndex() - 1);
}

void QSpritesEditor::nextSpr()
{
    if (model && model->currentIndex() + 1 < int(model->count())) definePos(model->currentIndex() + 1);
}

void QSpritesEditor::prevGrp()
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    // The group run before the current sprite's, entered at its first sprite.
    int at = model->currentIndex();
    while (at >= 0 && model->at(uint(at))->itemGroup() == sprite->itemGroup())
        --at;
    if (at < 0) return;
    const int group = model->at(uint(at))->itemGroup();
    while (at > 0 && model->at(uint(at - 1))->itemGroup() == group)
        --at;
    definePos(at);
}

void QSpritesEditor::nextGrp()
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    int at = model->currentIndex();
    while (at < int(model->count()) && model->at(uint(at))->itemGroup() == sprite->itemGroup())
        ++at;
    if (at < int(model->count())) definePos(at);
}

void QSpritesEditor::grpChanged(int value)
{
    QSprite* sprite = currentSprite();
    if (block > 0 || !sprite || sprite->itemGroup() == value) return;
    sprite->setItemGroup(value);
    // The list may have been reordered; the selection follows the sprite, not the position.
    showSprite(model->indexOf(sprite));
}

void QSpritesEditor::numChanged(int value)
{
    QSprite* sprite = currentSprite();
    if (block > 0 || !sprite || sprite->itemIndex() == value) return;
    sprite->setItemIndex(value);
    showSprite(model->indexOf(sprite));
}

void QSpritesEditor::xChanged(int value)
{
    QSprite* sprite = currentSprite();
    if (block > 0 || !sprite) return;
    const int x = QViewSettings::value("reverse_spr_axis", false).toBool() ? -value : value;
    if (sprite->offsetX() == x) return;
    sprite->setOffsetX(x);
    view()->setSprite(model->currentIndex());
    view()->refresh();
}

void QSpritesEditor::yChanged(int value)
{
    QSprite* sprite = currentSprite();
    if (block > 0 || !sprite) return;
    const int y = QViewSettings::value("reverse_spr_axis", false).toBool() ? -value : value;
    if (sprite->offsetY() == y) return;
    sprite->setOffsetY(y);
    view()->setSprite(model->currentIndex());
    view()->refresh();
}

void QSpritesEditor::axisChanged(QPoint axis)
{
    // While the axis is dragged the fields follow; the view writes the model when the drag ends.
    const bool reverse = QViewSettings::value("reverse_spr_axis", false).toBool();
    Block guard(block);
    emit setX(reverse ? -axis.x() : axis.x());
    emit setY(reverse ? -axis.y() : axis.y());
}

void QSpritesEditor::cursorChanged(QPoint)
{
    // The guide lines may be the thing being dragged; the align tools show where they cross.
    if (alignWindow && alignWindow->isVisible()) alignWindow->setGuides(view()->guides());
}

void QSpritesEditor::moveAxis(int dx, int dy)
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    const bool reverse = QViewSettings::value("reverse_spr_axis", false).toBool();
    if (dx) sprite->setOffsetX(sprite->offsetX() + dx);
    if (dy) sprite->setOffsetY(sprite->offsetY() + dy);
    {
        Block guard(block);
        emit setX(reverse ? -sprite->offsetX() : sprite->offsetX());
        emit setY(reverse ? -sprite->offsetY() : sprite->offsetY());
    }
    view()->setSprite(model->currentIndex());
    view()->refresh();
}

// A larger axis moves the picture left or up on the screen.
void QSpritesEditor::axisLeft()
{
    moveAxis(1, 0);
}

void QSpritesEditor::axisUp()
{
    moveAxis(0, 1);
}

void QSpritesEditor::axisRight()
{
    moveAxis(-1, 0);
}

void QSpritesEditor::axisDown()
{
    moveAxis(0, -1);
}

void QSpritesEditor::decLoadChanged(bool on)
{
    QSprite* sprite = currentSprite();
    if (block > 0 || !sprite || sprite->flag(QSpriteFlag::DecompressOnLoad) == on) return;
    sprite->setFlag(QSpriteFlag::DecompressOnLoad, on);
}

void QSpritesEditor::transChanged(bool on)
{
    if (block > 0) return;
    QViewSettings::setValue("show_trans_color", on);
    view()->showTransparentColor(on);
    view()->refresh();
}

void QSpritesEditor::switchPalChanged(bool on)
{
    if (block > 0) return;
    QViewSettings::setValue("switch_to_imgpal", on);
    if (on) showSprite(position());
}

void QSpritesEditor::onionSkinChanged(bool on)
{
    if (block > 0) return;
    onionOn = on;
    view()->setOnion(on, QViewSettings::value("onion_effect", 1).toInt(),
                     QViewSettings::value("onion_opacity", 100).toInt());
    view()->setOnionSprite(on ? onionPosition : -1);
    onionSelPosChanged(onionPosition);
}

void QSpritesEditor::onionSelPosChanged(int position)
{
    if (block > 0) return;
    onionPosition = position;
    QSprite* sprite = model ? model->at(uint(qMax(0, position))) : nullptr;
    emit setOnionText(sprite ? QStringLiteral("%1,%2").arg(sprite->itemGroup()).arg(sprite->itemIndex())
                             : QString());
    if (!onionOn) return;
    view()->setOnionSprite(position);
    view()->refresh();
}

void QSpritesEditor::frameSpr(bool on)
{
    framed = on;
}

void QSpritesEditor::align(int which)
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    const QImageInfo info = sprite->imageProperties();
    const int w = info.width;
    const int h = info.height;
    const QPoint guide = view()->guides();
    // Columns: left, centre, right; rows: top, centre, bottom.
    const int column = which % 3;
    const int row = which / 3;
    const int x = (column == 0 ? 0 : column == 1 ? w >> 1 : w) - guide.x();
    const int y = (row == 0 ? 0 : row == 1 ? h >> 1 : h) - guide.y();
    if (x == sprite->offsetX() && y == sprite->offsetY()) return;
    sprite->setInfo(sprite->palette(), sprite->itemGroup(), sprite->itemIndex(), x, y, sprite->flags());
    showSprite(model->currentIndex());
}

void QSpritesEditor::alignTopLeft()
{
    align(0);
}

void QSpritesEditor::alignTopCenter()
{
    align(1);
}

void QSpritesEditor::alignTopRight()
{
    align(2);
}

void QSpritesEditor::alignCenterLeft()
{
    align(3);
}

void QSpritesEditor::alignCenterCenter()
{
    align(4);
}

void QSpritesEditor::alignCenterRight()
{
    align(5);
}

void QSpritesEditor::alignBotLeft()
{
    align(6);
}

void QSpritesEditor::alignBotCenter()
{
    align(7);
}

void QSpritesEditor::alignBotRight()
{
    align(8);
}

void QSpritesEditor::undo()
{
    if (model) model->undoChange();
}

void QSpritesEditor::redo()
{
    if (model) model->redoChange();
}

void QSpritesEditor::copy()
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    QApplication::clipboard()->setMimeData(
        QSpriteClipItem::toMimeData({QSpriteClipItem::fromSprite(sprite)}));
}

void QSpritesEditor::cut()
{
    if (!currentSprite()) return;
    copy();
    model->remove(uint(model->currentIndex()));
}

void QSpritesEditor::paste()
{
    if (!model) return;
    const int at = model->currentIndex() + 1;
    if (model->paste(uint(at), QApplication::clipboard()->mimeData()) > 0) definePos(at);
}

void QSpritesEditor::del()
{
    if (!currentSprite()) return;
    if (QViewSettings::value("confirm_delete", true).toBool() &&
        QUserDialogs::question(tr("Delete sprite"), tr("Do you really want to delete the sprite?")) !=
            QUserDialogs::Yes)
        return;
    emit flushFields();
    model->remove(uint(model->currentIndex()));
    updateSel();
}

void QSpritesEditor::duplicate()
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    const int at = model->currentIndex() + 1;
    model->undoStack()->beginMacro(QStringLiteral("duplicate"));
    QSprite* copy = model->insert(uint(at));
    copy->setInfo(sprite->palette(), sprite->itemGroup(), sprite->itemIndex(), sprite->offsetX(),
                  sprite->offsetY(), sprite->flags());
    if (sprite->hasImage()) copy->setImage(sprite->image(QSpriteImagePalette::None), QSpriteShareMode::Share);
    model->undoStack()->endMacro();
    definePos(at);
}

bool QSpritesEditor::find(const QString& text, bool wildcard)
{
    if (!model || model->count() == 0) return false;
    const QRegExp pattern(text, Qt::CaseInsensitive, wildcard ? QRegExp::Wildcard : QRegExp::RegExp);
    const int count = int(model->count());
    for (int step = 1; step <= count; ++step) {
        const int at = (qMax(0, model->currentIndex()) + step) % count;
        const QSprite* sprite = model->at(uint(at));
        if (pattern.indexIn(QStringLiteral("%1,%2").arg(sprite->itemGroup()).arg(sprite->itemIndex())) >= 0) {
            definePos(at);
            return true;
        }
    }
    return false;
}

bool QSpritesEditor::replace(const QString& text)
{
    QSprite* sprite = currentSprite();
    static const QRegularExpression pair(QStringLiteral("^(\\d{1,5})?(?:,\\s*(\\d{1,5}))?$"));
    const QRegularExpressionMatch match = pair.match(text.trimmed());
    if (!sprite || !match.hasMatch()) return false;
    const int group = match.captured(1).isEmpty() ? sprite->itemGroup() : match.captured(1).toInt();
    const int number = match.captured(2).isEmpty() ? sprite->itemIndex() : match.captured(2).toInt();
    sprite->setInfo(sprite->palette(), group, number, sprite->offsetX(), sprite->offsetY(), sprite->flags());
    showSprite(model->indexOf(sprite));
    return true;
}

QString QSpritesEditor::startFolder(const char* key) const
{
    if (!variables) return QString();
    const QString own = variables->value(QLatin1String(key));
    return own.isEmpty() ? variables->value(QStringLiteral("proj_path")) : own;
}

void QSpritesEditor::rememberFolder(const char* key, const QString& file)
{
    if (variables && !file.isEmpty()) (*variables)[QLatin1String(key)] = QFileInfo(file).absolutePath();
}
