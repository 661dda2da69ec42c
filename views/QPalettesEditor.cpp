#include "QPalettesEditor.h"

#include "QAnimSpriteWorkspace.h"
#include "QBlockCounter.h"
#include "QDialogRunner.h"
#include "QPaletteWidget.h"
#include "QPalettesPanel.h"
#include "QRGBPalette.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSpritePalette.h"
#include "QSprites.h"
#include "QSpritesEditor.h"

#include <QApplication>
#include <QColorDialog>

#include <cstring>

namespace {
using Block = QBlockCounter;
} // namespace

QPalettesEditor::QPalettesEditor(QSpritesEditor* spritesEditor, QAnimSpriteWorkspace* workspace,
                                 QObject* parent)
    : QObject(parent), spritesEditor(spritesEditor), workspaceOf(workspace),
      panelWidget(new QPalettesPanel(this))
{
    connect(spritesEditor, &QSpritesEditor::spriteShown, this, &QPalettesEditor::followSprite);
    connect(spritesEditor, &QSpritesEditor::paletteSelected, this, &QPalettesEditor::followPalette);
    connect(view(), &QSprRender::colorCaptured, this, &QPalettesEditor::colorCaptured);
}

QPalettesEditor::~QPalettesEditor()
{
    bind(nullptr, nullptr);
    delete panelWidget;
}

QSprRender* QPalettesEditor::view() const
{
    return workspaceOf->view();
}

QWidget* QPalettesEditor::panel() const
{
    return panelWidget;
}

QPalettesPanel* QPalettesEditor::controls() const
{
    return panelWidget;
}

QPaletteWidget* QPalettesEditor::colors() const
{
    return panelWidget->colors();
}

bool QPalettesEditor::isModified() const
{
    return model && model->isModified();
}

QSprite* QPalettesEditor::shownSprite() const
{
    return spritesEditor && model && spritesEditor->sprites() == model ? spritesEditor->currentSprite()
                                                                       : nullptr;
}

QSpritePalette* QPalettesEditor::currentPalette() const
{
    return model && current >= 0 ? model->paletteAt(uint(current)) : nullptr;
}

void QPalettesEditor::bind(QSprites* sprites, QMap<QString, QString>* projectVariables)
{
    if (model) {
        disconnect(model, nullptr, this, nullptr);
        disconnect(model->remapModel(), nullptr, this, nullptr);
        disconnect(model->undoStack(), nullptr, this, nullptr);
    }
    model = sprites;
    variables = projectVariables;
    int start = -1;
    if (model) {
        connect(model, &QSprites::changed, this, &QPalettesEditor::modelChanged);
        connect(model, &QSprites::changed, this, &QPalettesEditor::titleChanged);
        connect(model->undoStack(), &QUndoStack::cleanChanged, this, &QPalettesEditor::titleChanged);
        connect(model->remapModel(), &QRemapModel::dataChanged, this, &QPalettesEditor::remapChanged);
        // A removed substitution changes the look as much as an edited one.
        connect(model->remapModel(), &QRemapModel::rowsRemoved, this,
                [this]() { remapChanged(QModelIndex(), QModelIndex()); });
        // Start on the palette of the sprite shown, else on the first.
        const QSprite* sprite = shownSprite();
        start = sprite ? model->paletteIndexOf(sprite->palette()) : -1;
        if (start < 0 && model->paletteCount() > 0) start = 0;
    }
    emit enabled(model != nullptr);
    show(start, false);
    emit titleChanged();
}

void QPalettesEditor::activate()
{
    active = true;
    modelChanged();
}

void QPalettesEditor::deactivate()
{
    active = false;
    // The view is shared with the animations editor, where a click must not pick colours.
    pickColor(false);
}

// ---- Showing

void QPalettesEditor::showPalette(int position)
{
    if (block > 0) return;
    show(position, true);
}

void QPalettesEditor::show(int position, bool toView)
{
    QSpritePalette* palette = model && position >= 0 ? model->paletteAt(uint(position)) : nullptr;
    current = palette ? position : -1;
    shown = palette;
    {
        Block guard(block);
        emit setColorCount(ushort(palette ? palette->colorCount() : QSpritePalette::MaxColors));
        colors()->loadColors(palette ? palette->table() : nullptr);
    }
    showFields();
    if (toView && palette && spritesEditor) spritesEditor->showPalette(current);
}

