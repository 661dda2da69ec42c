#include "QSnipFieldsModel.h"

QSnipFieldsModel::QSnipFieldsModel(QObject* parent) : QAbstractTableModel(parent) {}

void QSnipFieldsModel::setFields(const QList<QSnippetField>& fields)
{
    beginResetModel();
    m_fields = fields;
    endResetModel();
}

void QSnipFieldsModel::append(const QSnippetField& field)
{
    beginInsertRows(QModelIndex(), int(m_fields.size()), int(m_fields.size()));
    m_fields.append(field);
    endInsertRows();
}

void QSnipFieldsModel::replace(int row, const QSnippetField& field)
{
    if (row < 0 || row >= m_fields.size()) return;
    m_fields[row] = field;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void QSnipFieldsModel::remove(int row)
{
    if (row < 0 || row >= m_fields.size()) return;
    beginRemoveRows(QModelIndex(), row, row);
    m_fields.removeAt(row);
    endRemoveRows();
}

QStringList QSnipFieldsModel::types()
{
    return {QStringLiteral("string"), QStringLiteral("int"), QStringLiteral("float"),
            QStringLiteral("items")};
}

QStringList QSnipFieldsModel::typeTitles()
{
    return {tr("String"), tr("Integer"), tr("Float"), tr("Items")};
}

QString QSnipFieldsModel::typeTitle(const QString& type)
{
    return typeTitles().value(qMax(0, int(types().indexOf(type))));
}

int QSnipFieldsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_fields.size());
}

int QSnipFieldsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 4;
}

QVariant QSnipFieldsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_fields.size() || role != Qt::DisplayRole) return QVariant();
    const QSnippetField& field = m_fields.at(index.row());
    switch (index.column()) {
    case 0:
        return field.name;
    case 1:
        return field.title;
    case 2:
        return typeTitle(field.type);
    default:
        return field.values.join(QLatin1Char(','));
    }
}

QVariant QSnipFieldsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return QVariant();
    switch (section) {
    case 0:
        return tr("Name");
    case 1:
        return tr("Title");
    case 2:
        return tr("Type");
    default:
        return tr("Values");
    }
}
