#pragma once

#include "QProjectContext.h"

// A project of a chosen kind, for models whose rules depend on it.
class TestProject : public QProjectContext
{
public:
    explicit TestProject(QProjectType type) : type(type) {}
    QProjectType projectType() const override { return type; }
    quint32 mugenVersion() const override { return 0x1010000; }
    QMessageList* messageList() const override { return nullptr; }

private:
    QProjectType type;
};
