#pragma once

#include "QMessage.h"
#include "QProjectTypes.h"

#include <QAbstractListModel>
#include <QList>

class QMessageList;

// The issues of one file model. A model's check() runs between begin() and end(), so that a whole
// check tells the project's QMessageList once; a lone add() tells it at once. A model that belongs to
// no project has no parent list and its issues are only here.
class QMessages : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit QMessages(QProjectFileType file, QMessageList* parentList = nullptr, QObject* parent = nullptr);
    ~QMessages() override;

    void add(int severity, const QString& text, int index, int subIndex = 0);
    void begin();
    void end();

    // Kinds 0 to 2 give the number of errors, warnings and informations; 3 the number of issues.
    int count(int kind) const;
    // The issue at a row; an empty one outside the list.
    QMessage at(int row) const;
    int size() const { return items.size(); }
    bool isUpdating() const { return updating; }

    QProjectFileType fileType() const { return file; }
    QMessageList* messageList() const { return parentList; }
    // Moves the issues to another project's list (or to none), e.g. when a lone model joins a project.
    void setParentList(QMessageList* list);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    friend class QMessageList;

    QMessageList* parentList;
    QProjectFileType file;
    qint32 counters[3] = {0, 0, 0};
    QList<QMessage> items;
    bool updating = false;
};
