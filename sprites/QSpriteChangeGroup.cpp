#include "QSpriteChangeGroup.h"

#include "QSprites.h"

QSpriteChangeGroup::QSpriteChangeGroup(QSprites* model, const QString& text)
    : model(model), text(text), recording(model->noUndoCount() == 0), wasLoading(model->isLoading())
{
    model->setLoading(true);
}

QSpriteChangeGroup::~QSpriteChangeGroup()
{
    if (opened && recording) model->undoStack()->endMacro();
    model->setLoading(wasLoading);
    if (opened) model->finishChange();
}

void QSpriteChangeGroup::open()
{
    if (opened) return;
    opened = true;
    if (recording) model->undoStack()->beginMacro(text);
}
