#pragma once

#include <QString>

// The vocabulary of one language: the words a syntax processor colours and checks. Made once at start-up
// from a file of the data folder and shared by every processor of that language.
class QSyntaxProperties
{
public:
    virtual ~QSyntaxProperties();
    // Reads the vocabulary file at path, replacing whatever was loaded before. False if the file can't be
    // read or isn't a vocabulary file; the vocabulary is then empty.
    virtual bool load(const QString& path) = 0;
};
