#include "QSyntaxHierarchy.h"

QSyntaxHierarchy::QSyntaxHierarchy(QObject* parent) : QAbstractItemModel(parent) {}

QSyntaxHierarchy::~QSyntaxHierarchy() = default;

void QSyntaxHierarchy::setMode(int mode)
{
    m_mode = mode;
}
