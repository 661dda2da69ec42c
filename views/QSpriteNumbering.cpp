#include "QSpriteNumbering.h"

#include "QSprites.h"

namespace {
// The largest number a sprite file can hold.
constexpr int lastNumber = 65535;
} // namespace

QSpriteNumbering::QSpriteNumbering(const QSprites& sprites, int group, int first, int step)
    : sprites(sprites), group(group), number(first), step(step)
{}

bool QSpriteNumbering::inUse(int candidate) const
{
    return sprites.find(0, group, candidate) >= 0;
}

int QSpriteNumbering::freeFrom(int candidate) const
{
    const int rise = step > 0 ? step : 10;
    while (candidate <= lastNumber && inUse(candidate))
        candidate += rise;
    return candidate;
}

int QSpriteNumbering::next()
{
    int candidate = number;
    if (!inUse(candidate)) return candidate;
    QUserDialogs::Button choice = remembered;
    if (choice == QUserDialogs::NoButton) {
        choice = QUserDialogs::question(
            tr("Confict"),
            tr("The index %1 of the group %2 is already in use. Do you want to use the next available "
               "index?\n"
               "Otherwise, choose Discard to skip this sprite or No to insert as is.")
                .arg(candidate)
                .arg(group),
            QUserDialogs::Yes | QUserDialogs::No | QUserDialogs::Discard, QUserDialogs::Yes);
        if (choice == QUserDialogs::Yes || choice == QUserDialogs::No) remembered = choice;
    }
    if (choice == QUserDialogs::Yes)
        candidate = freeFrom(candidate);
    else if (choice != QUserDialogs::No)
        candidate = -1;
    if (candidate > lastNumber) candidate = -1;
    // A skipped file keeps its place in the numbering, so that the files after it keep theirs.
    if (candidate < 0) taken(number);
    return candidate;
}

void QSpriteNumbering::taken(int used)
{
    number = used + (step > 0 ? 1 : 10);
    if (remembered != QUserDialogs::No) number = freeFrom(number);
}
