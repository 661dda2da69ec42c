#pragma once

#include <QAbstractListModel>

// A list whose items the organizer can reorder: sprites or palettes.
class QOrganizableObject : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit QOrganizableObject(QObject* parent = nullptr);
    ~QOrganizableObject() override;

    // Opens a group of changes that undo takes back in one step.
    virtual void beginChanges() = 0;
    virtual void endChanges() = 0;
    virtual void remove(uint index) = 0;
    virtual void move(uint from, uint to) = 0;
    // Sorts the items into the order the file version wants.
    virtual void autoOrganize() = 0;
};
