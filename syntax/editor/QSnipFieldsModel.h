#pragma once

#include "QSnippet.h"

#include <QAbstractTableModel>

// The fields of the snippet being edited, one row each: name, title, type and the item values.
class QSnipFieldsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit QSnipFieldsModel(QObject* parent = nullptr);

    QList<QSnippetField> fields() const { return m_fields; }
    void setFields(const QList<QSnippetField>& fields);
    QSnippetField field(int row) const { return m_fields.value(row); }
    void append(const QSnippetField& field);
    void replace(int row, const QSnippetField& field);
    void remove(int row);

    // The title a type has in the dialogs, and the type a title stands for.
    static QString typeTitle(const QString& type);
    static QStringList typeTitles();
    static QStringList types();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QList<QSnippetField> m_fields;
};
