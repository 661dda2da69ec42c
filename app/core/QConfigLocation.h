#pragma once

#include <QString>

// Where the configuration files ("config.xml", "shortcuts.xml", "history.xml") live. A program in a
// writable folder keeps them beside itself; an installed one, whose folder it may not write, keeps
// them in the user's configuration folder and still reads the files shipped beside it until the user
// has own copies.
class QConfigLocation
{
public:
    QConfigLocation(const QString& appDir, const QString& userDir, bool appDirWritable);

    // The application folder, the user's configuration folder, and whether the application folder
    // takes a new file (found by trying to create one, since permission bits say nothing to root).
    // The environment variable TAVREL_CONFIG_DIR, when set, names the one folder used instead.
    static QConfigLocation standard();

    // The first of the candidate files that exists (the user's before the application's when the
    // application folder is read-only), or else the file writePath() gives, without creating folders.
    QString readPath(const QString& fileName) const;
    // The file to write; the user's configuration folder is created when it is the one written to.
    QString writePath(const QString& fileName) const;

    QString appDir() const { return m_appDir; }
    QString userDir() const { return m_userDir; }
    bool appDirWritable() const { return m_appDirWritable; }

    // Whether a file can be created in dir, tried with a temporary file that is removed at once.
    static bool isWritableDir(const QString& dir);

private:
    QString m_appDir;
    QString m_userDir;
    bool m_appDirWritable;
};
