#pragma once

#include "QOrganizableObject.h"

#include <QPointer>

#include "QAnimations.h"
#include "QElementTextEditor.h"

// The actions of an animation file as a list the organizer can reorder. The animation model is bound
// to its text and moves an action by cutting and pasting its lines, which a list view sees as a row
// that goes and a row that comes; here the same move is one moved row, so that selections and
// persistent indexes follow the action. Everything else the model reports is passed on as it comes.
class QAnimationsOrg : public QOrganizableObject
{
    Q_OBJECT

public:
    // The organizer list of an animation model, made on first use and owned by the model.
    static QAnimationsOrg* of(QAnimations* animations);

    explicit QAnimationsOrg(QAnimations* animations);
    ~QAnimationsOrg() override;

    QAnimations* animations() const { return source; }

    // One text edit: undo takes back everything between them in one step.
    void beginChanges() override;
    void endChanges() override;
    void remove(uint index) override;
    void move(uint from, uint to) override;
    // Sorts the actions by number, keeping the order of equal numbers.
    void autoOrganize() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    void relay();

    QPointer<QAnimations> source;
    // Raised while this list moves a row itself: the model's own reports of that move are not passed on.
    int quiet = 0;
};