void QPalettesEditor::showFields()
{
    const QSpritePalette* palette = currentPalette();
    Block guard(block);
    emit setMaximum(model ? int(model->paletteCount()) : 0);
    if (palette) {
        emit setSelPos(current);
        emit setPosText(QStringLiteral("%1 / %2").arg(current + 1).arg(model->paletteCount()));
        emit setGroup(palette->itemGroup());
        emit setNumber(palette->itemIndex());
    } else {
        emit setSelPos(0);
        emit setPosText(QStringLiteral("0 / 0"));
        emit setGroup(0);
        emit setNumber(0);
    }
}

void QPalettesEditor::modelChanged()
{
    if (block > 0) return;
    if (!model) {
        show(-1, false);
        return;
    }
    // Stay with the palette shown wherever it went; if it went away, with its position.
    int position = shown ? model->paletteIndexOf(shown) : -1;
    if (position < 0) position = qMin(current, int(model->paletteCount()) - 1);
    if (position < 0 && model->paletteCount() > 0) position = 0;
    const QSpritePalette* palette = position >= 0 ? model->paletteAt(uint(position)) : nullptr;
    // A change elsewhere in the file leaves the colours, their steps and the selection alone.
    const bool same = palette && palette == shown && palette->colorCount() == colors()->colorCount() &&
                      palette->table() &&
                      std::memcmp(palette->table(), colors()->colors(), QRGBPal::TableBytes) == 0;
    if (same) {
        current = position;
        showFields();
        return;
    }
    show(position, position != current || palette != shown);
}

void QPalettesEditor::followPalette(int index)
{
    if (block > 0 || !model || index < 0 || index == current) return;
    show(index, false);
}

void QPalettesEditor::followSprite(int position)
{
    spritePosition = position;
}

void QPalettesEditor::ensurePage()
{
    const QSprRender* render = view();
    const bool onPage = render->renderMode() == QSprRender::SpriteMode && render->sprites() == model;
    if (!onPage && pageSwitch) pageSwitch();
}

void QPalettesEditor::refreshView()
{
    if (current >= 0 && spritesEditor) spritesEditor->showPalette(current);
}

// ---- Moving between palettes

void QPalettesEditor::selPosChanged(int position)
{
    if (block > 0 || position == current) return;
    showPalette(position);
}

void QPalettesEditor::prevPal()
{
    if (current > 0) showPalette(current - 1);
}

void QPalettesEditor::nextPal()
{
    if (model && current >= 0 && current + 1 < int(model->paletteCount())) showPalette(current + 1);
}

void QPalettesEditor::prevGrp()
{
    const QSpritePalette* palette = currentPalette();
    if (!palette) return;
    // The group run before the current palette's, entered at its first palette.
    int at = current;
    while (at >= 0 && model->paletteAt(uint(at))->itemGroup() == palette->itemGroup())
        --at;
    if (at < 0) return;
    const int group = model->paletteAt(uint(at))->itemGroup();
    while (at > 0 && model->paletteAt(uint(at - 1))->itemGroup() == group)
        --at;
    showPalette(at);
}

void QPalettesEditor::nextGrp()
{
    const QSpritePalette* palette = currentPalette();
    if (!palette) return;
    int at = current;
    const int count = int(model->paletteCount());
    while (at < count && model->paletteAt(uint(at))->itemGroup() == palette->itemGroup())
        ++at;
    if (at < count) showPalette(at);
}

void QPalettesEditor::grpChanged(int value)
{
    QSpritePalette* palette = currentPalette();
    if (block > 0 || !palette || palette->itemGroup() == value) return;
    {
        Block guard(block);
        palette->setItemGroup(value);
    }
    showFields();
}

void QPalettesEditor::numChanged(int value)
{
    QSpritePalette* palette = currentPalette();
    if (block > 0 || !palette || palette->itemIndex() == value) return;
    {
        Block guard(block);
        palette->setItemIndex(value);
    }
    showFields();
}

// ---- Colours

void QPalettesEditor::writeColors(const QRGBPal* table)
{
    QSpritePalette* palette = currentPalette();
    if (!palette || !table) return;
    if (palette->table() && std::memcmp(palette->table(), table, QRGBPal::TableBytes) == 0) return;
    Block guard(block);
    palette->setColors(table, QSpriteShareMode::AskToShare);
}

