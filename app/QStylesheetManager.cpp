#include "QStylesheetManager.h"

#include "QPresetManager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

QStylesheetManager* stylesheetManager = nullptr;

namespace {

const QString sheetFile = QStringLiteral("/Stylesheet.css");

} // namespace

QStylesheetManager::QStylesheetManager(const QString& folderPath, QObject* parent)
    : QObject(parent), folder(folderPath), screenDpi(QPresetManager::systemDpi())
{
    const QStringList dirs = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& dir : dirs)
        if (QFileInfo::exists(folder + QLatin1Char('/') + dir + sheetFile)) sheets.append(dir);
}

bool QStylesheetManager::read(const QString& name, QString& text) const
{
    if (!sheets.contains(name)) return false;
    QFile file(folder + QLatin1Char('/') + name + sheetFile);
    if (!file.open(QIODevice::ReadOnly)) return false;
    text = QString::fromUtf8(file.readAll());

    // Image urls become relative to the application folder. A quote right after the bracket stays in
    // front of the added folder so that quoted urls keep working.
    static const QRegularExpression url(QStringLiteral("url\\((\\s*[\"']?)"));
    text.replace(url, QStringLiteral("url(\\1styles/") + name + QLatin1Char('/'));

    static const QRegularExpression size(QStringLiteral("\\[(\\d+)\\]"));
    QString scaled;
    qsizetype last = 0;
    QRegularExpressionMatchIterator it = size.globalMatch(text);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        scaled += QStringView(text).mid(last, match.capturedStart() - last);
        scaled += QString::number(match.captured(1).toLongLong() * screenDpi / 96);
        last = match.capturedEnd();
    }
    scaled += QStringView(text).mid(last);
    text = scaled;
    return true;
}

QString QStylesheetManager::styleSheet(const QString& name) const
{
    QString text;
    return read(name, text) ? text : QString();
}

bool QStylesheetManager::apply(const QString& name)
{
    QString text;
    if (!name.isEmpty() && !read(name, text)) return false;
    currentName = name;
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) app->setStyleSheet(text);
    emit stylesheetChanged();
    return true;
}
