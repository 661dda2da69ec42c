#pragma once

#include <QVariant>

// Reads and writes the program's configuration for the views; without one (a test, a tool) reads give
// the fallback and writes are dropped.
namespace QViewSettings {
QVariant value(const char* key, const QVariant& fallback);
void setValue(const char* key, const QVariant& value);
} // namespace QViewSettings
