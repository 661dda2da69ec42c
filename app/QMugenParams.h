#pragma once

#include <QList>
#include <QString>

// The command line of a test run: "%0" stands for the current project, "%1" and up for the open
// projects by tab, one or two digits each.
namespace QMugenParams {
// The distinct project numbers of the line, in the order they first appear.
QList<int> placeholders(const QString& params);
// Every "%k" of exactly that number becomes target; "%1" leaves "%10" alone.
QString replace(const QString& params, int number, const QString& target);
// The arguments to start the game with: the line split at blanks, without empty parts.
QStringList arguments(const QString& params);
} // namespace QMugenParams
