#pragma once

#include <QString>
#include <QStringList>

#include <array>

// The files that a definitions file names, as paths relative to baseDirectory with forward slashes.
// A name the file doesn't give is empty.
struct QDefinitionFiles
{
    QStringList states;
    std::array<QString, 12> palettes;
    QString baseDirectory;
    QString sprite;
    QString animation;
    QString sound;
    QString commands;

    // The palette file of a number from 1 to 12.
    QString pal(int number) const
    {
        return number >= 1 && number <= 12 ? palettes.at(number - 1) : QString();
    }
};
