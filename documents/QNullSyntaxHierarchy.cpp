#include "QNullSyntaxHierarchy.h"

QNullSyntaxHierarchy::QNullSyntaxHierarchy(QObject* parent) : QSyntaxHierarchy(parent) {}

QModelIndex QNullSyntaxHierarchy::index(int, int, const QModelIndex&) const
{
    return QModelIndex();
}

QModelIndex QNullSyntaxHierarchy::parent(const QModelIndex&) const
{
    return QModelIndex();
}

int QNullSyntaxHierarchy::rowCount(const QModelIndex&) const
{
    return 0;
}

int QNullSyntaxHierarchy::columnCount(const QModelIndex&) const
{
    return 0;
}

QVariant QNullSyntaxHierarchy::data(const QModelIndex&, int) const
{
    return QVariant();
}

void QNullSyntaxHierarchy::update(const QString&)
{
    emit updated();
}

int QNullSyntaxHierarchy::lineForIndex(const QModelIndex&) const
{
    return 0;
}

QModelIndex QNullSyntaxHierarchy::indexForLine(int) const
{
    return QModelIndex();
}

bool QNullSyntaxHierarchy::sectionExists(const QString&) const
{
    return false;
}

QString QNullSyntaxHierarchy::findValue(const QString&, const QString&) const
{
    return QString();
}
