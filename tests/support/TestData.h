#pragma once

#include <QDir>
#include <QString>
#include <QTest>

// The real content files live outside the repository; TAVREL_TESTDATA names their folder. Tests that
// need them skip with a clear message when it is not set, and CI always sets it.
namespace TestData {

QString root();
QString binDir();
// Every file below the test data folder whose name matches one of the patterns ("*.sff"), sorted.
QStringList files(const QStringList& patterns);

} // namespace TestData

#define TAVREL_REQUIRE_TESTDATA()                                                                            \
    do {                                                                                                     \
        if (TestData::root().isEmpty())                                                                      \
            QSKIP("TAVREL_TESTDATA is not set or does not name a folder: real content files are absent");    \
    } while (false)