void QPalettesEditor::changed()
{
    if (block > 0 || !currentPalette()) return;
    ensurePage();
    writeColors(colors()->colors());
    refreshView();
}

void QPalettesEditor::colorMoved(ushort, ushort)
{
    // The move reached the model through changed(); the view shows the new order.
    refreshView();
}

void QPalettesEditor::setPalette(QRGBPal* table)
{
    if (!currentPalette() || !table) return;
    ensurePage();
    writeColors(table);
    show(current, true);
}

void QPalettesEditor::undo()
{
    if (!currentPalette()) return;
    ensurePage();
    colors()->undo();
    refreshView();
}

void QPalettesEditor::redo()
{
    if (!currentPalette()) return;
    ensurePage();
    colors()->redo();
    refreshView();
}

void QPalettesEditor::switchColor()
{
    QPaletteWidget* grid = colors();
    if (!currentPalette() || grid->selectedCount() == 0) return;
    ensurePage();
    grid->rgbPalette()->reverse(grid->selectionMask(), false);
}

void QPalettesEditor::pickColor(bool on)
{
    view()->setColorCapture(on);
    emit colorPicking(on);
}

void QPalettesEditor::colorCaptured(uchar index)
{
    if (!currentPalette()) return;
    colors()->selectOnly(index);
}

bool QPalettesEditor::askColor(const QColor& initial, QColor* chosen)
{
    QColorDialog dialog(initial, QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ColorDlg"));
    dialog.setWindowTitle(tr("Color"));
    dialog.setOptions(QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    if (QDialogRunner::run(&dialog) != QDialog::Accepted || !dialog.currentColor().isValid()) return false;
    *chosen = dialog.currentColor();
    return true;
}

void QPalettesEditor::setColor()
{
    QPaletteWidget* grid = colors();
    const int first = grid->firstSelected();
    if (!currentPalette() || first < 0) return;
    QColor chosen;
    if (!askColor(grid->color(first).toColor(), &chosen)) return;
    ensurePage();
    // Every selected colour takes it, as one step.
    grid->rgbPalette()->setColor(grid->selectionMask(), QRGBPal::fromColor(chosen));
}

void QPalettesEditor::colorDblClicked(ushort index)
{
    QPaletteWidget* grid = colors();
    if (!currentPalette() || index >= QRGBPal::TableSize) return;
    QColor chosen;
    if (!askColor(grid->color(index).toColor(), &chosen)) return;
    ensurePage();
    grid->rgbPalette()->setColor(uchar(index), QRGBPal::fromColor(chosen));
}

void QPalettesEditor::switchCount()
{
    QSpritePalette* palette = currentPalette();
    if (!palette) return;
    ensurePage();
    {
        Block guard(block);
        palette->setColorCount(palette->colorCount() > 32 ? 32 : QSpritePalette::MaxColors);
    }
    emit setColorCount(ushort(palette->colorCount()));
    refreshView();
}

// ---- Sprites

void QPalettesEditor::setSprPal()
{
    QSpritePalette* palette = currentPalette();
    QSprite* sprite = shownSprite();
    if (!palette || !sprite) return;
    ensurePage();
    {
        Block guard(block);
        sprite->setPalette(palette);
    }
    refreshView();
}

void QPalettesEditor::setGrpPal()
{
    QSpritePalette* palette = currentPalette();
    const QSprite* sprite = shownSprite();
    if (!palette || !sprite) return;
    QList<QSprite*> changing;
    for (QSprite* other : model->spriteItems())
        if (other->itemGroup() == sprite->itemGroup() && other->palette() != palette) changing << other;
    if (changing.isEmpty()) return;
    ensurePage();
    {
        Block guard(block);
        model->undoStack()->beginMacro(tr("Apply palette to group"));
        for (QSprite* other : std::as_const(changing))
            other->setPalette(palette);
        model->undoStack()->endMacro();
    }
    refreshView();
}

void QPalettesEditor::advanced() {}

// ---- Remap

void QPalettesEditor::remapChanged(const QModelIndex&, const QModelIndex&)
{
    // A substitution changes how sprites of the named palettes look.
    QSprRender* render = view();
    if (render->sprites() != model) return;
    render->reloadSprite();
    render->refresh();
}
