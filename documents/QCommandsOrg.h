#pragma once

#include "QOrganizableObject.h"

class QCommands;

// The commands of a command file as a list for the organizer: one row per command, shown by its name.
class QCommandsOrg : public QOrganizableObject
{
    Q_OBJECT
public:
    explicit QCommandsOrg(QCommands* owner);
    ~QCommandsOrg() override;

    QCommands* const owner;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    // The name for display; the steps as tool tip.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // "Name", and "Command" for the second column of lists that show both.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    void beginChanges() override;
    void endChanges() override;
    void remove(uint index) override;
    void move(uint from, uint to) override;
    void autoOrganize() override;

private:
    friend class QCommands;
};
