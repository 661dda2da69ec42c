#pragma once

#include <QFile>
#include <QStringList>

// The hand-off file through which a second start of the program passes a file to the editor already
// running: one local-8-bit path per line, each ended by a line feed. Writers append; the first
// instance reads the whole file and empties it.
class QHandOff
{
public:
    explicit QHandOff(const QString& path = defaultPath());

    static QString defaultPath();
    QString path() const { return file.fileName(); }

    // The first instance empties the file at its start and keeps it open for its own argument.
    bool claim();
    // Appends one path and closes the file. The path is made absolute first: the reader runs in
    // another process with another working folder.
    bool append(const QString& fileName);
    // Reads every path, in order, and empties the file when it held anything. Paths that another
    // process appends while this runs are read too rather than cut away by the truncation.
    QStringList take();

private:
    QFile file;
};
