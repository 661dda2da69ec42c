#include "QOrganizableObject.h"

QOrganizableObject::QOrganizableObject(QObject* parent) : QAbstractListModel(parent) {}

QOrganizableObject::~QOrganizableObject() = default;
