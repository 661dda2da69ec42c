#include "QProjectPaths.h"

#include "QCharsetDetector.h"
#include "QTextEncoding.h"

#include <QDir>
#include <QFileInfo>

namespace {

// How far above a project's folder the engine's root is looked for: content sits in chars/NAME,
// stages, data or font, sometimes one folder deeper.
constexpr int engineRootDepth = 4;

// The entry of folder whose name equals part without regard to case; part itself when none does.
QString matchEntry(const QDir& folder, const QString& part)
{
    if (folder.exists(part)) return part;
    const QStringList entries =
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& entry : entries)
        if (entry.compare(part, Qt::CaseInsensitive) == 0) return entry;
    return QString();
}

} // namespace

QString QProjectPaths::normalized(const QString& name)
{
    QString result = name;
    result.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return result;
}

QString QProjectPaths::locate(const QString& base, const QString& name)
{
    const QString relative = normalized(name).trimmed();
    if (relative.isEmpty() || relative.endsWith(QLatin1Char('/'))) return QString();
    const QString exact = QDir(base).filePath(relative);
    if (QFileInfo(exact).isFile()) return QDir::cleanPath(exact);

    QDir folder(QDir::isAbsolutePath(relative) ? QStringLiteral("/") : base);
    const QStringList parts = relative.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (int i = 0; i < parts.size(); ++i) {
        const QString& part = parts.at(i);
        if (part == QLatin1String(".")) continue;
        QString entry = part == QLatin1String("..") ? part : matchEntry(folder, part);
        if (entry.isEmpty()) return QString();
        if (i + 1 == parts.size()) {
            const QFileInfo file(folder.filePath(entry));
            return file.isFile() ? QDir::cleanPath(file.filePath()) : QString();
        }
        if (!folder.cd(entry)) return QString();
    }
    return QString();
}

QString QProjectPaths::find(const QString& base, const QString& name, bool stage)
{
    QString found = locate(base, name);
    if (!found.isEmpty()) return found;
    const QString root = engineRoot(base);
    if (root.isEmpty()) return QString();
    QStringList folders = {QStringLiteral("data"), QString()};
    if (stage) folders << QStringLiteral("stages");
    for (const QString& folder : std::as_const(folders)) {
        const QString entry = folder.isEmpty() ? folder : matchEntry(QDir(root), folder);
        if (!folder.isEmpty() && entry.isEmpty()) continue;
        found = locate(folder.isEmpty() ? root : QDir(root).filePath(entry), name);
        if (!found.isEmpty()) return found;
    }
    return QString();
}

QString QProjectPaths::engineRoot(const QString& folder)
{
    QDir dir(QFileInfo(folder).absoluteFilePath());
    for (int level = 0; level <= engineRootDepth; ++level) {
        // An engine's folder holds its data and its characters; a folder that only happens to have a
        // "data" folder (a build tree, a project's own data) is not one.
        const QString data = matchEntry(dir, QStringLiteral("data"));
        const QString chars = matchEntry(dir, QStringLiteral("chars"));
        if (!data.isEmpty() && !chars.isEmpty() && QFileInfo(dir.filePath(data)).isDir() &&
            QFileInfo(dir.filePath(chars)).isDir())
            return dir.absolutePath();
        if (!dir.cdUp()) break;
    }
    return QString();
}

QString QProjectPaths::resolve(const QString& base, const QString& name)
{
    const QString found = find(base, name);
    return found.isEmpty() ? QDir(base).filePath(normalized(name).trimmed()) : found;
}

QStringList QProjectPaths::spellings(const QString& name, const QByteArray& bytes, int codec)
{
    QStringList result{name};
    QByteArray raw = bytes;
    if (raw.isEmpty()) {
        raw = QTextEncoding::encode(name, codec);
        // A name the codec can't give back as bytes has no other reading to offer.
        if (QTextEncoding::toUnicode(QTextEncoding::codec(codec), raw) != name) return result;
    }
    for (const QString& reading : QCharsetDetector::readings(raw, codec))
        if (!result.contains(reading)) result << reading;
    return result;
}

QString QProjectPaths::find(const QString& base, const QStringList& spellings, bool stage)
{
    for (const QString& spelling : spellings) {
        const QString found = find(base, spelling, stage);
        if (!found.isEmpty()) return found;
    }
    return QString();
}
