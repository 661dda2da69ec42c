#pragma once

#include <QList>

class QActionManager;
class QMenu;
class QTextTools;

// Registers the commands of the text workspace's snippets and state controller templates in the
// scopes given, the two view switches in view and the rest in code.
void addTextToolActions(QActionManager* manager, const QList<int>& scopes, QTextTools* tools, QMenu* view,
                        QMenu* code);
