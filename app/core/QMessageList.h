#pragma once

#include "QMessage.h"

#include <QAbstractListModel>
#include <QIcon>
#include <QList>

class QMessages;

// The issues of one project: the QMessages lists of its file models, end to end in the order in which
// the lists joined. The rows a view sees change only on a refresh, which resets the model and emits
// updated() once; the lists call it after a check or a lone issue.
class QMessageList : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit QMessageList(QObject* parent = nullptr);
    ~QMessageList() override;

    // Kinds 0 to 2 sum the errors, warnings and informations of all lists; 3 sums their sizes.
    int count(int kind) const;
    // The issue at a row counted through all lists; an empty one outside them.
    QMessage at(int row) const;
    // The line shown for a row, as a view or the command-line tool prints it.
    QString rowText(int row) const;
    const QList<QMessages*>& lists() const { return messages; }

    // Takes in the current contents of all lists and tells views and listeners.
    void refresh();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    static QString messageText(const QMessage& message);
    static QIcon severityIcon(int severity);

signals:
    void updated();

private:
    friend class QMessages;

    void registerList(QMessages* list);
    void unregisterList(QMessages* list);
    const QMessage* find(int row) const;

    QList<QMessages*> messages;
    // The number of rows as of the last refresh, so that views never see rows come and go unannounced.
    int rows = 0;
};
