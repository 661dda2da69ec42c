#pragma once

#include "QMugenModel.h"
#include "QSingleInstance.h"

#include <QTemporaryDir>

// What a test of the window needs around it: a configuration folder of its own (the window writes
// config.xml and shortcuts.xml there when it closes, which must stay out of the build tree), no duty
// as the first instance (no hand-off watching), and a fresh configuration for each test function.
struct WindowTestConfig
{
    QTemporaryDir folder;

    QString filePath(const QString& name) const { return folder.filePath(name); }
    // From initTestCase().
    void claim() const
    {
        qputenv("TAVREL_CONFIG_DIR", folder.path().toLocal8Bit());
        isFirstInstance = false;
    }
    // From init() and cleanup().
    static void fresh() { mugenModel = new QMugenModel; }
    static void drop()
    {
        delete mugenModel;
        mugenModel = nullptr;
    }
};
