#pragma once

#include <QString>
#include <QTranslator>

// One ".qm" file of a language, loaded and ready to be installed on the application.
class QTranslationUnit : public QTranslator
{
    Q_OBJECT
public:
    explicit QTranslationUnit(QObject* parent = nullptr) : QTranslator(parent) {}

    bool loadFile(const QString& path);
    QString path() const { return fileName; }

private:
    QString fileName;
};
