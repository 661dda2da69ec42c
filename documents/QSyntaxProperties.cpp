#include "QSyntaxProperties.h"

QSyntaxProperties::~QSyntaxProperties() = default;
