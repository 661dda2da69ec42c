// The group commands of the sprites editor and its align tools window.

#include "AlignDlg.h"
#include "DelGrp.h"
#include "QDialogRunner.h"
#include "QGroupRangeBox.h"
#include "QSprRender.h"
#include "QSprite.h"
#include "QSprites.h"
#include "QSpritesEditor.h"
#include "QUserDialogs.h"
#include "RenGrp.h"

#include <QSet>
#include <QSpinBox>

void QSpritesEditor::delGroup()
{
    const QSprite* sprite = currentSprite();
    if (!sprite) return;
    DelGrp dialog(sprite->itemGroup(), dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const QGroupRangeBox* range = dialog.range();
    const int group = range->group();
    if (model->rangeRows(false, group, range->allNumbers(), range->from(), range->to()).isEmpty()) {
        QUserDialogs::information(tr("Delete group"),
                                  tr("No sprite of the group %1 lies in the range.").arg(group));
        return;
    }
    emit flushFields();
    model->removeGroup(uint(group), range->allNumbers(), range->from(), range->to());
    updateSel();
}

void QSpritesEditor::renameGroup()
{
    QSprite* sprite = currentSprite();
    if (!sprite) return;
    RenGrp dialog(sprite->itemGroup(), dialogParent());
    if (QDialogRunner::run(&dialog) != QDialog::Accepted) return;
    const QGroupRangeBox* range = dialog.range();
    const int group = range->group();
    const int newGroup = dialog.toGroupBox()->value();
    const QList<uint> rows = model->rangeRows(false, group, range->allNumbers(), range->from(), range->to());
    if (rows.isEmpty() || group == newGroup) {
        QUserDialogs::information(tr("Rename group"),
                                  tr("No sprite of the group %1 lies in the range.").arg(group));
        return;
    }
    // Numbers that the other group uses already would stand twice; the user may mean to merge.
    QSet<int> used;
    for (const QSprite* other : model->spriteItems())
        if (other->itemGroup() == newGroup) used.insert(other->itemIndex());
    const bool clash = std::any_of(rows.begin(), rows.end(),
                                   [&](uint row) { return used.contains(model->at(row)->itemIndex()); });
    if (clash &&
        QUserDialogs::question(tr("Rename group"),
                               tr("The group %1 already uses some of these numbers. Do you want to "
                                  "rename the sprites anyway?")
                                   .arg(newGroup),
                               QUserDialogs::Yes | QUserDialogs::No, QUserDialogs::No) != QUserDialogs::Yes)
        return;
    emit flushFields();
    model->renameGroup(group, newGroup, range->allNumbers(), range->from(), range->to());
    showSprite(model->indexOf(sprite));
}

AlignDlg* QSpritesEditor::alignTool() const
{
    return alignWindow;
}

void QSpritesEditor::alignTools()
{
    if (!alignWindow) {
        alignWindow = new AlignDlg(dialogParent());
        connect(alignWindow, &AlignDlg::alignRequested, this, &QSpritesEditor::align);
        connect(alignWindow, &AlignDlg::guidesChanged, this, [this](QPoint crossing) {
            view()->setGuides(crossing);
            view()->refresh();
        });
    }
    alignWindow->setGuides(view()->guides());
    alignWindow->setAlignEnabled(currentSprite() != nullptr);
    alignWindow->show();
    alignWindow->raise();
    alignWindow->activateWindow();
}
