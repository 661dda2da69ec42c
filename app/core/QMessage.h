#pragma once

#include <QString>
#include <QtGlobal>

// One issue found by a file model's check. Where it points depends on the kind of file: a line for
// text files; a sprite (subIndex 0) or palette (subIndex 1) number in a sprite file; a sound number in
// a sound file. For state files subIndex is the position of the file in its project.
struct QMessage
{
    qint32 severity = 0; // 0 error, 1 warning, 2 information
    qint32 file = 0;     // the QProjectFileType of the list holding it
    qint32 index = 0;
    qint32 subIndex = 0;
    QString text;
};
