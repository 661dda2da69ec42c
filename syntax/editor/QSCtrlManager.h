#pragma once

#include "QTemplateStore.h"

// The state controller templates in the folder "sctrls" beside the program: plain text files with the
// suffix "sctrl", pasted whole, read and written in the configured default encoding.
class QSCtrlManager : public QTemplateStore
{
    Q_OBJECT
public:
    // The folder beside the program unless another is given.
    explicit QSCtrlManager(const QString& directory = QString(), QObject* parent = nullptr);

    // The template's text; empty when it can't be read.
    QString read(const QString& name) const;
    // Writes a file of the folder, or the file at path when it is absolute, then reads the list anew.
    bool write(const QString& nameOrPath, const QString& text);
    bool remove(const QString& name);
};
